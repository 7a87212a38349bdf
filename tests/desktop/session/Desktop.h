#pragma once

#include <memory>
#include <optional>

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include "desktop/display/WindowManagerView.h"
#include "desktop/session/HomeFolder.h"
#include "desktop/session/Processes.h"
#include "support/ChildProcess.h"
#include "support/PrivateXServer.h"

namespace kestrelbay::desktop {

/// A whole desktop session of its own: X server, session bus, window manager with
/// at least two workspaces, home folder. Everything in it ends with it, programs
/// started by hotkeys included.
class Desktop {
public:
    /// `windowManager` is one of testing::knownWindowManagers(); the server's arguments
    /// are those beyond the usual ones. Throws std::runtime_error when a part of the
    /// session does not come up.
    explicit Desktop(QString windowManager, const QStringList &serverArguments = {});
    ~Desktop();

    [[nodiscard]] const QString &displayName() const { return server_.displayName(); }
    [[nodiscard]] const QProcessEnvironment &environment() const { return environment_; }
    [[nodiscard]] const HomeFolder &home() const { return home_; }
    [[nodiscard]] const Processes &processes() const { return processes_; }
    [[nodiscard]] WindowManagerView &view() { return *view_; }

    /// Starts an ordinary program of this session; it runs until the session ends.
    void start(const QString &program, const QStringList &arguments = {});
    /// A second window manager takes over from the running one.
    void replaceWindowManager();
    /// From now on windows can be seen through, as they always can where the window manager is
    /// the compositor. Throws std::runtime_error.
    void startCompositor();
    void stopCompositor();
    void killServer();
    /// A picture of the whole screen.
    void screenshot(const QString &path);

private:
    HomeFolder home_;
    Processes processes_;
    testing::PrivateXServer server_;
    QProcessEnvironment environment_;
    QString windowManager_;
    std::unique_ptr<testing::ChildProcess> bus_;
    std::unique_ptr<testing::ChildProcess> manager_;
    std::unique_ptr<testing::ChildProcess> compositor_;
    std::vector<std::unique_ptr<testing::ChildProcess>> programs_;
    std::optional<WindowManagerView> view_;
};

}  // namespace kestrelbay::desktop
