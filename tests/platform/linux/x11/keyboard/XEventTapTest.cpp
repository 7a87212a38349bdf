#include "platform/linux/x11/keyboard/XEventTap.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <QCoreApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/FocusedWindow.h"
#include "support/KeyPresser.h"
#include "support/KeyboardSettings.h"
#include "support/Poll.h"
#include "support/PrivateXServer.h"

namespace kestrelbay::x11 {
namespace {

using kestrelbay::testing::ChildProcess;
using kestrelbay::testing::FocusedWindow;
using kestrelbay::testing::KeyboardSettings;
using kestrelbay::testing::KeyPresser;
using kestrelbay::testing::PrivateXServer;
using kestrelbay::testing::waitUntil;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
namespace xkey = kestrelbay::testing::xkey;

constexpr std::uint8_t kLockMask = 2, kControlMask = 4, kMod1Mask = 8, kMod4Mask = 64;
const Hotkey kLeftCommandT{KeyCode{17}, ModifierFlags(0x100008)};
const Hotkey kLeftCommandE{KeyCode{14}, ModifierFlags(0x100008)};
const Hotkey kLeftControlT{KeyCode{17}, ModifierFlags(0x40001)};
const Hotkey kRightOptionE{KeyCode{14}, ModifierFlags(0x80040)};
const Hotkey kOptionR{KeyCode{15}, modifier::kOption};

/// A tap on a private X server with what it delivered, told the verdict to give.
class XEventTapTest : public ::testing::Test {
protected:
    void start(const QStringList &serverArguments = {}) {
        server_ = std::make_unique<PrivateXServer>(serverArguments);
        front_ = std::make_unique<FocusedWindow>(server_->displayName());
        keys_ = std::make_unique<KeyPresser>(server_->displayName());
        tap_ = makeTap();
    }

    void SetUp() override { start(); }

    std::unique_ptr<XEventTap> makeTap() {
        XEventTap::Settings settings;
        settings.displayName = server_->displayName();
        settings.firstRetry = std::chrono::milliseconds(20);
        settings.displayLost = [this] { displayLost_ = true; };
        return std::make_unique<XEventTap>(settings);
    }

    EventTap::Handlers handlers() {
        return {[this](EventType type, KeyCode code, ModifierFlags flags) {
                    if (type == EventType::FlagsChanged) {
                        if (!held_.erase(code))
                            held_.insert(code);
                        return EventVerdict::Pass;
                    }
                    EXPECT_EQ(flags, buildDetailedFlags(held_));
                    keyDowns_.push_back({code, flags});
                    return onKeyDown_ ? onKeyDown_() : verdict_;
                },
                [this] { ++refusalChanges_; }};
    }

    void install(const std::vector<Hotkey> &wanted = {kLeftCommandT}) {
        tap_->setWantedHotkeys(wanted);
        ASSERT_TRUE(tap_->install(handlers()));
    }

    /// Runs the event loop until that many key-downs have come.
    bool cameKeyDowns(std::size_t count) {
        return waitUntil([&] { return keyDowns_.size() >= count; }, std::chrono::seconds(5));
    }

    /// A key that the tap does not want, seen by the program in front: whatever
    /// was pressed before has been dealt with.
    void pressMarker() {
        const auto before = std::ranges::count(front_->pressedKeys(), xkey::kF6);
        keys_->chord({xkey::kF6});
        ASSERT_TRUE(waitUntil(
            [&] { return std::ranges::count(front_->pressedKeys(), xkey::kF6) > before; }));
    }

    void run(const QString &program, const QStringList &arguments) {
        ChildProcess process(program, arguments, server_->environment());
        ASSERT_TRUE(process.waitForExit()) << program.toStdString();
        ASSERT_EQ(process.exitCode(), 0) << process.output().toStdString();
    }

    std::ptrdiff_t pressesInFront(std::uint8_t keycode) {
        return std::ranges::count(front_->pressedKeys(), keycode);
    }

    void repeatKeysFast() {
        run(QStringLiteral("xset"), {QStringLiteral("r"), QStringLiteral("rate"),
                                     QStringLiteral("40"), QStringLiteral("100")});
    }
    void waitAsLongAsFortyRepeatsTake() {
        const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(400);
        EXPECT_TRUE(waitUntil([&] { return std::chrono::steady_clock::now() > until; }));
    }

