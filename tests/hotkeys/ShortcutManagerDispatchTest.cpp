#include "hotkeys/ManagerFixture.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

using namespace key;

constexpr KeyCode kT{17};
constexpr auto kPass = EventVerdict::Pass;
constexpr auto kSwallow = EventVerdict::Swallow;
const auto kNothing = QStringList();

class ShortcutManagerDispatch : public ManagerFixture {
protected:
    /// Presses a key with modifiers held, then lets them go. What the tap did not
    /// get to see passes.
    EventVerdict press(KeyCode keyCode, const std::vector<KeyCode> &modifiers = {}) {
        manager();
        for (const KeyCode modifier : modifiers)
            EXPECT_EQ(tap_.press(modifier), kPass);
        const EventVerdict verdict = tap_.press(keyCode).value_or(kPass);
        for (const KeyCode modifier : modifiers)
            tap_.release(modifier);
        return verdict;
    }
};

TEST_F(ShortcutManagerDispatch, TapIsInstalledAtConstruction) {
    EXPECT_TRUE(manager().isAccessibilityGranted());
    EXPECT_EQ(manager().eventTap(), &tap_);
    EXPECT_EQ(log_.lines(), kNothing);
}

TEST_F(ShortcutManagerDispatch, WithoutPermissionThereIsNoTapAndALogLine) {
    tap_.setPermission(false);
    EXPECT_FALSE(manager().isAccessibilityGranted());
    EXPECT_EQ(manager().eventTap(), nullptr);
    const QString line =
        u"KestrelBay: Failed to create event tap. Accessibility permission "
        "required."_s;
    EXPECT_EQ(log_.take(), QStringList{line});
    manager().reinstallEventTap();
    EXPECT_EQ(log_.take(), QStringList{line});
}

TEST_F(ShortcutManagerDispatch, OtherReasonsAreLoggedInTheirOwnWordsOnceEach) {
    const auto lineOf = [](const QString &reason) {
        return QStringList{u"KestrelBay [WARN] No hotkeys: the keyboard cannot be read, "_s +
                           reason};
    };
    tap_.setPermission(false);
    tap_.setRefusal(TapProblem::OtherInstance);
    manager();
    EXPECT_EQ(log_.take(), kNothing) << "a start that hands a request over ends before";
    manager().reinstallEventTap();
    EXPECT_EQ(log_.take(), lineOf(u"another instance has it"_s));
    manager().reinstallEventTap();
    EXPECT_EQ(log_.take(), kNothing);
    tap_.setRefusal(TapProblem::NoDisplay);
    manager().reinstallEventTap();
    manager().reinstallEventTap();
    EXPECT_EQ(log_.take(), lineOf(u"the display server does not answer"_s));

    tap_.setPermission(true);
    manager().reinstallEventTap();
    tap_.setPermission(false);
    manager().reinstallEventTap();
    EXPECT_EQ(log_.take(), lineOf(u"the display server does not answer"_s)) << "it is news again";
}

TEST_F(ShortcutManagerDispatch, ReinstallingAfterThePermissionWasGrantedWorks) {
    tap_.setPermission(false);
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    tap_.setPermission(true);
    manager().reinstallEventTap();
    EXPECT_TRUE(manager().isAccessibilityGranted());
    EXPECT_EQ(press(kT, {kLeftCommand}), kSwallow);
}

TEST_F(ShortcutManagerDispatch, ReinstallRemovesThenInstalls) {
    manager();
    tap_.takeCalls();
    manager().reinstallEventTap();
    EXPECT_EQ(tap_.takeCalls(), (QStringList{u"remove"_s, u"install"_s}));
}

TEST_F(ShortcutManagerDispatch, TeardownRemovesTheTapOnce) {
    manager();
    tap_.takeCalls();
    manager().teardownEventTap();
    manager().teardownEventTap();
    EXPECT_EQ(tap_.takeCalls(), QStringList{u"remove"_s});
    EXPECT_EQ(manager().eventTap(), nullptr);
}

