#include "desktop/gnome/RemoteKeyboard.h"

#include <stdexcept>

#include <QDBusMessage>
#include <QDBusObjectPath>

#include "support/KeyPresser.h"

namespace kestrelbay::desktop {

namespace {

constexpr int kKeyboardTimeoutMs = 5000;
/// Between the numbers of X and of the kernel.
constexpr unsigned kOffset = 8;

QDBusMessage callKeyboard(const QDBusConnection &bus, const QString &path, const QString &interface,
                          const QString &method, const QVariantList &arguments = {}) {
    const auto name = QStringLiteral("org.gnome.Mutter.RemoteDesktop");
    QDBusMessage message = QDBusMessage::createMethodCall(name, path, name + interface, method);
    message.setArguments(arguments);
    const QDBusMessage answer = bus.call(message, QDBus::Block, kKeyboardTimeoutMs);
    if (answer.type() != QDBusMessage::ReplyMessage)
        throw std::runtime_error(method.toStdString() + ": " + answer.errorMessage().toStdString());
    return answer;
}

const auto kOfSession = QStringLiteral(".Session");

}  // namespace

RemoteKeyboard::RemoteKeyboard(const QDBusConnection &bus) : bus_(bus), script_(bus) {
    const QDBusMessage answer =
        callKeyboard(bus_, QStringLiteral("/org/gnome/Mutter/RemoteDesktop"), {},
                     QStringLiteral("CreateSession"));
    session_ = answer.arguments().value(0).value<QDBusObjectPath>().path();
    callKeyboard(bus_, session_, kOfSession, QStringLiteral("Start"));
    // mutter plugs it in at its first key, which programs without a keyboard until then do not get.
    press(testing::xkey::kLeftShift);
    release(testing::xkey::kLeftShift);
}

RemoteKeyboard::~RemoteKeyboard() {
    const QDBusMessage stop = QDBusMessage::createMethodCall(
        QStringLiteral("org.gnome.Mutter.RemoteDesktop"), session_,
        QStringLiteral("org.gnome.Mutter.RemoteDesktop.Session"), QStringLiteral("Stop"));
    static_cast<void>(bus_.send(stop));
}

void RemoteKeyboard::send(std::uint8_t xKeycode, bool pressed) {
    callKeyboard(bus_, session_, kOfSession, QStringLiteral("NotifyKeyboardKeycode"),
                 {QVariant::fromValue(unsigned{xKeycode} - kOffset), pressed});
    // The key goes through another thread of mutter's; this question does not overtake it by far.
    static_cast<void>(script_.evaluate(QStringLiteral("0")));
}

}  // namespace kestrelbay::desktop