    void setLayout(const QString &layout, const QString &options) {
        run(QStringLiteral("setxkbmap"),
            {QStringLiteral("-layout"), layout, QStringLiteral("-option"), options});
    }

    std::unique_ptr<PrivateXServer> server_;
    std::unique_ptr<FocusedWindow> front_;
    std::unique_ptr<KeyPresser> keys_;
    std::unique_ptr<XEventTap> tap_;
    std::vector<Hotkey> keyDowns_;
    std::set<KeyCode> held_;
    EventVerdict verdict_ = EventVerdict::Swallow;
    std::function<EventVerdict()> onKeyDown_;
    int refusalChanges_ = 0;
    bool displayLost_ = false;
};

TEST_F(XEventTapTest, DeliversAWantedHotkeyAndSwallowsIt) {
    install();
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    ASSERT_TRUE(cameKeyDowns(1));
    pressMarker();
    EXPECT_THAT(keyDowns_, ElementsAre(kLeftCommandT));
    EXPECT_THAT(front_->pressedKeys(), ElementsAre(xkey::kLeftSuper, xkey::kF6));
}

TEST_F(XEventTapTest, ReplaysAPassedKeyToTheProgramInFront) {
    verdict_ = EventVerdict::Pass;
    install();
    keys_->chord({xkey::kRightSuper, xkey::kT});
    ASSERT_TRUE(cameKeyDowns(1));
    pressMarker();
    EXPECT_THAT(keyDowns_, ElementsAre(Hotkey{KeyCode{17}, ModifierFlags(0x100010)}));
    EXPECT_THAT(front_->pressedKeys(), ElementsAre(xkey::kRightSuper, xkey::kT, xkey::kF6));
}

TEST_F(XEventTapTest, DoesNotSeeOtherKeys) {
    install();
    keys_->chord({xkey::kLeftSuper, xkey::kE});
    keys_->chord({xkey::kT});
    keys_->chord({xkey::kLeftSuper, xkey::kLeftShift, xkey::kT});
    pressMarker();
    EXPECT_THAT(keyDowns_, IsEmpty());
}

TEST_F(XEventTapTest, TellsEveryModifierKeyApart) {
    install();
    for (const std::uint8_t code :
         {xkey::kLeftSuper, xkey::kRightSuper, xkey::kLeftShift, xkey::kRightShift, xkey::kLeftAlt,
          xkey::kRightAlt, xkey::kLeftControl, xkey::kRightControl}) {
        keys_->press(code);
        EXPECT_TRUE(waitUntil([&] { return held_.size() == 1; })) << int{code};
        EXPECT_EQ(*held_.begin(), toKeyCode(code));
        keys_->release(code);
        EXPECT_TRUE(waitUntil([&] { return held_.empty(); })) << int{code};
    }
}

TEST_F(XEventTapTest, IgnoresTheLocks) {
    install();
    keys_->chord({xkey::kNumLock});
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(1));
    keys_->chord({xkey::kCapsLock});
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(2));
    keys_->chord({xkey::kNumLock});
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(3));
}

TEST_F(XEventTapTest, TakesAHeldKeyAsOneKeyDown) {
    repeatKeysFast();
    install({Hotkey{KeyCode{96}, {}}});

    // A passed key repeats for the program in front, and is delivered once.
    verdict_ = EventVerdict::Pass;
    keys_->press(xkey::kF5);
    EXPECT_TRUE(waitUntil([&] { return pressesInFront(xkey::kF5) > 10; }));
    keys_->release(xkey::kF5);
    EXPECT_EQ(keyDowns_.size(), 1U);

    verdict_ = EventVerdict::Swallow;
    const auto before = pressesInFront(xkey::kF5);
    keys_->press(xkey::kF5);
    waitAsLongAsFortyRepeatsTake();
    keys_->release(xkey::kF5);
    pressMarker();
    EXPECT_EQ(keyDowns_.size(), 2U);
    EXPECT_EQ(pressesInFront(xkey::kF5), before);

    keys_->chord({xkey::kF5});
    EXPECT_TRUE(cameKeyDowns(3));
}