TEST_F(ShortcutManagerDispatch, SetupOfAnInstalledTapDoesNothing) {
    manager();
    tap_.takeCalls();
    manager().setupEventTap();
    EXPECT_EQ(tap_.takeCalls(), kNothing);
}

TEST_F(ShortcutManagerDispatch, DestructionRemovesTheTap) {
    manager();
    manager_.reset();
    EXPECT_FALSE(tap_.isInstalled());
}

TEST_F(ShortcutManagerDispatch, SidedHotkeyFiresOnlyForItsSide) {
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    EXPECT_EQ(press(kT, {kLeftCommand}), kSwallow);
    EXPECT_EQ(fired_, QStringList{u"Terminal"_s});
    EXPECT_EQ(press(kT, {kRightCommand}), kPass);
    EXPECT_EQ(press(kT, {kLeftCommand, kLeftShift}), kPass);
    EXPECT_EQ(fired_.size(), 1);
}

TEST_F(ShortcutManagerDispatch, GenericHotkeyFiresForEitherSide) {
    manager().addRule(rule(u"Terminal"_s, 17, 0x100000));
    EXPECT_EQ(press(kT, {kLeftCommand}), kSwallow);
    EXPECT_EQ(press(kT, {kRightCommand}), kSwallow);
    EXPECT_EQ(press(kT, {kLeftCommand, kLeftOption}), kPass);
    EXPECT_EQ(fired_.size(), 2);
}

TEST_F(ShortcutManagerDispatch, HalfSidedHotkeyNeverFires) {
    manager().addRule(rule(u"Terminal"_s, 17, 0x80000 | 0x40000 | 0x20));
    const std::set<KeyCode> held{kLeftOption, kLeftControl};
    for (const KeyCode modifier : held)
        manager().eventTapCallback(EventType::FlagsChanged, modifier, ModifierFlags());
    EXPECT_EQ(manager().eventTapCallback(EventType::KeyDown, kT, buildDetailedFlags(held)), kPass);
    EXPECT_EQ(fired_, kNothing);
}

TEST_F(ShortcutManagerDispatch, DisabledRuleSwallowsItsKeyAndHidesLaterOnes) {
    ShortcutRule disabled = rule(u"First"_s, 17, 0x100008);
    disabled.isEnabled = false;
    manager().addRule(disabled);
    manager().addRule(rule(u"Second"_s, 17, 0x100008));
    EXPECT_EQ(press(kT, {kLeftCommand}), kSwallow);
    EXPECT_EQ(fired_, kNothing);
}

TEST_F(ShortcutManagerDispatch, FirstOfTwoEnabledRulesFires) {
    manager().addRule(rule(u"First"_s, 17, 0x100008));
    manager().addRule(rule(u"Second"_s, 17, 0x100000));
    EXPECT_EQ(press(kT, {kLeftCommand}), kSwallow);
    EXPECT_EQ(press(kT, {kRightCommand}), kSwallow);
    EXPECT_EQ(fired_, (QStringList{u"First"_s, u"Second"_s}));
    manager().moveRule(1, 0);
    press(kT, {kLeftCommand});
    EXPECT_EQ(fired_.back(), u"Second"_s);
}

TEST_F(ShortcutManagerDispatch, GlobalSwitchOffPassesAllKeysAndKeepsTrackingModifiers) {
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    manager().setEnabled(false);
    tap_.press(kLeftCommand);
    EXPECT_EQ(manager().eventTapCallback(EventType::KeyDown, kT, ModifierFlags()), kPass);
    EXPECT_EQ(manager().heldModifierCodes(), std::set{kLeftCommand});
    EXPECT_EQ(fired_, kNothing);
    manager().setEnabled(true);
    EXPECT_EQ(tap_.press(kT), kSwallow);
    EXPECT_EQ(fired_, QStringList{u"Terminal"_s});
}

