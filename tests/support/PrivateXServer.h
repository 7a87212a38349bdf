#pragma once

#include <memory>

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include "support/ChildProcess.h"

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

    /// Starts a window manager and waits until it has announced itself on the
    /// root window. Throws std::runtime_error when it does not.
    [[nodiscard]] std::unique_ptr<ChildProcess> startWindowManager(
        const QString &program, const QStringList &arguments = {},
        const QProcessEnvironment &extra = {}) const;

private:
    std::unique_ptr<ChildProcess> process_;
    QString displayName_;
};

}  // namespace kestrelbay::testing
