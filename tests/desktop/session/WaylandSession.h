#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include "desktop/display/Keyboard.h"
#include "desktop/display/XClient.h"
#include "desktop/session/HomeFolder.h"
#include "desktop/session/OrdinaryUser.h"
#include "desktop/session/Processes.h"
#include "desktop/session/Session.h"
#include "support/ChildProcess.h"

namespace kestrelbay::desktop {

/// A Wayland session without a screen: compositor, session bus, home folder, all of it the
/// ordinary user's.
class WaylandSession : public Session {
public:
    ~WaylandSession() override;
    WaylandSession(const WaylandSession &) = delete;
    WaylandSession &operator=(const WaylandSession &) = delete;

    /// Names the compositor's sockets and Xwayland's display.
    [[nodiscard]] const QProcessEnvironment &environment() const override { return environment_; }
    [[nodiscard]] const HomeFolder &home() const override { return home_; }
    [[nodiscard]] const Processes &processes() const override { return processes_; }
    [[nodiscard]] Command command(const QString &program,
                                  const QStringList &arguments) const override {
        return asOrdinaryUser(program, arguments);
    }
    /// Not the same one after restartCompositor().
    [[nodiscard]] virtual Keyboard &keyboard() = 0;

    /// Xwayland, for a look at it. Throws std::runtime_error when it does not answer.
    [[nodiscard]] XClient &x();

    /// Where the session's user can run this program: a copy, if it lies where they cannot.
    [[nodiscard]] QString withinReach(const QString &program) const;

    void start(const QString &program, const QStringList &arguments = {}) override;
    void write(const QString &path, const QByteArray &contents) override;
    /// Kills the compositor, with which everything ends that is in view, and starts another one.
    virtual void restartCompositor() = 0;

protected:
    /// Of the desktop that XDG_CURRENT_DESKTOP names. Nothing runs yet.
    explicit WaylandSession(const QString &desktop);

    void setVariable(const QString &name, const QString &value);
    /// What follows throws std::runtime_error when it does not come up.
    void startBus();
    /// One more bus of the user's, as a stand-in for the system's, and where it is.
    [[nodiscard]] std::unique_ptr<testing::ChildProcess> startBusDaemon();
    [[nodiscard]] static QString addressOf(testing::ChildProcess &busDaemon);
    /// Returns once `isUp` says so.
    void startCompositor(const QString &program, const QStringList &arguments,
                         const std::function<bool()> &isUp);
    void killCompositor();
    [[nodiscard]] std::unique_ptr<testing::ChildProcess> startAsUser(
        const QString &program, const QStringList &arguments, const QString &outputFile = {}) const;

    /// A line of a shell that leaves the environment it runs in at environmentFile().
    [[nodiscard]] static QString tellingEnvironment();
    [[nodiscard]] QString environmentFile() const;
    /// Takes these variables from there.
    void takeVariables(const QStringList &names);
    /// In the home folder.
    [[nodiscard]] QString copyOf(const QString &program) const;
    /// The compositor's socket, by its path.
    [[nodiscard]] QString socket() const;

private:
    HomeFolder home_;
    Processes processes_;
    QProcessEnvironment environment_;
    std::unique_ptr<testing::ChildProcess> bus_;
    std::unique_ptr<testing::ChildProcess> compositor_;
    std::vector<std::unique_ptr<testing::ChildProcess>> programs_;
    std::optional<XClient> x_;
};

}  // namespace kestrelbay::desktop
