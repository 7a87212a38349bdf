#pragma once

#include <vector>

#include <QJsonObject>
#include <QString>

#include "platform/linux/wayland/windows/Desktop.h"

namespace kestrelbay::sway {

/// A window as sway's tree shows it, numbered by its con_id.
struct SwayWindow : wayland::DesktopWindow {
    bool isFloating = false;
    bool isFullscreen = false;
    /// Of one that is not hidden, which is not in the scratchpad.
    QString workspace{};
};

/// Of a window, by its node in a tree or in an event.
[[nodiscard]] WindowFacts factsOf(const QJsonObject &node);

/// The windows of sway's answer to GET_TREE, those first that had the focus last, as far as the
/// tree tells: it does so within each workspace, output and split.
[[nodiscard]] std::vector<SwayWindow> windowsOf(const QJsonObject &tree);

}  // namespace kestrelbay::sway