TEST_F(XEventTapTest, SwallowsAHeldKeyThoughItsModifierIsLetGoFirst) {
    repeatKeysFast();
    ASSERT_TRUE(front_->grabKey(xkey::kT, kControlMask));
    install();
    keys_->press(xkey::kLeftSuper);
    keys_->press(xkey::kT);
    ASSERT_TRUE(cameKeyDowns(1));
    keys_->release(xkey::kLeftSuper);
    waitAsLongAsFortyRepeatsTake();
    keys_->press(xkey::kLeftControl);
    waitAsLongAsFortyRepeatsTake();
    keys_->release(xkey::kLeftControl);
    keys_->release(xkey::kT);
    pressMarker();
    EXPECT_EQ(keyDowns_.size(), 1U);
    EXPECT_EQ(pressesInFront(xkey::kT), 0);

    // Let go, the key is anybody's again.
    keys_->chord({xkey::kT});
    EXPECT_TRUE(waitUntil([&] { return pressesInFront(xkey::kT) == 1; }));
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(2));
    pressMarker();
    EXPECT_EQ(pressesInFront(xkey::kT), 1);
}

TEST_F(XEventTapTest, SwallowsAHeldKeyThatAnotherProgramHasWithAnotherModifier) {
    repeatKeysFast();
    ASSERT_TRUE(front_->grabKeyByXInput(xkey::kT, kControlMask));
    install();
    keys_->press(xkey::kLeftSuper);
    keys_->press(xkey::kT);
    ASSERT_TRUE(cameKeyDowns(1));
    keys_->release(xkey::kLeftSuper);
    waitAsLongAsFortyRepeatsTake();
    keys_->release(xkey::kT);
    pressMarker();
    EXPECT_EQ(pressesInFront(xkey::kT), 0);
    keys_->chord({xkey::kT});
    EXPECT_TRUE(waitUntil([&] { return pressesInFront(xkey::kT) == 1; }));
}

TEST_F(XEventTapTest, TellsAFreshPressOfAHeldKeyFromItsRepeats) {
    install();
    keys_->press(xkey::kLeftSuper);
    keys_->press(xkey::kT);
    ASSERT_TRUE(cameKeyDowns(1));
    pressMarker();
    // Before the tap gets to know that the key is up.
    keys_->release(xkey::kT);
    keys_->chord({xkey::kT});
    ASSERT_TRUE(cameKeyDowns(2));
    keys_->press(xkey::kT);
    ASSERT_TRUE(cameKeyDowns(3));
    pressMarker();
    keys_->release(xkey::kT);
    keys_->release(xkey::kLeftSuper);
    keys_->chord({xkey::kT});
    EXPECT_TRUE(waitUntil([&] { return pressesInFront(xkey::kT) == 1; }));
    pressMarker();
    EXPECT_EQ(pressesInFront(xkey::kT), 1);
    EXPECT_EQ(keyDowns_.size(), 3U);
}

TEST_F(XEventTapTest, SwallowsARecordedKeyUntilItIsUp) {
    repeatKeysFast();
    install({});
    ASSERT_TRUE(tap_->setRecording(true));
    onKeyDown_ = [this] {
        EXPECT_TRUE(tap_->setRecording(false));
        return EventVerdict::Swallow;
    };
    keys_->press(xkey::kLeftSuper);
    keys_->press(xkey::kE);
    ASSERT_TRUE(cameKeyDowns(1));
    waitAsLongAsFortyRepeatsTake();
    keys_->release(xkey::kE);
    keys_->release(xkey::kLeftSuper);
    pressMarker();
    EXPECT_EQ(keyDowns_.size(), 1U);
    EXPECT_EQ(pressesInFront(xkey::kE), 0);
}

