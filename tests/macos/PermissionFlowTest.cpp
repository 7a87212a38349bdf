#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "fakes/EventTaps.h"
#include "fakes/FakeSystemLog.h"
#include "fakes/MacJournal.h"
#include "fixtures/QtPrinters.h"
#include "hotkeys/ShortcutManager.h"
#include "platform/macos/MacEventTap.h"

namespace kestrelbay::macos {
namespace {

using Fate = EventTaps::Fate;

const QString kRefused =
    QStringLiteral("KestrelBay: Failed to create event tap. Accessibility permission required.");
const QString kCreated = QStringLiteral("CGEventTapCreate 1 0 0 0x1400");

/// The manager on the tap, as the program has them.
class PermissionFlow : public ::testing::Test {
protected:
    void start() {
        manager_.emplace(
            folder_.path(), tap_, log_,
            ShortcutManager::Hooks{.ruleFired = [this](const ShortcutRule &) { ++fired_; },
                                   .tapLost = [this] { ++losses_; }});
        manager_->addRule({.appName = QStringLiteral("One"),
                           .appPath = QStringLiteral("/Applications/One.app"),
                           .keyCode = KeyCode{17},
                           .modifierFlags = ModifierFlags(0x100008)});
    }
    Fate pressLeftCommandT() {
        taps_.post(kCGEventFlagsChanged, 55, 0x100108);
        const Fate fate = taps_.post(kCGEventKeyDown, 17, 0x100108);
        taps_.post(kCGEventFlagsChanged, 55, 0x100);
        return fate;
    }

    const QTemporaryDir folder_;
    EventTaps taps_;
    MacEventTap tap_;
    FakeSystemLog log_;
    std::optional<ShortcutManager> manager_;
    int fired_ = 0;
    int losses_ = 0;
};

TEST_F(PermissionFlow, WithPermissionKeysFireFromTheStart) {
    start();
    EXPECT_TRUE(manager_->eventTap());
    EXPECT_EQ(log_.take(), QStringList());
    EXPECT_EQ(pressLeftCommandT(), Fate::Swallowed);
    EXPECT_EQ(fired_, 1);
}

TEST_F(PermissionFlow, EveryRefusalIsLoggedUntilItIsGranted) {
    taps_.refuseTaps(true);
    start();
    EXPECT_FALSE(manager_->eventTap());
    manager_->reinstallEventTap();
    manager_->reinstallEventTap();
    EXPECT_EQ(log_.take(), (QStringList{kRefused, kRefused, kRefused}));
    EXPECT_EQ(takeCalls(), (QStringList{kCreated, kCreated, kCreated}));
    EXPECT_EQ(pressLeftCommandT(), Fate::Unseen);

    taps_.refuseTaps(false);
    manager_->reinstallEventTap();
    EXPECT_TRUE(manager_->eventTap());
    EXPECT_EQ(log_.take(), QStringList());
    EXPECT_EQ(pressLeftCommandT(), Fate::Swallowed);
    EXPECT_EQ(fired_, 1);
}

TEST_F(PermissionFlow, WithdrawnPermissionShowsWhenTheTapIsReinstalled) {
    start();
    taps_.refuseTaps(true);
    EXPECT_TRUE(manager_->eventTap());
    manager_->reinstallEventTap();
    EXPECT_FALSE(manager_->eventTap());
    EXPECT_EQ(log_.take(), QStringList(kRefused));
    EXPECT_EQ(pressLeftCommandT(), Fate::Unseen);
}

TEST_F(PermissionFlow, APermissionWithdrawnWhileItRunsEndsTheTapUntilItIsBack) {
    start();
    static_cast<void>(takeCalls());
    taps_.withdrawPermission();
    taps_.post(kCGEventTapDisabledByUserInput, 0, 0);
    EXPECT_FALSE(manager_->eventTap());
    EXPECT_EQ(manager_->tapProblem(), TapProblem::NotPermitted);
    EXPECT_EQ(losses_, 1);
    EXPECT_EQ(taps_.count(), 0);
    EXPECT_EQ(pressLeftCommandT(), Fate::Unseen);

    manager_->reinstallEventTap();
    EXPECT_FALSE(manager_->eventTap());
    taps_.refuseTaps(false);
    taps_.refuseEnabling(false);
    manager_->reinstallEventTap();
    EXPECT_EQ(pressLeftCommandT(), Fate::Swallowed);
    EXPECT_EQ(fired_, 1);
}

TEST_F(PermissionFlow, AHeldHotkeyFiresOnce) {
    start();
    taps_.post(kCGEventFlagsChanged, 55, 0x100108);
    EXPECT_EQ(taps_.post(kCGEventKeyDown, 17, 0x100108), Fate::Swallowed);
    EXPECT_EQ(taps_.post(kCGEventKeyDown, 17, 0x100108, true), Fate::Swallowed);
    EXPECT_EQ(taps_.post(kCGEventKeyDown, 17, 0x100108, true), Fate::Swallowed);
    EXPECT_EQ(fired_, 1);
}

TEST_F(PermissionFlow, ATapThatTheSystemDisabledIsEnabledAtOnce) {
    start();
    static_cast<void>(takeCalls());
    for (const auto reason : {kCGEventTapDisabledByTimeout, kCGEventTapDisabledByUserInput}) {
        EXPECT_EQ(taps_.post(reason, 0, 0), Fate::Passed);
        EXPECT_EQ(takeCalls(), QStringList(QStringLiteral("CGEventTapEnable true")));
    }
    EXPECT_EQ(log_.take(), (QStringList{QStringLiteral("KestrelBay [WARN] EventTap disabled: "
                                                       "TIMEOUT — main thread may have been "
                                                       "blocked"),
                                        QStringLiteral("KestrelBay [WARN] EventTap disabled: "
                                                       "USER_INPUT — main thread may have been "
                                                       "blocked")}));
    EXPECT_EQ(pressLeftCommandT(), Fate::Swallowed);
}

TEST_F(PermissionFlow, OtherKeysAndTheOtherSidePass) {
    start();
    EXPECT_EQ(taps_.post(kCGEventKeyDown, 17, 0x100), Fate::Passed);
    taps_.post(kCGEventFlagsChanged, 54, 0x100110);
    EXPECT_EQ(taps_.post(kCGEventKeyDown, 17, 0x100110), Fate::Passed);
    EXPECT_EQ(fired_, 0);
}

TEST_F(PermissionFlow, SwitchedOffAllKeysPass) {
    start();
    manager_->setEnabled(false);
    EXPECT_EQ(pressLeftCommandT(), Fate::Passed);
    manager_->setEnabled(true);
    EXPECT_EQ(pressLeftCommandT(), Fate::Swallowed);
    EXPECT_EQ(fired_, 1);
}

}  // namespace
}  // namespace kestrelbay::macos
