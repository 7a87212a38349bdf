#pragma once

#include <memory>
#include <optional>

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include "desktop/display/WindowManagerView.h"
#include "desktop/session/HomeFolder.h"
#include "desktop/session/Processes.h"
#include "desktop/session/Session.h"
#include "support/ChildProcess.h"
#include "support/PrivateXServer.h"
#include "support/bus/PrivateSessionBus.h"

namespace kestrelbay::desktop {

/// X server, session bus, window manager with at least two workspaces, home folder, all of it
/// ours.
class Desktop : public Session {
public:
    /// `windowManager` is one of testing::knownWindowManagers(); the server's arguments
    /// are those beyond the usual ones. Throws std::runtime_error when a part of the
    /// session does not come up.
    explicit Desktop(QString windowManager, const QStringList &serverArguments = {});
    ~Desktop() override;
    Desktop(const Desktop &) = delete;
    Desktop &operator=(const Desktop &) = delete;

    [[nodiscard]] const QString &displayName() const { return server_.displayName(); }
    [[nodiscard]] const QProcessEnvironment &environment() const override { return environment_; }
    [[nodiscard]] const HomeFolder &home() const override { return home_; }
    [[nodiscard]] const Processes &processes() const override { return processes_; }
    [[nodiscard]] WindowManagerView &view() { return *view_; }

    [[nodiscard]] Command command(const QString &program,
                                  const QStringList &arguments) const override;
    void start(const QString &program, const QStringList &arguments = {}) override;
    void write(const QString &path, const QByteArray &contents) override;
    /// A second window manager takes over from the running one.
    void replaceWindowManager();
    /// From now on windows can be seen through, as they always can where the window manager is
    /// the compositor. Throws std::runtime_error.
    void startCompositor();
    void stopCompositor();
    void killServer();
    void screenshot(const QString &path) override;

private:
    HomeFolder home_;
    Processes processes_;
    testing::PrivateXServer server_;
    QProcessEnvironment environment_;
    QString windowManager_;
    std::unique_ptr<testing::PrivateSessionBus> bus_;
    std::unique_ptr<testing::ChildProcess> manager_;
    std::unique_ptr<testing::ChildProcess> compositor_;
    std::vector<std::unique_ptr<testing::ChildProcess>> programs_;
    std::optional<WindowManagerView> view_;
};

}  // namespace kestrelbay::desktop
