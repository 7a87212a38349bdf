#include "desktop/kwin/KWinScripts.h"

#include <stdexcept>

#include <QDBusMessage>

#include "desktop/session/WaylandSession.h"
#include "support/Poll.h"

namespace kestrelbay::desktop {

namespace {

const QString kKWin = QStringLiteral("org.kde.KWin");
const QString kViewer = QStringLiteral("org.kestrelbay.DesktopView");
const QString kViewScript = QStringLiteral("kestrel-view");
constexpr int kScriptPatience = 10'000;  // milliseconds

QString busAddress(const WaylandSession &session) {
    return session.environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
}

QDBusMessage callKWin(const QDBusConnection &bus, const QString &path, const QString &interface,
                      const QString &member, const QVariantList &arguments = {}) {
    QDBusMessage message = QDBusMessage::createMethodCall(kKWin, path, interface, member);
    message.setArguments(arguments);
    QDBusMessage reply = bus.call(message, QDBus::Block, kScriptPatience);
    if (reply.type() != QDBusMessage::ReplyMessage)
        throw std::runtime_error("KWin does not " + member.toStdString() + ": " +
                                 reply.errorMessage().toStdString());
    return reply;
}

}  // namespace

KWinScripts::KWinScripts(WaylandSession &session)
    : session_(session),
      bus_(QDBusConnection::connectToBus(busAddress(session), kViewScript)),
      listener_(busAddress(session), kViewer, QStringLiteral("/"),
                [this](const QDBusMessage &told) -> std::optional<QDBusMessage> {
                    const std::lock_guard lock(mutex_);
                    result_ = told.arguments().value(0).toString();
                    isTold_ = true;
                    return told.createReply();
                }) {}

void KWinScripts::tellScripting(const char *member, const QVariantList &arguments) {
    (void)callKWin(bus_, QStringLiteral("/Scripting"), QStringLiteral("org.kde.kwin.Scripting"),
                   QLatin1String(member), arguments);
}

void KWinScripts::start(const QString &name, const QString &text) {
    // File managers read a folder anew at each file that is written there: the home folder is none
    // for what a condition asks over and over.
    const QString path =
        QStringLiteral("%1/%2.js")
            .arg(session_.environment().value(QStringLiteral("XDG_RUNTIME_DIR")), name);
    HomeFolder::write(path, text.toUtf8());
    tellScripting("loadScript", {path, name});
    // All that do not run yet. Numbers of scripts are not to be relied on: KWin gives them again.
    tellScripting("start");
}

QString KWinScripts::run(const QString &body) {
    {
        const std::lock_guard lock(mutex_);
        isTold_ = false;
    }
    start(kViewScript, QStringLiteral("callDBus('%1', '/', '%1', 'tell', "
                                      "String((function() { %2 })()));")
                           .arg(kViewer, body));
    const bool isTold = testing::waitUntil([this] {
        const std::lock_guard lock(mutex_);
        return isTold_;
    });
    tellScripting("unloadScript", {kViewScript});
    if (!isTold)
        throw std::runtime_error("KWin's script tells nothing: " + body.toStdString());
    const std::lock_guard lock(mutex_);
    return result_;
}

}  // namespace kestrelbay::desktop
