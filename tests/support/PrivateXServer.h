#pragma once

#include <memory>

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include "support/ChildProcess.h"
#include "support/WindowManagerStart.h"
#include "support/bus/PrivateSessionBus.h"

namespace kestrelbay::testing {

/// An Xvfb of our own on a free display number, ended with its owner. Throws
/// std::runtime_error when it does not come up.
class PrivateXServer {
public:
    explicit PrivateXServer(const QStringList &extraArguments = {});

    /// As ":99".
    [[nodiscard]] const QString &displayName() const { return displayName_; }
    /// This process's environment with DISPLAY set and every trace of another
    /// desktop session (Wayland, session type, desktop name) taken out.
    [[nodiscard]] QProcessEnvironment environment() const;
    [[nodiscard]] ChildProcess &process() { return *process_; }

    /// Starts one of knownWindowManagers() and waits until it manages windows. It
    /// has a home folder of its own and, unless `session` names one, a session bus only
    /// if it cannot do without.
    /// Throws std::runtime_error when it does not come up.
    [[nodiscard]] std::unique_ptr<ChildProcess> startWindowManager(
        const QString &program, const QProcessEnvironment &session = {},
        WindowManagerKeys keys = WindowManagerKeys::Free) const;
    /// Another of the same program takes its place, as startWindowManager() starts it.
    void replaceWindowManager(std::unique_ptr<ChildProcess> &manager, const QString &program,
                              const QProcessEnvironment &session = {}) const;

private:
    [[nodiscard]] std::unique_ptr<ChildProcess> launchWindowManager(
        const QString &program, const WindowManagerStart &start, const QStringList &arguments,
        const QProcessEnvironment &session) const;

    QTemporaryDir managerHome_;
    mutable std::unique_ptr<PrivateSessionBus> managersBus_;
    std::unique_ptr<ChildProcess> process_;
    QString displayName_;
};

}  // namespace kestrelbay::testing