TEST_F(XEventTapTest, LetsOtherKeysThroughWhileAHotkeyIsHeld) {
    repeatKeysFast();
    install({kLeftCommandT, kLeftCommandE});
    keys_->press(xkey::kLeftSuper);
    keys_->press(xkey::kT);
    ASSERT_TRUE(cameKeyDowns(1));
    keys_->press(xkey::kE);
    ASSERT_TRUE(cameKeyDowns(2));
    keys_->release(xkey::kLeftSuper);
    waitAsLongAsFortyRepeatsTake();
    for (int i = 0; i < 20; ++i)
        keys_->chord({xkey::kA});
    keys_->release(xkey::kE);
    keys_->release(xkey::kT);
    EXPECT_TRUE(waitUntil([&] { return pressesInFront(xkey::kA) == 20; }));
    EXPECT_EQ(pressesInFront(xkey::kT) + pressesInFront(xkey::kE), 0);
    EXPECT_EQ(keyDowns_.size(), 2U);
}

TEST_F(XEventTapTest, GivesTheKeyboardBackWhileTheKeyIsStillDown) {
    install();
    keys_->press(xkey::kLeftSuper);
    keys_->press(xkey::kT);
    ASSERT_TRUE(cameKeyDowns(1));
    EXPECT_TRUE(waitUntil([&] { return front_->grabKeyboard(); }));
    front_->ungrabKeyboard();
}

TEST_F(XEventTapTest, LosesNoKeyOfAFastTypist) {
    verdict_ = EventVerdict::Pass;
    install({kLeftCommandT, Hotkey{KeyCode{0}, {}}});  // the bare A key
    std::vector<std::uint8_t> typed;
    for (int i = 0; i < 200; ++i) {
        for (const std::uint8_t code : {xkey::kA, xkey::kS, xkey::kD}) {
            keys_->chord({code});
            typed.push_back(code);
        }
    }
    EXPECT_TRUE(waitUntil([&] { return front_->pressedKeys().size() >= typed.size(); }));
    EXPECT_EQ(front_->pressedKeys(), typed);
    EXPECT_EQ(keyDowns_.size(), 200U);
}

TEST_F(XEventTapTest, NamesARefusedHotkeyAndTakesItWhenItIsFree) {
    ASSERT_TRUE(front_->grabKey(xkey::kT, kMod4Mask));
    install({kLeftCommandT, kLeftCommandE});
    EXPECT_THAT(tap_->refusedHotkeys(), ElementsAre(kLeftCommandT));
    EXPECT_TRUE(waitUntil([&] { return refusalChanges_ == 1; }));
    keys_->chord({xkey::kLeftSuper, xkey::kE});
    EXPECT_TRUE(cameKeyDowns(1));

    front_->ungrabKey(xkey::kT, kMod4Mask);
    EXPECT_TRUE(waitUntil([&] { return tap_->refusedHotkeys().empty(); }));
    EXPECT_TRUE(waitUntil([&] { return refusalChanges_ == 2; }));
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(2));
}

TEST_F(XEventTapTest, AsksAgainWhenAWindowManagerStarts) {
    XEventTap::Settings settings;
    settings.displayName = server_->displayName();
    settings.firstRetry = std::chrono::hours(1);
    XEventTap tap(settings);
    ASSERT_TRUE(front_->grabKey(xkey::kT, kMod4Mask));
    tap.setWantedHotkeys({kLeftCommandT});
    ASSERT_TRUE(tap.install(handlers()));
    EXPECT_THAT(tap.refusedHotkeys(), ElementsAre(kLeftCommandT));
    front_->ungrabKey(xkey::kT, kMod4Mask);
    front_->announceWindowManager();
    EXPECT_TRUE(waitUntil([&] { return tap.refusedHotkeys().empty(); }));
}

TEST_F(XEventTapTest, HoldsAHotkeyThroughAChangeOfTheWantedOnes) {
    install({kLeftCommandT});
    tap_->setWantedHotkeys({kLeftCommandE, kLeftCommandT});
    EXPECT_FALSE(front_->grabKey(xkey::kT, kMod4Mask));
    EXPECT_FALSE(front_->grabKey(xkey::kE, kMod4Mask));
    tap_->setWantedHotkeys({kLeftCommandE});
    EXPECT_TRUE(front_->grabKey(xkey::kT, kMod4Mask));
    EXPECT_FALSE(front_->grabKey(xkey::kE, kMod4Mask));
    tap_->remove();
    EXPECT_TRUE(waitUntil([&] { return front_->grabKey(xkey::kE, kMod4Mask); }));
}