TEST_F(ShortcutManagerDispatch, RuleWithoutApplicationAndUnsetRuleNeverFire) {
    ShortcutRule noApplication = rule(u"Nothing"_s, 17, 0x100008);
    noApplication.appPath.clear();
    manager().addRule(noApplication);
    manager().addRule(rule(u"Unset"_s));
    tap_.press(kLeftCommand);
    EXPECT_EQ(manager().eventTapCallback(EventType::KeyDown, kT, ModifierFlags()), kPass);
    tap_.release(kLeftCommand);
    EXPECT_EQ(manager().eventTapCallback(EventType::KeyDown, kA, ModifierFlags()), kPass);
    EXPECT_EQ(fired_, kNothing);
}

TEST_F(ShortcutManagerDispatch, ModifierPressedWithoutTapAndReleasedWithItCountsAsHeld) {
    manager().teardownEventTap();
    tap_.press(kLeftShift);
    manager().setupEventTap();
    tap_.release(kLeftShift);
    EXPECT_EQ(manager().heldModifierCodes(), std::set{kLeftShift});
    tap_.press(kLeftShift);
    tap_.release(kLeftShift);
    EXPECT_EQ(manager().heldModifierCodes(), std::set{kLeftShift});
}

TEST_F(ShortcutManagerDispatch, TeardownKeepsHeldModifiers) {
    manager();
    tap_.press(kLeftShift);
    manager().reinstallEventTap();
    EXPECT_EQ(manager().heldModifierCodes(), std::set{kLeftShift});
}

TEST_F(ShortcutManagerDispatch, OnlyTheEightModifierKeysAreTracked) {
    for (unsigned code = 0; code < 128; ++code)
        manager().eventTapCallback(EventType::FlagsChanged,
                                   KeyCode{static_cast<std::uint16_t>(code)}, ModifierFlags());
    EXPECT_EQ(manager().heldModifierCodes(),
              std::set(kModifierKeyCodes.begin(), kModifierKeyCodes.end()));
    for (const KeyCode code : kModifierKeyCodes)
        manager().eventTapCallback(EventType::FlagsChanged, code, ModifierFlags());
    EXPECT_TRUE(manager().heldModifierCodes().empty());
}

TEST_F(ShortcutManagerDispatch, KeyDownOfAModifierKeyIsNotTracked) {
    manager().eventTapCallback(EventType::KeyDown, kLeftCommand, ModifierFlags());
    EXPECT_TRUE(manager().heldModifierCodes().empty());
}

TEST_F(ShortcutManagerDispatch, FlagsOfTheEventAreNotLookedAt) {
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    EXPECT_EQ(manager().eventTapCallback(EventType::KeyDown, kT, ModifierFlags(0x100008)), kPass);
}

TEST_F(ShortcutManagerDispatch, FlagsChangedOfAHotkeysKeyDoesNotFire) {
    manager().addRule(rule(u"F5"_s, 96, 0));
    EXPECT_EQ(manager().eventTapCallback(EventType::FlagsChanged, KeyCode{96}, ModifierFlags()),
              kPass);
    EXPECT_EQ(fired_, kNothing);
}

TEST_F(ShortcutManagerDispatch, TapDisabledByTimeoutIsLoggedAndEnabledAgain) {
    manager();
    tap_.takeCalls();
    tap_.disable(EventType::TapDisabledByTimeout);
    EXPECT_EQ(log_.lines(), QStringList{u"KestrelBay [WARN] EventTap disabled: TIMEOUT \u2014 main "
                                        "thread may have been blocked"_s});
    EXPECT_EQ(tap_.takeCalls(), QStringList{u"enable"_s});
    EXPECT_TRUE(tap_.isDelivering());
}

TEST_F(ShortcutManagerDispatch, ADisabledTapIsAskedToGoOnRecording) {
    int lost = 0;
    const auto record = [&] {
        return manager().setRecordingCallback(
            [](EventType, KeyCode, ModifierFlags) { return kSwallow; }, [&lost] { ++lost; });
    };
    ASSERT_TRUE(record());
    tap_.disable(EventType::TapDisabledByTimeout);
    EXPECT_TRUE(tap_.isRecording());
    EXPECT_EQ(lost, 0);

    tap_.setKeyboardHeldByOthers(true);
    tap_.disable(EventType::TapDisabledByTimeout);
    EXPECT_EQ(lost, 1);
    EXPECT_FALSE(manager().recordingCallback());
    EXPECT_TRUE(tap_.isDelivering());
}

