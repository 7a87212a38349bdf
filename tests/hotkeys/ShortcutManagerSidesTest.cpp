#include "hotkeys/ManagerFixture.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr Hotkey kLeftCommandT{KeyCode{17}, ModifierFlags(0x100008)};
constexpr Hotkey kCommandT{KeyCode{17}, ModifierFlags(0x100000)};

using Hotkeys = std::vector<Hotkey>;

/// With a tap that, once installed, is told of hotkeys only and of no sides.
class ShortcutManagerSides : public ManagerFixture {
protected:
    void SetUp() override {
        tap_.setAbilities({.tellsSides = false, .passesKeysBack = false});
        manager();
    }
};

TEST_F(ShortcutManagerSides, APressedHotkeyFiresItsRule) {
    manager().addRule(rule(u"Terminal"_s, 17, 0x100000));
    manager().addRule(rule(u"Notes"_s, 18, 0x100000));
    EXPECT_TRUE(tap_.pressHotkey(kCommandT));
    EXPECT_EQ(fired_, QStringList{u"Terminal"_s});
}

TEST_F(ShortcutManagerSides, TheFirstRuleOfTheListDecides) {
    ShortcutRule disabled = rule(u"First"_s, 17, 0x100000);
    disabled.isEnabled = false;
    manager().addRule(disabled);
    manager().addRule(rule(u"Second"_s, 17, 0x100000));
    EXPECT_TRUE(tap_.pressHotkey(kCommandT)) << "a disabled rule keeps its hotkey";
    EXPECT_EQ(fired_, QStringList());
    manager().moveRule(1, 0);
    EXPECT_TRUE(tap_.pressHotkey(kCommandT));
    EXPECT_EQ(fired_, QStringList{u"Second"_s});
}

TEST_F(ShortcutManagerSides, WithTheSwitchOffNoHotkeyIsWantedAndNoneFires) {
    manager().addRule(rule(u"Terminal"_s, 17, 0x100000));
    manager().setEnabled(false);
    EXPECT_FALSE(tap_.pressHotkey(kCommandT));
    manager().hotkeyPressed(kCommandT);  // it was under way
    EXPECT_EQ(fired_, QStringList());
}

TEST_F(ShortcutManagerSides, NothingFiresWhileACallbackRecords) {
    manager().addRule(rule(u"Terminal"_s, 17, 0x100000));
    manager().setRecordingCallback(
        [](EventType, KeyCode, ModifierFlags) { return EventVerdict::Swallow; });
    EXPECT_TRUE(tap_.pressHotkey(kCommandT));
    EXPECT_EQ(fired_, QStringList());
    manager().setRecordingCallback(nullptr);
    EXPECT_TRUE(tap_.pressHotkey(kCommandT));
    EXPECT_EQ(fired_, QStringList{u"Terminal"_s});
}

TEST_F(ShortcutManagerSides, ARuleThatNamesASideIsNotWantedAndFiresForNeither) {
    manager().addRule(rule(u"Sided"_s, 17, 0x100008));
    EXPECT_EQ(tap_.wantedHotkeys(), Hotkeys());
    manager().addRule(rule(u"Either"_s, 17, 0x100000));
    EXPECT_EQ(tap_.wantedHotkeys(), Hotkeys{kCommandT});
    EXPECT_TRUE(tap_.pressHotkey(kCommandT));
    EXPECT_EQ(fired_, QStringList{u"Either"_s});
}

TEST_F(ShortcutManagerSides, OnlyARuleThatNamesASideNeedsSides) {
    EXPECT_TRUE(manager().needsSides(rule(u"Sided"_s, 17, 0x100008)));
    EXPECT_FALSE(manager().needsSides(rule(u"Either"_s, 17, 0x100000)));
    EXPECT_FALSE(manager().needsSides(rule(u"No key"_s, 0, 0)));
    EXPECT_FALSE(manager().needsSides(rule(u"Impossible"_s, 19, 0x80000 | 0x40000 | 0x20)))
        << "it would fire nowhere";
    manager().teardownEventTap();
    EXPECT_FALSE(manager().needsSides(rule(u"Sided"_s, 17, 0x100008)));
}

TEST_F(ShortcutManagerSides, WhatAnotherTapCanDoCountsFromItsInstallationOn) {
    manager().addRule(rule(u"Sided"_s, 17, 0x100008));
    manager().addRule(rule(u"Either"_s, 17, 0x100000));
    tap_.setAbilities({});
    manager().reinstallEventTap();
    EXPECT_EQ(tap_.wantedHotkeys(), (Hotkeys{kCommandT, kLeftCommandT}));
    EXPECT_FALSE(manager().needsSides(manager().rules()[0]));

    tap_.setAbilities({.tellsSides = false});
    manager().reinstallEventTap();
    EXPECT_EQ(tap_.wantedHotkeys(), Hotkeys{kCommandT});
    EXPECT_TRUE(manager().needsSides(manager().rules()[0]));
}

TEST_F(ShortcutManagerSides, TellsWhenSidesCountOrNoLongerDo) {
    EXPECT_EQ(refusalsChangedCalls_, 1);
    manager().reinstallEventTap();
    EXPECT_EQ(refusalsChangedCalls_, 1);
    manager().teardownEventTap();
    EXPECT_EQ(refusalsChangedCalls_, 2);
    tap_.setAbilities({});
    manager().setupEventTap();
    EXPECT_EQ(refusalsChangedCalls_, 2);
}

TEST_F(ShortcutManagerSides, AnInstallationThatChangesNothingLeavesTheHotkeysAlone) {
    manager().addRule(rule(u"Either"_s, 17, 0x100000));
    const int before = tap_.wantedHotkeysCalls();
    manager().reinstallEventTap();
    EXPECT_EQ(tap_.wantedHotkeysCalls(), before);
}

TEST_F(ShortcutManagerSides, ARuleThatRestsIsNamedInTheLogOnce) {
    const auto saidSo = [this] {
        return log_.take().filter(u"Sided rests: this session does not tell left"_s).size();
    };
    manager().addRule(rule(u"Sided"_s, 17, 0x100008));
    EXPECT_EQ(saidSo(), 1);
    manager().addRule(rule(u"Either"_s, 18, 0x100000));
    manager().reinstallEventTap();
    EXPECT_EQ(saidSo(), 0);
    restart();
    EXPECT_EQ(saidSo(), 1) << "from the file";
}

TEST_F(ShortcutManagerSides, WithoutATapNothingIsSaidToRest) {
    manager().teardownEventTap();
    manager().addRule(rule(u"Sided"_s, 17, 0x100008));
    EXPECT_TRUE(log_.take().filter(u"rests"_s).isEmpty());
}

TEST_F(ShortcutManagerSides, TellsWhatTheSystemCallsAHotkeyAndWhatItIsFor) {
    manager().addRule(rule(u"Terminal"_s, 17, 0x100000));
    manager().addRule(rule(u"Notes"_s, 17, 0x100000));
    EXPECT_EQ(tap_.purposeOf(kCommandT), u"Terminal"_s);
    EXPECT_EQ(manager().triggerText(manager().rules().front()), QString());
    const int before = refusalsChangedCalls_;
    tap_.setTriggerText(kCommandT, u"Meta+T"_s);
    EXPECT_EQ(refusalsChangedCalls_, before + 1);
    EXPECT_EQ(manager().triggerText(manager().rules().front()), u"Meta+T"_s);
    manager().teardownEventTap();
    EXPECT_EQ(manager().triggerText(manager().rules().front()), QString());
}

}  // namespace

}  // namespace kestrelbay
