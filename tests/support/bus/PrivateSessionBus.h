#pragma once

#include <memory>

#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>

#include "support/ChildProcess.h"

namespace kestrelbay::testing {

/// A session bus of our own on which nothing is, and which starts nothing but what a test offers:
/// what is installed on a machine, such as a portal, makes no difference. Ended with its owner.
/// Throws std::runtime_error when it does not come up.
class PrivateSessionBus {
public:
    /// What it starts keeps nothing in the home folder.
    PrivateSessionBus();
    /// What it starts has this environment.
    explicit PrivateSessionBus(const QProcessEnvironment &environment);

    /// What DBUS_SESSION_BUS_ADDRESS has to be.
    [[nodiscard]] const QString &address() const { return address_; }
    [[nodiscard]] ChildProcess &process() { return *process_; }
    /// From now on it can start this service, if it is installed.
    void offer(const QString &service) const;
    /// The folder of the services that the bus can start.
    [[nodiscard]] QString serviceFolder() const {
        return folder_.filePath(QStringLiteral("dbus-1/services"));
    }

private:
    void start(const QProcessEnvironment &environment);

    QTemporaryDir folder_;
    std::unique_ptr<ChildProcess> process_;
    QString address_;
};

}  // namespace kestrelbay::testing
