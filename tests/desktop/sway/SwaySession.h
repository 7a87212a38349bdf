#pragma once

#include <optional>

#include <QByteArray>
#include <QString>

#include "desktop/display/VirtualKeyboard.h"
#include "desktop/session/WaylandSession.h"
#include "desktop/sway/SwayIpc.h"

namespace kestrelbay::desktop {

/// sway with Xwayland.
class SwaySession : public WaylandSession {
public:
    /// What sway is told besides the screen's size, as lines of its configuration. Throws
    /// std::runtime_error when a part of the session does not come up.
    explicit SwaySession(const QByteArray &configuration);

    [[nodiscard]] SwayIpc &ipc() { return *ipc_; }
    [[nodiscard]] VirtualKeyboard &keyboard() override { return *keyboard_; }

    void restartCompositor() override;
    void screenshot(const QString &path) override;

private:
    void startSway();

    std::optional<SwayIpc> ipc_;
    std::optional<VirtualKeyboard> keyboard_;
};

}  // namespace kestrelbay::desktop
