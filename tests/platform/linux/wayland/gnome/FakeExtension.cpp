#include "FakeExtension.h"

#include <QDBusArgument>
#include <QDBusError>

#include "platform/linux/wayland/gnome/ShellExtension.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::testing {

using gnome::ShellExtension;

void FakeExtension::enable() {
    {
        const std::lock_guard lock(mutex_);
        bound_.clear();
    }
    object_.emplace(busAddress_, ShellExtension::serviceName(), ShellExtension::objectPath(),
                    [this](const QDBusMessage &call) { return answer(call); });
}

void FakeExtension::refuse(const QStringList &accelerators) {
    const std::lock_guard lock(mutex_);
    refused_ = accelerators;
}

void FakeExtension::serveAnother() {
    const std::lock_guard lock(mutex_);
    servesAnother_ = true;
}

void FakeExtension::setWindows(const QVariant &windows) {
    const std::lock_guard lock(mutex_);
    windows_ = windows;
}

void FakeExtension::press(const QString &accelerator) {
    object_->emitSignal(ShellExtension::interfaceName(), u"Pressed"_s, {accelerator});
}

void FakeExtension::tell(const QString &signal) {
    object_->emitSignal(ShellExtension::interfaceName(), signal, {});
}

QStringList FakeExtension::bound() {
    const std::lock_guard lock(mutex_);
    return bound_;
}

QStringList FakeExtension::calls() {
    const std::lock_guard lock(mutex_);
    return calls_;
}

int FakeExtension::hotkeyCalls() {
    const std::lock_guard lock(mutex_);
    return hotkeyCalls_;
}

std::optional<QDBusMessage> FakeExtension::answer(const QDBusMessage &call) {
    const std::lock_guard lock(mutex_);
    if (servesAnother_)
        return call.createErrorReply(QDBusError::AccessDenied, u"another"_s);
    if (call.member() == u"SetHotkeys") {
        ++hotkeyCalls_;
        bound_.clear();
        QStringList refused;
        for (const QString &wanted : call.arguments().first().toStringList())
            (refused_.contains(wanted) ? refused : bound_).append(wanted);
        return call.createReply(refused);
    }
    QString told = call.member();
    for (const QVariant &argument : call.arguments()) {
        if (argument.canConvert<QDBusArgument>()) {
            for (const qulonglong number : qdbus_cast<QList<qulonglong>>(argument))
                told += u" %1"_s.arg(number);
        } else {
            told += u" %1"_s.arg(argument.toULongLong());
        }
    }
    calls_.append(told);
    if (call.member() != u"Windows")
        return call.createReply();
    return windows_.isValid() ? std::optional(call.createReply(windows_)) : std::nullopt;
}

}  // namespace kestrelbay::testing
