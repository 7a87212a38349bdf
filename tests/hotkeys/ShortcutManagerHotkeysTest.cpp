#include "hotkeys/ManagerFixture.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr Hotkey kLeftCommandT{KeyCode{17}, ModifierFlags(0x100008)};
constexpr Hotkey kCommandT{KeyCode{17}, ModifierFlags(0x100000)};
const auto kRefusedLine = u"KestrelBay [WARN] hotkey L⌘T of Terminal is held by another program"_s;

using Hotkeys = std::vector<Hotkey>;

class ShortcutManagerHotkeys : public ManagerFixture {};

TEST_F(ShortcutManagerHotkeys, WantedAreThoseThatCanMatchEachOnce) {
    manager().addRule(rule(u"A"_s, 17, 0x100008));
    ShortcutRule disabled = rule(u"B"_s, 18, 0x100000);
    disabled.isEnabled = false;
    manager().addRule(disabled);
    manager().addRule(rule(u"C"_s, 17, 0x100008 | 0x10000));
    manager().addRule(rule(u"Unset"_s));
    manager().addRule(rule(u"Impossible"_s, 19, 0x80000 | 0x40000 | 0x20));
    ShortcutRule noApplication = rule(u"D"_s, 20, 0x100000);
    noApplication.appPath.clear();
    manager().addRule(noApplication);
    EXPECT_EQ(tap_.wantedHotkeys(),
              (Hotkeys{kLeftCommandT, {KeyCode{18}, ModifierFlags(0x100000)}}));
}

TEST_F(ShortcutManagerHotkeys, GenericAndSidedHotkeyAreTwo) {
    manager().addRule(rule(u"A"_s, 17, 0x100008));
    manager().addRule(rule(u"B"_s, 17, 0x100000));
    EXPECT_EQ(tap_.wantedHotkeys(), (Hotkeys{kCommandT, kLeftCommandT}));
}

TEST_F(ShortcutManagerHotkeys, WantedFollowEveryChange) {
    manager().addRule(rule(u"A"_s, 17, 0x100008));
    EXPECT_EQ(tap_.wantedHotkeys(), Hotkeys{kLeftCommandT});
    ShortcutRule changed = manager().rules()[0];
    changed.modifierFlags = ModifierFlags(0x100000);
    manager().updateRule(changed);
    EXPECT_EQ(tap_.wantedHotkeys(), Hotkeys{kCommandT});
    manager().removeRule(0);
    EXPECT_EQ(tap_.wantedHotkeys(), Hotkeys());
}

TEST_F(ShortcutManagerHotkeys, WantedAreKnownAfterLoading) {
    manager().addRule(rule(u"A"_s, 17, 0x100008));
    FakeEventTap other;
    const ShortcutManager second(folder_.path(), other, log_, {});
    EXPECT_EQ(other.wantedHotkeys(), Hotkeys{kLeftCommandT});
}

TEST_F(ShortcutManagerHotkeys, NoneAreWantedWhileTheGlobalSwitchIsOff) {
    manager().addRule(rule(u"A"_s, 17, 0x100008));
    manager().setEnabled(false);
    EXPECT_EQ(tap_.wantedHotkeys(), Hotkeys());
    manager().addRule(rule(u"B"_s, 18, 0x100000));
    EXPECT_EQ(tap_.wantedHotkeys(), Hotkeys());
    manager().setEnabled(true);
    EXPECT_EQ(tap_.wantedHotkeys().size(), 2U);
}

TEST_F(ShortcutManagerHotkeys, RefusedHotkeyIsLoggedOnceForEachRule) {
    tap_.setHeldByOthers({kLeftCommandT});
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    EXPECT_EQ(log_.take(), QStringList{kRefusedLine});
    EXPECT_TRUE(manager().refusal(manager().rules()[0]));
    manager().addRule(rule(u"Notes"_s, 18, 0x100008));
    manager().reinstallEventTap();
    EXPECT_EQ(log_.take(), QStringList());
    EXPECT_FALSE(manager().refusal(manager().rules()[1]));
}

TEST_F(ShortcutManagerHotkeys, EveryRuleThatHasTheHotkeyIsNamed) {
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    manager().addRule(rule(u"Console"_s, 17, 0x100008));
    tap_.setHeldByOthers({kLeftCommandT});
    EXPECT_EQ(
        log_.take(),
        (QStringList{kRefusedLine,
                     u"KestrelBay [WARN] hotkey L⌘T of Console is held by another program"_s}));
}

TEST_F(ShortcutManagerHotkeys, RefusalAtStartIsLogged) {
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    manager_.reset();
    tap_.setHeldByOthers({kLeftCommandT});
    restart();
    EXPECT_EQ(log_.take(), QStringList{kRefusedLine});
}

TEST_F(ShortcutManagerHotkeys, LaterGrantIsLogged) {
    tap_.setHeldByOthers({kLeftCommandT});
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    log_.take();
    tap_.setHeldByOthers({});
    EXPECT_EQ(log_.take(),
              QStringList{u"KestrelBay: hotkey L⌘T of Terminal is no longer held by another "
                          "program"_s});
    EXPECT_FALSE(manager().refusal(manager().rules()[0]));
    tap_.setHeldByOthers({kLeftCommandT});
    EXPECT_EQ(log_.take(), QStringList{kRefusedLine});
}

