#pragma once

#include <mutex>

#include <QString>
#include <QStringList>

#include "platform/linux/glib/GObjectPtr.h"

namespace kestrelbay {

/// What became of a call to another program.
enum class BusAnswer {
    Done,
    /// It has the call and is slow about it.
    NoAnswerYet,
    /// There is nobody, or it refused.
    Failed,
};

/// The calls that launching makes on the session bus. Every call has an end; a
/// missing bus is like a bus without anybody on it. Any thread.
class SessionBus {
public:
    /// org.freedesktop.Application of a D-Bus activatable application: Open with
    /// URIs, otherwise Activate. The service is started when it does not run.
    [[nodiscard]] BusAnswer activate(const QString &applicationId, const QStringList &uris,
                                     const QString &startupId);

    /// org.freedesktop.FileManager1.
    [[nodiscard]] BusAnswer showFolder(const QString &uri, const QString &startupId);

    /// Puts a process into a systemd scope of its own, where the user has a service
    /// manager. Does not wait for it.
    void moveToScope(const QString &applicationId, qint64 pid);

    /// GLib connects to the bus at every launch; this keeps one connection for all,
    /// and keeps the program alive when the bus goes away.
    void connect();

    /// Null without a bus.
    [[nodiscard]] GObjectPtr<GDBusConnection> connection();

private:
    [[nodiscard]] BusAnswer call(const QString &name, const QString &path, const char *interface,
                                 const char *method, GVariant *parameters);

    std::mutex mutex_;
    GObjectPtr<GDBusConnection> connection_;
};

/// Name of the scope, with the application's id as systemd escapes it.
[[nodiscard]] QString scopeName(const QString &applicationId, qint64 pid);

}  // namespace kestrelbay
