#pragma once

#include <QString>
#include <QStringList>

#include "platform/linux/bus/SessionBus.h"

class QDBusMessage;

namespace kestrelbay {

/// What became of a call to another program.
enum class BusAnswer {
    Done,
    /// It has the call and is slow about it.
    NoAnswerYet,
    /// There is nobody, or it refused.
    Failed,
};

/// What a launched program gets so that it may take the focus.
struct LaunchIds {
    QString startupId;        ///< DESKTOP_STARTUP_ID
    QString activationToken;  ///< XDG_ACTIVATION_TOKEN; empty when nobody gave one
};

/// The calls that launching makes on the session bus. Every call has an end; a
/// missing bus is like a bus without anybody on it. Any thread.
class LaunchBus {
public:
    /// org.freedesktop.Application of a D-Bus activatable application: Open with
    /// URIs, otherwise Activate. The service is started when it does not run.
    [[nodiscard]] BusAnswer activate(const QString &applicationId, const QStringList &uris,
                                     const LaunchIds &ids);

    /// org.freedesktop.FileManager1.
    [[nodiscard]] BusAnswer showFolder(const QString &uri, const QString &startupId);

    /// Puts a process into a systemd scope of its own, where the user has a service
    /// manager. Does not wait for it.
    void moveToScope(const QString &applicationId, qint64 pid);

private:
    [[nodiscard]] BusAnswer call(const QDBusMessage &message);

    SessionBus bus_;
};

/// Name of the scope, with the application's id as systemd escapes it.
[[nodiscard]] QString scopeName(const QString &applicationId, qint64 pid);

}  // namespace kestrelbay