TEST_F(ShortcutManagerHotkeys, HotkeyThatNobodyHasIsLoggedAsThat) {
    tap_.setUnassigned({kLeftCommandT});
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    EXPECT_EQ(log_.take(), QStringList{u"KestrelBay [WARN] hotkey L⌘T of Terminal has no keys in "
                                       u"the desktop's settings"_s});
    EXPECT_TRUE(manager().refusal(manager().rules()[0]));
    tap_.setUnassigned({});
    EXPECT_EQ(log_.take(), QStringList{u"KestrelBay: hotkey L⌘T of Terminal has keys in the "
                                       u"desktop's settings now"_s});
}

TEST_F(ShortcutManagerHotkeys, GivingARefusedHotkeyUpIsNotAGrant) {
    tap_.setHeldByOthers({kLeftCommandT});
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    log_.take();
    manager().setEnabled(false);
    EXPECT_EQ(log_.take(), QStringList());
    EXPECT_FALSE(manager().refusal(manager().rules()[0]));
    manager().setEnabled(true);
    log_.take();
    manager().removeRule(0);
    EXPECT_EQ(log_.take(), QStringList());
}

TEST_F(ShortcutManagerHotkeys, WithoutATapNothingIsRefused) {
    tap_.setHeldByOthers({kLeftCommandT});
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    manager().teardownEventTap();
    EXPECT_FALSE(manager().refusal(manager().rules()[0]));
}

TEST_F(ShortcutManagerHotkeys, TellsWhenTheRefusedAreOthers) {
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    EXPECT_EQ(refusalsChangedCalls_, 0);
    tap_.setHeldByOthers({kLeftCommandT});
    EXPECT_EQ(refusalsChangedCalls_, 1);
    manager().addRule(rule(u"Notes"_s, 18, 0x100008));
    EXPECT_EQ(refusalsChangedCalls_, 1);
    tap_.setHeldByOthers({});
    EXPECT_EQ(refusalsChangedCalls_, 2);
}

TEST_F(ShortcutManagerHotkeys, TellsOfARefusalThatComesWithARule) {
    tap_.setHeldByOthers({kLeftCommandT});
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    EXPECT_EQ(refusalsChangedCalls_, 1);
    manager().setEnabled(false);
    EXPECT_EQ(refusalsChangedCalls_, 2);
}

TEST_F(ShortcutManagerHotkeys, RefusalsComeAndGoWithTheTap) {
    tap_.setHeldByOthers({kLeftCommandT});
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    manager().reinstallEventTap();
    EXPECT_EQ(refusalsChangedCalls_, 1);
    manager().teardownEventTap();
    EXPECT_EQ(refusalsChangedCalls_, 2);
    manager().setupEventTap();
    EXPECT_EQ(refusalsChangedCalls_, 3);
    EXPECT_TRUE(manager().refusal(manager().rules()[0]));
}

TEST_F(ShortcutManagerHotkeys, AFailedReinstallationTellsToo) {
    tap_.setHeldByOthers({kLeftCommandT});
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    tap_.setPermission(false);
    manager().reinstallEventTap();
    EXPECT_EQ(refusalsChangedCalls_, 2);
    manager_.reset();
    EXPECT_EQ(refusalsChangedCalls_, 2);
}

TEST_F(ShortcutManagerHotkeys, ATapThatWasTakenAwayEndsRecordingAndRefusals) {
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    tap_.setHeldByOthers({kLeftCommandT});
    int lost = 0;
    ASSERT_TRUE(manager().setRecordingCallback(
        [](EventType, KeyCode, ModifierFlags) { return EventVerdict::Swallow; },
        [&lost] { ++lost; }));
    tap_.takeAway();
    EXPECT_EQ(lost, 1);
    EXPECT_FALSE(manager().recordingCallback());
    EXPECT_EQ(manager().eventTap(), nullptr);
    EXPECT_EQ(manager().tapProblem(), TapProblem::OtherInstance);
    EXPECT_FALSE(manager().refusal(manager().rules()[0]));

    tap_.setPermission(true);
    manager().setupEventTap();
    EXPECT_TRUE(manager().isAccessibilityGranted());
}

TEST_F(ShortcutManagerHotkeys, ATapThatCannotBeEnabledAnyMoreIsLost) {
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    int lost = 0;
    ASSERT_TRUE(manager().setRecordingCallback(
        [](EventType, KeyCode, ModifierFlags) { return EventVerdict::Swallow; },
        [&lost] { ++lost; }));
    tap_.setPermission(false);
    tap_.disable(EventType::TapDisabledByUserInput);
    EXPECT_EQ(lost, 1);
    EXPECT_EQ(manager().eventTap(), nullptr);
    EXPECT_EQ(manager().tapProblem(), TapProblem::NotPermitted);
}

TEST_F(ShortcutManagerHotkeys, KeysAreWithheldOnlyFromAnInstalledTap) {
    EXPECT_FALSE(manager().areKeysWithheld());
    tap_.setKeysWithheld(true);
    EXPECT_TRUE(manager().areKeysWithheld());
    manager().teardownEventTap();
    EXPECT_FALSE(manager().areKeysWithheld());
}

}  // namespace

}  // namespace kestrelbay