TEST_F(ShortcutManagerDispatch, TapDisabledByUserInputIsLoggedAndEnabledAgainEveryTime) {
    manager();
    tap_.takeCalls();
    for (int i = 0; i < 3; ++i)
        tap_.disable(EventType::TapDisabledByUserInput);
    const QString line =
        u"KestrelBay [WARN] EventTap disabled: USER_INPUT \u2014 main thread may "
        "have been blocked"_s;
    EXPECT_EQ(log_.lines(), (QStringList{line, line, line}));
    EXPECT_EQ(tap_.takeCalls(), (QStringList{u"enable"_s, u"enable"_s, u"enable"_s}));
}

TEST_F(ShortcutManagerDispatch, DisabledEventPassesAndIsNotEnabledWithoutATap) {
    manager().teardownEventTap();
    tap_.takeCalls();
    EXPECT_EQ(manager().eventTapCallback(EventType::TapDisabledByTimeout, kT, ModifierFlags()),
              kPass);
    EXPECT_EQ(tap_.takeCalls(), kNothing);
}

TEST_F(ShortcutManagerDispatch, RecorderGetsEverythingAndNothingFires) {
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    std::vector<std::pair<EventType, KeyCode>> seen;
    manager().setRecordingCallback([&](EventType type, KeyCode keyCode, ModifierFlags) {
        seen.emplace_back(type, keyCode);
        return type == EventType::KeyDown ? kSwallow : kPass;
    });
    EXPECT_TRUE(tap_.isRecording());
    EXPECT_EQ(press(kT, {kLeftCommand}), kSwallow);
    EXPECT_EQ(press(KeyCode{3}), kSwallow);
    EXPECT_EQ(seen,
              (std::vector<std::pair<EventType, KeyCode>>{{EventType::FlagsChanged, kLeftCommand},
                                                          {EventType::KeyDown, kT},
                                                          {EventType::FlagsChanged, kLeftCommand},
                                                          {EventType::KeyDown, KeyCode{3}}}));
    EXPECT_EQ(fired_, kNothing);
    EXPECT_TRUE(manager().heldModifierCodes().empty());
}

TEST_F(ShortcutManagerDispatch, RecorderDecidesWhatPassesWhateverTheGlobalSwitch) {
    manager().addRule(rule(u"Terminal"_s, 17, 0));
    manager().setRecordingCallback([](auto...) { return kPass; });
    EXPECT_EQ(press(kT), kPass);
    manager().setEnabled(false);
    manager().setRecordingCallback([](auto...) { return kSwallow; });
    EXPECT_EQ(press(kT), kSwallow);
}

TEST_F(ShortcutManagerDispatch, RecorderGetsTheFlagsOfTheEvent) {
    ModifierFlags seen;
    manager().setRecordingCallback([&](EventType, KeyCode, ModifierFlags flags) {
        seen = flags;
        return kPass;
    });
    manager().eventTapCallback(EventType::KeyDown, kT, ModifierFlags(0x123));
    EXPECT_EQ(seen, ModifierFlags(0x123));
}

TEST_F(ShortcutManagerDispatch, DispatchGoesOnAfterRecording) {
    manager().addRule(rule(u"Terminal"_s, 17, 0));
    manager().setRecordingCallback([](auto...) { return kSwallow; });
    manager().setRecordingCallback(nullptr);
    EXPECT_FALSE(tap_.isRecording());
    EXPECT_FALSE(manager().recordingCallback());
    EXPECT_EQ(press(kT), kSwallow);
    EXPECT_EQ(fired_, QStringList{u"Terminal"_s});
}