TEST_F(XEventTapTest, IsTheOnlyOneOfItsDisplay) {
    install();
    const auto second = makeTap();
    EXPECT_FALSE(second->install(handlers()));
    EXPECT_EQ(second->problem(), TapProblem::OtherInstance);
    tap_->remove();
    EXPECT_TRUE(waitUntil([&] { return second->install(handlers()); }));
    EXPECT_EQ(second->problem(), TapProblem::None);
}

TEST_F(XEventTapTest, DeliversModifiersThatChangedWhileItWasAway) {
    keys_->press(xkey::kLeftSuper);
    install();
    EXPECT_THAT(held_, ElementsAre(key::kLeftCommand));
    tap_->remove();
    keys_->release(xkey::kLeftSuper);
    keys_->press(xkey::kRightShift);
    ASSERT_TRUE(waitUntil([&] { return tap_->install(handlers()); }));
    EXPECT_THAT(held_, ElementsAre(key::kRightShift));
}

TEST_F(XEventTapTest, FollowsAChangeOfTheKeyboardMapping) {
    install({kLeftCommandT, Hotkey{KeyCode{14}, ModifierFlags(0x80040)}});
    setLayout(QStringLiteral("de"), QStringLiteral("altwin:swap_lalt_lwin"));
    // The left Command position now sets Alt's modifier, right Option the third level's.
    ASSERT_TRUE(waitUntil([&] {
        keys_->chord({xkey::kLeftSuper, xkey::kT});
        return !keyDowns_.empty();
    }));
    keyDowns_.clear();
    keys_->chord({xkey::kRightAlt, xkey::kE});
    ASSERT_TRUE(
        waitUntil([&] { return !keyDowns_.empty() && keyDowns_.back().keyCode == KeyCode{14}; }));
    EXPECT_EQ(keyDowns_.back().modifierFlags, ModifierFlags(0x80040));
}

TEST_F(XEventTapTest, AnswersAPressBeforeItReadsAMappingThatChangesAllTheTime) {
    install();
    KeyboardSettings(server_->displayName()).changeMapping(200);
    setLayout(QStringLiteral("us"), QStringLiteral("altwin:swap_lalt_lwin"));
    // What the left Option position sets now is what the grab in force asks for.
    keys_->chord({xkey::kLeftAlt, xkey::kT});
    onKeyDown_ = [this] {
        EXPECT_TRUE(front_->grabKey(xkey::kT, kMod1Mask)) << "the mapping was read first";
        front_->ungrabKey(xkey::kT, kMod1Mask);
        return EventVerdict::Pass;
    };
    ASSERT_TRUE(cameKeyDowns(1));
    EXPECT_TRUE(waitUntil([&] {
        if (!front_->grabKey(xkey::kT, kMod1Mask))
            return true;
        front_->ungrabKey(xkey::kT, kMod1Mask);
        return false;
    }));
}

TEST_F(XEventTapTest, WorksInTheSecondLayoutGroup) {
    setLayout(QStringLiteral("us,ru"), QStringLiteral("grp:caps_toggle"));
    install();
    keys_->chord({xkey::kCapsLock});
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(1));
}

TEST_F(XEventTapTest, HearsAKeyThatSetsAnotherModifierInTheSecondLayoutGroup) {
    setLayout(QStringLiteral("us,de"), QStringLiteral("grp:caps_toggle"));
    install({kRightOptionE, kOptionR});
    for (std::size_t seen = 0; seen < 8; seen += 4) {
        keys_->chord({xkey::kRightAlt, xkey::kE});
        ASSERT_TRUE(cameKeyDowns(seen + 1));
        keys_->chord({xkey::kRightAlt, xkey::kR});
        ASSERT_TRUE(cameKeyDowns(seen + 2));
        keys_->chord({xkey::kLeftAlt, xkey::kR});
        ASSERT_TRUE(cameKeyDowns(seen + 3));
        keys_->chord({xkey::kLeftAlt, xkey::kRightAlt, xkey::kR});
        ASSERT_TRUE(cameKeyDowns(seen + 4));
        keys_->chord({xkey::kCapsLock});
    }
    EXPECT_EQ(keyDowns_[0], kRightOptionE);
    EXPECT_EQ(keyDowns_[4], kRightOptionE);
}

