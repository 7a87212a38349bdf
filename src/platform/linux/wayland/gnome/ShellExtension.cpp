#include "platform/linux/wayland/gnome/ShellExtension.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::gnome {

QString ShellExtension::serviceName() {
    return u"org.kestrelbay.Shell"_s;
}

QString ShellExtension::objectPath() {
    return u"/org/kestrelbay/Shell"_s;
}

QString ShellExtension::interfaceName() {
    return u"org.kestrelbay.Shell1"_s;
}

bool ShellExtension::isThere() const {
    QDBusMessage question =
        QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                       u"org.freedesktop.DBus"_s, u"NameHasOwner"_s);
    question.setArguments({serviceName()});
    const QDBusMessage answer =
        bus_.get().call(question, QDBus::Block, static_cast<int>(kPatience.count()));
    return answer.type() == QDBusMessage::ReplyMessage && answer.arguments().value(0).toBool();
}

QDBusPendingCall ShellExtension::send(const QString &method, const QVariantList &arguments,
                                      std::chrono::milliseconds patience) const {
    QDBusMessage question =
        QDBusMessage::createMethodCall(serviceName(), objectPath(), interfaceName(), method);
    question.setArguments(arguments);
    // The bus would look for a service of that name to start.
    question.setAutoStartService(false);
    return bus_.get().asyncCall(question, static_cast<int>(patience.count()));
}

QDBusMessage ShellExtension::ask(const QString &method, const QVariantList &arguments) const {
    QDBusPendingCall call = send(method, arguments);
    call.waitForFinished();
    return call.reply();
}

}  // namespace kestrelbay::gnome