TEST_F(ShortcutManagerDispatch, RecorderMayStopFromWithinTheCallback) {
    auto witness = std::make_shared<int>(0);
    manager().setRecordingCallback([this, witness](auto...) {
        manager().setRecordingCallback(nullptr);
        ++*witness;
        return kSwallow;
    });
    EXPECT_EQ(press(kT), kSwallow);
    EXPECT_EQ(*witness, 1);
    EXPECT_FALSE(manager().recordingCallback());
}

TEST_F(ShortcutManagerDispatch, RecordingGoesOnOverAReinstall) {
    manager().setRecordingCallback([](auto...) { return kSwallow; });
    manager().reinstallEventTap();
    EXPECT_TRUE(tap_.isRecording());
}

TEST_F(ShortcutManagerDispatch, RecordingTellsWhenTheKeyboardIsHeldByOthers) {
    EXPECT_TRUE(manager().setRecordingCallback([](auto...) { return kSwallow; }));
    EXPECT_TRUE(manager().setRecordingCallback(nullptr));
    tap_.setKeyboardHeldByOthers(true);
    EXPECT_FALSE(manager().setRecordingCallback([](auto...) { return kSwallow; }));
}

TEST_F(ShortcutManagerDispatch, RecorderIsToldWhenTheTapGoes) {
    int lost = 0;
    manager().setRecordingCallback([](auto...) { return kSwallow; }, [&lost] { ++lost; });
    manager().reinstallEventTap();
    EXPECT_EQ(lost, 0);
    EXPECT_TRUE(tap_.isRecording());
    manager().teardownEventTap();
    EXPECT_EQ(lost, 1);
    EXPECT_FALSE(manager().recordingCallback());
    manager().setupEventTap();
    EXPECT_FALSE(tap_.isRecording());
    EXPECT_EQ(lost, 1);
}

TEST_F(ShortcutManagerDispatch, RecorderIsToldWhenAReinstallTakesTheKeyboardFromIt) {
    int lost = 0;
    manager().setRecordingCallback([](auto...) { return kSwallow; }, [&lost] { ++lost; });
    tap_.setKeyboardHeldByOthers(true);
    manager().reinstallEventTap();
    EXPECT_EQ(lost, 1);
    EXPECT_FALSE(manager().recordingCallback());
}

TEST_F(ShortcutManagerDispatch, RecorderIsToldWhenThePermissionGoes) {
    int lost = 0;
    manager().setRecordingCallback([](auto...) { return kSwallow; }, [&lost] { ++lost; });
    tap_.setPermission(false);
    manager().reinstallEventTap();
    EXPECT_EQ(lost, 1);
}

TEST_F(ShortcutManagerDispatch, RecorderIsToldWhenAnotherTakesItsPlace) {
    int lost = 0;
    manager().setRecordingCallback([](auto...) { return kSwallow; }, [&lost] { ++lost; });
    EXPECT_TRUE(manager().setRecordingCallback([](auto...) { return kPass; }, [] {}));
    EXPECT_EQ(lost, 1);
    EXPECT_EQ(press(kT), kPass);
    manager().setRecordingCallback(nullptr);
    EXPECT_EQ(lost, 1);
}

TEST_F(ShortcutManagerDispatch, FiredRuleIsTheWholeRule) {
    ShortcutRule expected = rule(u"Terminal"_s, 17, 0);
    expected.launchArguments = u"-x"_s;
    ShortcutRule fired;
    ShortcutManager own(
        folder_.path(), tap_, log_,
        {.ruleFired = [&](const ShortcutRule &r) { fired = r; }, .rulesChanged = {}});
    own.addRule(expected);
    EXPECT_EQ(own.eventTapCallback(EventType::KeyDown, kT, ModifierFlags()), kSwallow);
    EXPECT_EQ(fired, expected);
}

TEST_F(ShortcutManagerDispatch, WithoutHooksTheKeyIsSwallowedAllTheSame) {
    ShortcutManager own(folder_.path(), tap_, log_, {});
    own.addRule(rule(u"Terminal"_s, 17, 0));
    EXPECT_EQ(own.eventTapCallback(EventType::KeyDown, kT, ModifierFlags()), kSwallow);
}

}  // namespace

}  // namespace kestrelbay
