#pragma once

#include <memory>

#include <QString>
#include <QTemporaryDir>

#include "support/ChildProcess.h"

namespace kestrelbay::testing {

/// A session bus of our own on which nothing is, ended with its owner. Throws
/// std::runtime_error when it does not come up.
class PrivateSessionBus {
public:
    PrivateSessionBus();

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
    QTemporaryDir folder_;
    std::unique_ptr<ChildProcess> process_;
    QString address_;
};

}  // namespace kestrelbay::testing
