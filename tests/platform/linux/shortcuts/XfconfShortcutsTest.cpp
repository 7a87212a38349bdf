#include "platform/linux/shortcuts/ShortcutTables.h"

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "support/bus/FakeBusObject.h"
#include "support/bus/PrivateSessionBus.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::testing {
namespace {

const LookedForKey kSuperT{modifier::kCommand, {XKB_KEY_t}};
const LookedForKey kSuperK{modifier::kCommand, {XKB_KEY_k}};
const LookedForKey kAltF4{modifier::kOption, {XKB_KEY_F4}};

/// An xfconfd that has these shortcuts.
std::optional<HotkeyHolder> holderInXfce(const QVariantMap &shortcuts, const LookedForKey &key) {
    const PrivateSessionBus bus;
    const FakeBusObject xfconfd(bus.address(), u"org.xfce.Xfconf"_s, u"/org/xfce/Xfconf"_s,
                                [&](const QDBusMessage &call) -> std::optional<QDBusMessage> {
                                    const bool isAsked =
                                        call.member() == "GetAllProperties"_L1 &&
                                        call.arguments() ==
                                            QVariantList{u"xfce4-keyboard-shortcuts"_s, u"/"_s};
                                    return call.createReply(isAsked ? shortcuts : QVariantMap());
                                });
    const QDBusConnection connection = QDBusConnection::connectToBus(bus.address(), u"asking"_s);
    auto holder = holderInXfconf(connection, key);
    QDBusConnection::disconnectFromBus(u"asking"_s);
    return holder;
}

TEST(XfconfShortcuts, AreThoseGivenUntilTheUserHasHisOwn) {
    QVariantMap shortcuts{{u"/commands/default/<Super>t"_s, u"given"_s},
                          {u"/commands/custom/<Super>t"_s, u"own"_s},
                          {u"/commands/custom/<Super>t/startup-notify"_s, true}};
    EXPECT_EQ(holderInXfce(shortcuts, kSuperT), (HotkeyHolder{u"xfsettingsd"_s, u"given"_s, {}}));
    shortcuts[u"/commands/custom/override"_s] = true;
    EXPECT_EQ(holderInXfce(shortcuts, kSuperT)->action, u"own"_s);
    EXPECT_EQ(holderInXfce(shortcuts, kSuperK), std::nullopt);
}

TEST(XfconfShortcuts, AreAlsoTheWindowManagers) {
    EXPECT_EQ(holderInXfce({{u"/xfwm4/default/<Alt>F4"_s, u"close_window_key"_s}}, kAltF4),
              (HotkeyHolder{u"xfwm4"_s, u"close_window_key"_s, {}}));
}

TEST(XfconfShortcuts, AreNoneWithoutXfce) {
    const PrivateSessionBus bus;
    const QDBusConnection connection = QDBusConnection::connectToBus(bus.address(), u"asking"_s);
    EXPECT_EQ(holderInXfconf(connection, kSuperT), std::nullopt);
    QDBusConnection::disconnectFromBus(u"asking"_s);
    EXPECT_EQ(holderInXfconf(connection, kSuperT), std::nullopt);
}

}  // namespace
}  // namespace kestrelbay::testing
