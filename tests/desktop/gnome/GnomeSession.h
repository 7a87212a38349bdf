#pragma once

#include <memory>
#include <optional>

#include <QByteArray>
#include <QDBusConnection>
#include <QString>

#include "desktop/gnome/RemoteKeyboard.h"
#include "desktop/gnome/ShellScript.h"
#include "desktop/session/WaylandSession.h"

namespace kestrelbay::desktop {

/// GNOME Shell with Xwayland and our extension, and the part of GNOME that has the users' own keys.
class GnomeSession : public WaylandSession {
public:
    /// What the user has set, as GSettings keeps it in a key file. Throws std::runtime_error when a
    /// part of the session does not come up.
    explicit GnomeSession(const QByteArray &settings);
    ~GnomeSession() override;

    /// As the user does.
    void enableExtension(bool enabled) const;

    [[nodiscard]] const ShellScript &shell() const { return *script_; }
    [[nodiscard]] Keyboard &keyboard() override { return *keyboard_; }

    void restartCompositor() override;
    void screenshot(const QString &path) override;

private:
    void installExtension();
    void connectToBus();
    void startShell();
    void startKeys();
    [[nodiscard]] bool isShellUp();
    void dropShell();

    std::unique_ptr<testing::ChildProcess> systemBus_;
    std::unique_ptr<testing::ChildProcess> keys_;
    std::optional<QDBusConnection> bus_;
    std::optional<ShellScript> script_;
    std::optional<RemoteKeyboard> keyboard_;
};

}  // namespace kestrelbay::desktop
