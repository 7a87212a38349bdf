#pragma once

#include <cstdint>
#include <vector>

#include <QJsonObject>
#include <QString>

#include "platform/linux/applications/matching/ApplicationMatch.h"

namespace kestrelbay::sway {

/// A window as sway's tree shows it.
struct SwayWindow {
    /// By which sway calls it, con_id; never another one's.
    std::int64_t id = 0;
    /// As far as sway tells: without `process`. What a Wayland window is called by stands where X
    /// has two names.
    WindowFacts facts;
    QString title;
    bool isFocused = false;
    bool isUrgent = false;
    bool isFloating = false;
    bool isFullscreen = false;
    /// In the scratchpad, and not in view.
    bool isHidden = false;
    /// Of one that is not hidden.
    QString workspace;
};

/// The windows of sway's answer to GET_TREE, those first that had the focus last, as far as the
/// tree tells: it does so within each workspace, output and split.
[[nodiscard]] std::vector<SwayWindow> windowsOf(const QJsonObject &tree);

}  // namespace kestrelbay::sway