TEST_F(XEventTapTest, IgnoresACapsLockThatShiftChooses) {
    setLayout(QStringLiteral("us"), QStringLiteral("caps:escape_shifted_capslock"));
    install();
    keys_->chord({xkey::kLeftShift, xkey::kCapsLock});
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(1));
}

TEST_F(XEventTapTest, IgnoresACapsLockOfBothShiftKeys) {
    setLayout(QStringLiteral("us"), QStringLiteral("ctrl:nocaps,shift:both_capslock"));
    install();
    keys_->chord({xkey::kLeftShift, xkey::kRightShift});
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(1));
}

TEST_F(XEventTapTest, IgnoresACapsLockThatNoKeySets) {
    setLayout(QStringLiteral("us"), QStringLiteral("caps:none"));
    install();
    KeyboardSettings(server_->displayName()).lock(kLockMask);
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(1));
}

TEST_F(XEventTapTest, TakesALatchedModifierForItsLeftKey) {
    install();
    KeyboardSettings settings(server_->displayName());
    settings.latch(kMod4Mask);
    keys_->chord({xkey::kT});
    ASSERT_TRUE(cameKeyDowns(1));
    EXPECT_EQ(keyDowns_[0], kLeftCommandT);
    EXPECT_THAT(held_, IsEmpty());
    pressMarker();
    EXPECT_THAT(front_->pressedKeys(), ElementsAre(xkey::kF6));
}

TEST_F(XEventTapTest, TakesALockedModifierForItsLeftKeyAsLongAsItIsLocked) {
    install({kLeftCommandT, Hotkey{KeyCode{17}, ModifierFlags(0x12000A)}});
    KeyboardSettings settings(server_->displayName());
    settings.lock(kMod4Mask);
    keys_->chord({xkey::kT});
    keys_->chord({xkey::kLeftShift, xkey::kT});
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    ASSERT_TRUE(cameKeyDowns(3));
    EXPECT_THAT(keyDowns_, ElementsAre(kLeftCommandT, Hotkey{KeyCode{17}, ModifierFlags(0x12000A)},
                                       kLeftCommandT));
    settings.lock(0);
    keys_->chord({xkey::kT});
    pressMarker();
    EXPECT_EQ(keyDowns_.size(), 3U);
    EXPECT_THAT(held_, IsEmpty());
}

TEST_F(XEventTapTest, WorksWithStickyKeys) {
    install();
    KeyboardSettings(server_->displayName()).turnStickyKeysOn();
    for (std::size_t presses = 1; presses <= 2; ++presses) {
        keys_->chord({xkey::kLeftSuper});
        keys_->chord({xkey::kT});
        ASSERT_TRUE(cameKeyDowns(presses));
        EXPECT_EQ(keyDowns_.back(), kLeftCommandT);
    }
    keys_->chord({xkey::kT});
    pressMarker();
    EXPECT_EQ(keyDowns_.size(), 2U);
}

TEST_F(XEventTapTest, TakesCapsLockThatIsAControlKeyForTheLeftOne) {
    for (const QString &option : {QStringLiteral("ctrl:nocaps"), QStringLiteral("ctrl:swapcaps")}) {
        setLayout(QStringLiteral("us"), option);
        install({kLeftControlT});
        keys_->chord({xkey::kCapsLock, xkey::kT});
        ASSERT_TRUE(cameKeyDowns(1)) << option.toStdString();
        EXPECT_THAT(keyDowns_, ElementsAre(kLeftControlT));
        tap_->remove();
        keyDowns_.clear();
        run(QStringLiteral("setxkbmap"), {QStringLiteral("-option")});
        tap_ = makeTap();
    }
}

TEST_F(XEventTapTest, RecordsAModifierThatNoFingerHolds) {
    install({});
    KeyboardSettings settings(server_->displayName());
    ASSERT_TRUE(tap_->setRecording(true));
    settings.latch(kMod4Mask);
    keys_->chord({xkey::kE});
    settings.lock(kLockMask);
    keys_->chord({xkey::kT});
    ASSERT_TRUE(cameKeyDowns(2));
    EXPECT_THAT(keyDowns_, ElementsAre(kLeftCommandE, Hotkey{KeyCode{17}, {}}));
}

