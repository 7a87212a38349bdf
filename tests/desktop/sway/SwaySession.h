#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include "desktop/display/VirtualKeyboard.h"
#include "desktop/session/HomeFolder.h"
#include "desktop/session/Processes.h"
#include "desktop/session/Session.h"
#include "desktop/sway/SwayIpc.h"
#include "support/ChildProcess.h"

namespace kestrelbay::desktop {

/// A Wayland session without a screen: sway with Xwayland, session bus, home folder, all of it the
/// ordinary user's.
class SwaySession : public Session {
public:
    /// What sway is told besides the screen's size, as lines of its configuration. Throws
    /// std::runtime_error when a part of the session does not come up.
    explicit SwaySession(const QByteArray &configuration);
    ~SwaySession() override;
    SwaySession(const SwaySession &) = delete;
    SwaySession &operator=(const SwaySession &) = delete;

    /// Names the compositor's sockets and Xwayland's display.
    [[nodiscard]] const QProcessEnvironment &environment() const override { return environment_; }
    [[nodiscard]] const HomeFolder &home() const override { return home_; }
    [[nodiscard]] const Processes &processes() const override { return processes_; }
    [[nodiscard]] Command command(const QString &program,
                                  const QStringList &arguments) const override {
        return asOrdinaryUser(program, arguments);
    }
    [[nodiscard]] SwayIpc &ipc() { return *ipc_; }
    [[nodiscard]] VirtualKeyboard &keyboard() { return *keyboard_; }

    /// Where the session's user can run this program: a copy, if it lies where they cannot.
    [[nodiscard]] QString withinReach(const QString &program) const;

    void start(const QString &program, const QStringList &arguments = {}) override;
    void write(const QString &path, const QByteArray &contents) override;
    /// Kills sway, with which everything ends that is in view, and starts another one.
    void restartCompositor();
    void screenshot(const QString &path) override;

private:
    void startBus();
    void startCompositor();

    HomeFolder home_;
    Processes processes_;
    QProcessEnvironment environment_;
    std::unique_ptr<testing::ChildProcess> bus_;
    std::unique_ptr<testing::ChildProcess> compositor_;
    std::vector<std::unique_ptr<testing::ChildProcess>> programs_;
    std::optional<SwayIpc> ipc_;
    std::optional<VirtualKeyboard> keyboard_;
};

}  // namespace kestrelbay::desktop
