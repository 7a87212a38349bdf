#include "platform/linux/wayland/plasma/windows/FakeKWin.h"

#include <utility>

#include <QDBusPendingCall>
#include <QFile>
#include <QRegularExpression>

#include "support/Poll.h"

namespace kestrelbay::testing {

namespace {

QDBusConnection connectTo(const QString &address) {
    static int count = 0;
    return QDBusConnection::connectToBus(address, QStringLiteral("script %1").arg(++count));
}

}  // namespace

FakeKWin::Called FakeKWin::calledIn(const QString &scriptPath) {
    QFile file(scriptPath);
    (void)file.open(QIODevice::ReadOnly);
    const QRegularExpression names(QStringLiteral(R"re(callDBus\("(:[0-9.]+)", "([^"]+)")re"));
    const auto match = names.match(QString::fromUtf8(file.readAll()));
    return {.connection = match.captured(1), .path = match.captured(2)};
}

QDBusMessage FakeKWin::callTo(const Called &called, const QString &member) const {
    return QDBusMessage::createMethodCall(called.connection, called.path,
                                          QStringLiteral("org.kestrelbay.KestrelBay.Windows"),
                                          member);
}

FakeKWin::FakeKWin(const QString &busAddress, Script script)
    : script_(std::move(script)),
      busAddress_(busAddress),
      bus_(connectTo(busAddress)),
      object_(busAddress, QStringLiteral("org.kde.KWin"), QStringLiteral("/Scripting"),
              [this](const QDBusMessage &call) { return answer(call); }) {}

FakeKWin::~FakeKWin() {
    isLoaded_ = false;
    QDBusConnection::disconnectFromBus(bus_.name());
    if (thread_.joinable())
        thread_.join();
}

std::optional<QDBusMessage> FakeKWin::answer(const QDBusMessage &call) {
    const QVariantList arguments = call.arguments();
    if (call.member() == u"unloadScript") {
        if (arguments.value(0) == name_)
            isLoaded_ = false;
        return call.createReply(true);
    }
    if (call.member() != u"loadScript")
        return call.createErrorReply(QDBusError::UnknownMethod, {});
    if (thread_.joinable())
        thread_.join();
    called_ = calledIn(arguments.value(0).toString());
    name_ = arguments.value(1).toString();
    isCallForgotten_ = false;
    isLoaded_ = true;
    ++loads_;
    thread_ = std::thread([this, called = called_] { carryOut(called); });
    return call.createReply(0);
}

void FakeKWin::carryOut(const Called &called) {
    QDBusMessage next = callTo(called, QStringLiteral("Next"));
    QByteArray result;
    while (isLoaded_) {
        next.setArguments({QString::fromUtf8(result)});
        const QDBusPendingCall call = bus_.asyncCall(next);
        (void)waitUntil([&] { return call.isFinished() || isCallForgotten_ || !isLoaded_; });
        if (!call.isFinished() || call.isError())
            return;
        const QByteArray question = call.reply().arguments().value(0).toString().toUtf8();
        result = script_(question);
    }
}

void FakeKWin::forgetCall() {
    isCallForgotten_ = true;
    thread_.join();
    // The call has come by then.
    bus_.call(QDBusMessage::createMethodCall(called_.connection, QStringLiteral("/"),
                                             QStringLiteral("org.freedesktop.DBus.Peer"),
                                             QStringLiteral("Ping")));
}

void FakeKWin::tellOfWindow() {
    bus_.send(callTo(called_, QStringLiteral("Appeared")));
}

void FakeKWin::tellOfUse(const QString &window) {
    QDBusMessage call = callTo(called_, QStringLiteral("Used"));
    call.setArguments({window});
    bus_.send(call);
}

}  // namespace kestrelbay::testing