TEST_F(XEventTapTest, RecordsEveryKeyEvenOtherProgramsHotkeys) {
    ASSERT_TRUE(front_->grabKey(xkey::kT, kMod4Mask));
    install({});
    ASSERT_TRUE(tap_->setRecording(true));
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    keys_->chord({xkey::kEscape});
    ASSERT_TRUE(cameKeyDowns(2));
    EXPECT_THAT(keyDowns_, ElementsAre(kLeftCommandT, Hotkey{key::kEscape, {}}));
    EXPECT_THAT(front_->pressedKeys(), IsEmpty());

    ASSERT_TRUE(tap_->setRecording(false));
    pressMarker();
    EXPECT_EQ(keyDowns_.size(), 2U);
}

TEST_F(XEventTapTest, CannotRecordWhileAnotherProgramHoldsTheKeyboard) {
    install({});
    ASSERT_TRUE(front_->grabKeyboard());
    EXPECT_FALSE(tap_->setRecording(true));
    front_->ungrabKeyboard();
    EXPECT_TRUE(tap_->setRecording(true));
}

TEST_F(XEventTapTest, StopsRecordingFromWithinTheKeyThatWasRecorded) {
    install();
    ASSERT_TRUE(tap_->setRecording(true));
    onKeyDown_ = [this] {
        EXPECT_TRUE(tap_->setRecording(false));
        return EventVerdict::Swallow;
    };
    keys_->chord({xkey::kLeftSuper, xkey::kE});
    ASSERT_TRUE(cameKeyDowns(1));
    pressMarker();
}

TEST_F(XEventTapTest, AnswersAFrozenKeyboardWhenTheHandlerRemovesTheTap) {
    install();
    onKeyDown_ = [this] {
        tap_->remove();
        return EventVerdict::Pass;
    };
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    ASSERT_TRUE(cameKeyDowns(1));
    pressMarker();
    EXPECT_EQ(std::ranges::count(front_->pressedKeys(), xkey::kT), 1);
}

TEST_F(XEventTapTest, LeavesAKeyItHasNotLookedAtToTheProgramInFront) {
    install();
    keys_->press(xkey::kLeftSuper);
    keys_->press(xkey::kT);
    tap_.reset();
    keys_->release(xkey::kT);
    keys_->release(xkey::kLeftSuper);
    pressMarker();
    EXPECT_THAT(keyDowns_, IsEmpty());
    EXPECT_THAT(front_->pressedKeys(), ElementsAre(xkey::kLeftSuper, xkey::kT, xkey::kF6));
}

TEST_F(XEventTapTest, CoversEveryScreen) {
    tap_.reset();
    start({QStringLiteral("-screen"), QStringLiteral("1"), QStringLiteral("640x480x24")});
    install();
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    ASSERT_TRUE(cameKeyDowns(1));
    pressMarker();
    EXPECT_EQ(keyDowns_.size(), 1U);
    EXPECT_TRUE(waitUntil([&] { return held_.empty(); }));
}

TEST_F(XEventTapTest, SaysThatTheXServerIsGone) {
    install();
    server_->process().kill();
    EXPECT_TRUE(waitUntil([&] { return displayLost_; }));
    EXPECT_FALSE(tap_->install(handlers()));
}

TEST_F(XEventTapTest, IsAbsentInAWaylandSession) {
    XEventTap::Settings settings;
    settings.displayName = server_->displayName();
    settings.isX11Session = false;
    XEventTap tap(settings);
    EXPECT_FALSE(tap.install(handlers()));
    EXPECT_EQ(tap.problem(), TapProblem::WaylandSession);
}

TEST(XEventTapWithoutServer, IsAbsent) {
    XEventTap::Settings settings;
    settings.displayName = QStringLiteral(":99999");
    XEventTap tap(settings);
    tap.setWantedHotkeys({kLeftCommandT});
    EXPECT_FALSE(tap.install({}));
    EXPECT_EQ(tap.problem(), TapProblem::NoDisplay);
    EXPECT_FALSE(tap.setRecording(true));
    tap.remove();
}

}  // namespace
}  // namespace kestrelbay::x11

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
