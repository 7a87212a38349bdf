#include "support/bus/FakeBusObject.h"

#include <atomic>
#include <stdexcept>
#include <utility>

#include <QDBusError>
#include <QDBusVirtualObject>

namespace kestrelbay::testing {

namespace {

QDBusConnection connectTo(const QString &busAddress) {
    static std::atomic<int> count = 0;
    return QDBusConnection::connectToBus(busAddress, QStringLiteral("fake %1").arg(++count));
}

}  // namespace

class FakeBusObject::Receiver final : public QDBusVirtualObject {
public:
    explicit Receiver(Answer answer) : answer_(std::move(answer)) {}

    [[nodiscard]] QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override {
        message.setDelayedReply(true);
        if (const std::optional<QDBusMessage> reply = answer_(message))
            connection.send(*reply);
        return true;
    }

private:
    const Answer answer_;
};

FakeBusObject::FakeBusObject(const QString &busAddress, const QString &service, const QString &path,
                             Answer answer)
    : service_(service),
      path_(path),
      connection_(connectTo(busAddress)),
      receiver_(std::make_unique<Receiver>(std::move(answer))) {
    const bool isThere =
        connection_.registerVirtualObject(path, receiver_.get(), QDBusConnection::SubPath);
    // Not before, since Qt gives it a child.
    receiver_->moveToThread(&thread_);
    thread_.start();
    if (!isThere || !connection_.registerService(service)) {
        thread_.quit();
        thread_.wait();
        throw std::runtime_error("the name is not to be had: " +
                                 connection_.lastError().message().toStdString());
    }
}

FakeBusObject::~FakeBusObject() {
    connection_.unregisterObject(path_);
    connection_.unregisterService(service_);
    QDBusConnection::disconnectFromBus(connection_.name());
    thread_.quit();
    thread_.wait();
}

void FakeBusObject::emitSignal(const QString &interface, const QString &member,
                               const QVariantList &values) {
    emitSignalBelow(path_, interface, member, values);
}

void FakeBusObject::emitSignalBelow(const QString &path, const QString &interface,
                                    const QString &member, const QVariantList &values) {
    QDBusMessage signal = QDBusMessage::createSignal(path, interface, member);
    signal.setArguments(values);
    connection_.send(signal);
}

}  // namespace kestrelbay::testing
