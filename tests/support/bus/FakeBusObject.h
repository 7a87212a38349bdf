#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QThread>

namespace kestrelbay::testing {

/// An object of another program on a session bus, with one well-known name. It
/// answers on a thread of its own, as that program would. Throws std::runtime_error
/// when the name is not to be had. Needs a QCoreApplication.
class FakeBusObject {
public:
    /// What to reply to a call; none to keep silent. Called on the object's thread.
    using Answer = std::function<std::optional<QDBusMessage>(const QDBusMessage &call)>;

    FakeBusObject(const QString &busAddress, const QString &service, const QString &path,
                  Answer answer);
    /// Leaves the bus, whose other programs find the name without an owner from then on.
    ~FakeBusObject();
    FakeBusObject(const FakeBusObject &) = delete;
    FakeBusObject &operator=(const FakeBusObject &) = delete;

    void emitSignal(const QString &interface, const QString &member, const QVariantList &values);
    /// From an object below this one, whose calls this one answers, too.
    void emitSignalBelow(const QString &path, const QString &interface, const QString &member,
                         const QVariantList &values);

private:
    class Receiver;

    const QString service_;
    const QString path_;
    QDBusConnection connection_;
    QThread thread_;
    std::unique_ptr<Receiver> receiver_;
};

}  // namespace kestrelbay::testing
