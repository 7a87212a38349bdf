#include "platform/linux/wayland/plasma/LayoutInUse.h"

#include <utility>

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

using namespace Qt::StringLiterals;

namespace kestrelbay::plasma {

namespace {

const auto kKeyboard = u"org.kde.keyboard"_s;
const auto kLayouts = u"/Layouts"_s;
const auto kKeyboardLayouts = u"org.kde.KeyboardLayouts"_s;

}  // namespace

LayoutInUse::LayoutInUse(QDBusConnection bus, std::function<void()> changed)
    : changed_(std::move(changed)),
      bus_(std::move(bus)),
      watcher_(kKeyboard, bus_, QDBusServiceWatcher::WatchForOwnerChange) {
    bus_.connect(kKeyboard, kLayouts, kKeyboardLayouts, u"layoutChanged"_s, this, SLOT(take(uint)));
    // It is there while there are several layouts.
    connect(&watcher_, &QDBusServiceWatcher::serviceRegistered, this, &LayoutInUse::ask);
    connect(&watcher_, &QDBusServiceWatcher::serviceUnregistered, this, [this] { take(0); });
    ask();
}

void LayoutInUse::ask() {
    QDBusMessage question =
        QDBusMessage::createMethodCall(kKeyboard, kLayouts, kKeyboardLayouts, u"getLayout"_s);
    question.setAutoStartService(false);
    auto *const watcher = new QDBusPendingCallWatcher(bus_.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<uint> reply = *watcher;
        if (!reply.isError())
            take(reply.value());
    });
}

void LayoutInUse::take(uint layout) {
    if (layout == layout_)
        return;
    layout_ = layout;
    const auto handler = changed_;
    handler();
}

}  // namespace kestrelbay::plasma
