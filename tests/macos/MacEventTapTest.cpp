#include <chrono>
#include <memory>
#include <optional>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>

#include "fakes/EventTaps.h"
#include "fakes/LiveObjects.h"
#include "fakes/MacJournal.h"
#include "fakes/Session.h"
#include "fixtures/QtPrinters.h"
#include "platform/EventTapContract.h"
#include "platform/macos/MacEventTap.h"

namespace kestrelbay::macos {
namespace {

using Fate = EventTaps::Fate;

/// The bit that the system sets in the flags of every key event, and that of Fn.
constexpr CGEventFlags kNonCoalesced = 0x100;
constexpr CGEventFlags kSecondaryFn = 0x800000;

/// Keys that are pressed on a Mac: modifiers as changes of the flags, all others as
/// presses and releases.
class MacKeyboard {
public:
    EventTap &tap() { return *tap_; }
    EventTaps &taps() { return taps_; }
    ~MacKeyboard() { setSecureInput(false); }
    void hold(KeyCode code) {
        if (isModifierKeyCode(code)) {
            down_.insert(code);
            post(kCGEventFlagsChanged, code);
        } else {
            count(code, post(kCGEventKeyDown, code));
        }
    }
    Fate repeat(KeyCode code) { return count(code, post(kCGEventKeyDown, code, true)); }
    void holdLong(KeyCode code) {
        hold(code);
        repeat(code);
        repeat(code);
    }
    int seenInFront(KeyCode code) const { return static_cast<int>(seen_.count(code)); }
    void letGo(KeyCode code) {
        if (isModifierKeyCode(code)) {
            down_.erase(code);
            post(kCGEventFlagsChanged, code);
        } else {
            post(kCGEventKeyUp, code);
        }
    }
    void settle() {}
    void setHeldByOthers(const Hotkey & /*hotkey*/, bool /*held*/) {}
    void setKeyboardHeldByOthers(bool /*held*/) {}
    void takeTapAway() {}
    void withholdKeys(bool withhold) {
        setSecureInput(withhold);
        waitForALook();
    }

    Fate post(CGEventType type, KeyCode code, bool isRepeat = false) {
        return taps_.post(type, toNumber(code),
                          buildDetailedFlags(down_).bits() | kNonCoalesced | kSecondaryFn,
                          isRepeat);
    }
    void destroyTap() { tap_.reset(); }
    /// Returns when an installed tap has looked around.
    static void waitForALook() {
        const int before = secureInputQueries();
        const QDeadlineTimer end(std::chrono::seconds(30));
        while (secureInputQueries() == before && !end.hasExpired())
            QCoreApplication::processEvents();
        EXPECT_NE(secureInputQueries(), before);
    }

private:
    Fate count(KeyCode code, Fate fate) {
        if (fate != Fate::Swallowed)
            seen_.insert(code);
        return fate;
    }

    EventTaps taps_;
    std::optional<MacEventTap> tap_{std::chrono::milliseconds(1)};
    std::set<KeyCode> down_;
    std::multiset<KeyCode> seen_;
};

}  // namespace
}  // namespace kestrelbay::macos

template <>
inline constexpr bool kestrelbay::testing::kOthersCanHoldKeys<kestrelbay::macos::MacKeyboard> =
    false;

namespace kestrelbay::testing {
using macos::MacKeyboard;
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, EventTapContract, MacKeyboard);
}  // namespace kestrelbay::testing

namespace kestrelbay::macos {
namespace {

class MacEventTapTest : public ::testing::Test {
protected:
    ~MacEventTapTest() override {
        keyboard_.destroyTap();
        EXPECT_EQ(liveObjects(), objectsBefore_);
    }

    [[nodiscard]] bool install() {
        return keyboard_.tap().install(
            {.event =
                 [this](EventType type, KeyCode code, ModifierFlags flags) {
                     types_.push_back(type);
                     codes_.push_back(code);
                     flags_.push_back(flags);
                     if (within_)
                         within_();
                     return verdict_;
                 },
             .refusalsChanged = [] { FAIL(); },
             .lost =
                 [this] {
                     ++losses_;
                     if (onLoss_)
                         onLoss_();
                 }});
    }
    /// A press that a tap in order would swallow.
    Fate pressWanted() {
        verdict_ = EventVerdict::Swallow;
        return keyboard_.post(kCGEventKeyDown, KeyCode{17});
    }

    int objectsBefore_ = liveObjects();
    MacKeyboard keyboard_;
    EventVerdict verdict_ = EventVerdict::Pass;
    std::function<void()> within_;
    std::function<void()> onLoss_;
    int losses_ = 0;
    std::vector<EventType> types_;
    std::vector<KeyCode> codes_;
    std::vector<ModifierFlags> flags_;
};

const QStringList kInstallCalls{
    QStringLiteral("CGEventTapCreate 1 0 0 0x1400"),
    QStringLiteral("CFMachPortCreateRunLoopSource 0"),
    QStringLiteral("CFRunLoopAddSource main common"),
    QStringLiteral("CGEventTapEnable true"),
};
const QStringList kRemoveCalls{
    QStringLiteral("CGEventTapEnable false"),
    QStringLiteral("CFRunLoopRemoveSource main common"),
    QStringLiteral("CFMachPortInvalidate"),
};

TEST_F(MacEventTapTest, IsAnActiveTapAtTheHeadOfTheSession) {
    ASSERT_TRUE(install());
    EXPECT_EQ(takeCalls(), kInstallCalls);
    EXPECT_EQ(keyboard_.tap().problem(), TapProblem::None);
}

TEST_F(MacEventTapTest, IsDisabledBeforeItsSourceIsTakenAway) {
    ASSERT_TRUE(install());
    static_cast<void>(takeCalls());
    keyboard_.tap().remove();
    EXPECT_EQ(takeCalls(), kRemoveCalls);
    EXPECT_EQ(liveObjects(), objectsBefore_);
    EXPECT_EQ(keyboard_.taps().count(), 0);
    keyboard_.tap().remove();
    EXPECT_EQ(takeCalls(), QStringList());
}

TEST_F(MacEventTapTest, ReinstallingLeavesOneTap) {
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(install());
        EXPECT_EQ(keyboard_.taps().count(), 1);
        keyboard_.tap().remove();
    }
}

TEST_F(MacEventTapTest, IsRemovedWithTheObject) {
    ASSERT_TRUE(install());
    static_cast<void>(takeCalls());
    keyboard_.destroyTap();
    EXPECT_EQ(takeCalls(), kRemoveCalls);
}

TEST_F(MacEventTapTest, WithoutPermissionThereIsNone) {
    keyboard_.taps().refuseTaps(true);
    EXPECT_FALSE(install());
    EXPECT_EQ(takeCalls(), QStringList(kInstallCalls.first()));
    EXPECT_EQ(keyboard_.tap().problem(), TapProblem::NotPermitted);
    keyboard_.tap().enable();
    keyboard_.tap().remove();
    EXPECT_EQ(takeCalls(), QStringList());
    EXPECT_FALSE(keyboard_.tap().setRecording(true));
    EXPECT_TRUE(keyboard_.tap().setRecording(false));
}

TEST_F(MacEventTapTest, WithoutASourceThereIsNone) {
    keyboard_.taps().refuseSources(true);
    EXPECT_FALSE(install());
    EXPECT_EQ(takeCalls(), kInstallCalls.mid(0, 2) + kRemoveCalls.mid(2));
    EXPECT_EQ(keyboard_.taps().count(), 0);
    EXPECT_EQ(keyboard_.tap().problem(), TapProblem::NotPermitted);
    EXPECT_EQ(liveObjects(), objectsBefore_);
}

TEST_F(MacEventTapTest, PermissionMayComeLater) {
    keyboard_.taps().refuseTaps(true);
    EXPECT_FALSE(install());
    keyboard_.taps().refuseTaps(false);
    EXPECT_TRUE(install());
    EXPECT_EQ(keyboard_.tap().problem(), TapProblem::None);
}

TEST_F(MacEventTapTest, TheVerdictDecides) {
    keyboard_.tap().setWantedHotkeys({{KeyCode{17}, ModifierFlags()}});
    ASSERT_TRUE(install());
    EXPECT_EQ(keyboard_.post(kCGEventKeyDown, KeyCode{17}), Fate::Passed);
    EXPECT_EQ(keyboard_.post(kCGEventFlagsChanged, key::kLeftShift), Fate::Passed);
    EXPECT_EQ(keyboard_.post(kCGEventFlagsChanged, key::kLeftShift), Fate::Passed);
    verdict_ = EventVerdict::Swallow;
    EXPECT_EQ(keyboard_.post(kCGEventKeyDown, KeyCode{17}), Fate::Swallowed);
    EXPECT_EQ(keyboard_.post(kCGEventFlagsChanged, key::kLeftShift), Fate::Swallowed);
    // Those are not asked about.
    EXPECT_EQ(keyboard_.post(kCGEventKeyDown, KeyCode{18}), Fate::Passed);
    EXPECT_EQ(keyboard_.post(kCGEventKeyUp, KeyCode{17}), Fate::Unseen);
    EXPECT_EQ(codes_.size(), 5U);
}

TEST_F(MacEventTapTest, OtherFlagsThanThoseOfModifiersAreLeftOut) {
    ASSERT_TRUE(install());
    keyboard_.hold(key::kRightControl);
    keyboard_.hold(key::kLeftOption);
    EXPECT_EQ(flags_, (std::vector{ModifierFlags(0x42000), ModifierFlags(0x42000 | 0x80020)}));
}

TEST_F(MacEventTapTest, CapsLockAndFnAreTold) {
    ASSERT_TRUE(install());
    keyboard_.post(kCGEventFlagsChanged, KeyCode{57});
    keyboard_.post(kCGEventFlagsChanged, KeyCode{63});
    EXPECT_EQ(codes_, (std::vector{KeyCode{57}, KeyCode{63}}));
    EXPECT_EQ(types_, (std::vector{EventType::FlagsChanged, EventType::FlagsChanged}));
}

TEST_F(MacEventTapTest, TellsThatItWasDisabledAndCanBeEnabledWithin) {
    ASSERT_TRUE(install());
    static_cast<void>(takeCalls());
    verdict_ = EventVerdict::Swallow;
    within_ = [this] { keyboard_.tap().enable(); };
    keyboard_.tap().setWantedHotkeys({{KeyCode{17}, ModifierFlags()}});
    for (const auto reason : {kCGEventTapDisabledByTimeout, kCGEventTapDisabledByUserInput}) {
        EXPECT_EQ(keyboard_.post(reason, KeyCode{0}), Fate::Passed);
        EXPECT_EQ(takeCalls(), QStringList(QStringLiteral("CGEventTapEnable true")));
        EXPECT_EQ(static_cast<std::uint32_t>(types_.back()), static_cast<std::uint32_t>(reason));
        EXPECT_EQ(keyboard_.post(kCGEventKeyDown, KeyCode{17}), Fate::Swallowed);
        EXPECT_EQ(takeCalls(), QStringList(QStringLiteral("CGEventTapEnable true")));
    }
    within_ = nullptr;
    EXPECT_EQ(keyboard_.post(kCGEventTapDisabledByTimeout, KeyCode{0}), Fate::Passed);
    EXPECT_EQ(keyboard_.post(kCGEventKeyDown, KeyCode{17}), Fate::Unseen);
}

TEST_F(MacEventTapTest, AHandlerMayRemoveIt) {
    ASSERT_TRUE(install());
    within_ = [this] { keyboard_.tap().remove(); };
    EXPECT_EQ(keyboard_.post(kCGEventFlagsChanged, key::kLeftShift), Fate::Passed);
    EXPECT_EQ(keyboard_.post(kCGEventFlagsChanged, key::kLeftShift), Fate::Unseen);
    EXPECT_EQ(codes_.size(), 1U);
}

/// Whoever holds what a handler needs must not lose it while the handler runs.
TEST_F(MacEventTapTest, AHandlerLivesUntilItReturnsAndNoLongerThanTheTap) {
    auto token = std::make_shared<int>();
    const std::weak_ptr<int> held = token;
    bool livedToTheEnd = false;
    ASSERT_TRUE(keyboard_.tap().install(
        {.event = [&held, &livedToTheEnd, token, &tap = keyboard_.tap()](auto...) {
            // What it captured may be gone after the call.
            const std::weak_ptr<int> &own = held;
            bool &result = livedToTheEnd;
            tap.remove();
            result = !own.expired();
            return EventVerdict::Pass;
        }}));
    token.reset();
    EXPECT_FALSE(held.expired());
    EXPECT_EQ(keyboard_.post(kCGEventFlagsChanged, key::kLeftShift), Fate::Passed);
    EXPECT_TRUE(livedToTheEnd);
    EXPECT_TRUE(held.expired());
}

TEST_F(MacEventTapTest, KeepsNoHandlerOnceItIsRemoved) {
    auto token = std::make_shared<int>();
    const std::weak_ptr<int> held = token;
    ASSERT_TRUE(keyboard_.tap().install({.event = [token](auto...) { return EventVerdict::Pass; },
                                         .hotkeyPressed = [token](const Hotkey &) {},
                                         .refusalsChanged = [token] {},
                                         .lost = [token] {},
                                         .withheldChanged = [token] {}}));
    token.reset();
    EXPECT_FALSE(held.expired());
    keyboard_.tap().remove();
    EXPECT_TRUE(held.expired());
}

TEST_F(MacEventTapTest, ARepeatGoesWhereItsPressWent) {
    keyboard_.tap().setWantedHotkeys({{KeyCode{17}, modifier::kCommand}});
    ASSERT_TRUE(install());
    verdict_ = EventVerdict::Swallow;
    keyboard_.hold(KeyCode{17});
    keyboard_.hold(key::kLeftCommand);
    EXPECT_EQ(keyboard_.repeat(KeyCode{17}), Fate::Passed);
    EXPECT_EQ(codes_, std::vector{key::kLeftCommand});

    keyboard_.hold(KeyCode{17});
    keyboard_.letGo(key::kLeftCommand);
    EXPECT_EQ(keyboard_.repeat(KeyCode{17}), Fate::Swallowed);
    EXPECT_EQ(keyboard_.repeat(KeyCode{18}), Fate::Passed);
    // The next press is one for itself, and so are its repeats.
    keyboard_.hold(KeyCode{17});
    EXPECT_EQ(keyboard_.repeat(KeyCode{17}), Fate::Passed);
    EXPECT_EQ(codes_, (std::vector{key::kLeftCommand, KeyCode{17}, key::kLeftCommand}));
}

TEST_F(MacEventTapTest, RepeatsAreNotRecorded) {
    ASSERT_TRUE(install());
    verdict_ = EventVerdict::Swallow;
    keyboard_.hold(KeyCode{14});
    ASSERT_TRUE(keyboard_.tap().setRecording(true));
    EXPECT_EQ(keyboard_.repeat(KeyCode{14}), Fate::Passed);
    EXPECT_TRUE(codes_.empty());
}

TEST_F(MacEventTapTest, ARemovedTapForgetsWhatIsHeld) {
    keyboard_.tap().setWantedHotkeys({{KeyCode{17}, ModifierFlags()}});
    ASSERT_TRUE(install());
    ASSERT_EQ(pressWanted(), Fate::Swallowed);
    keyboard_.tap().remove();
    ASSERT_TRUE(install());
    EXPECT_EQ(keyboard_.repeat(KeyCode{17}), Fate::Passed);
}

TEST_F(MacEventTapTest, OneThatDiedSilentlyIsMadeAnewWhenTheUserIsBack) {
    keyboard_.tap().setWantedHotkeys({{KeyCode{17}, ModifierFlags()}});
    ASSERT_TRUE(install());
    ASSERT_TRUE(keyboard_.tap().setRecording(true));
    static_cast<void>(takeCalls());
    for (const Return how :
         {Return::MachineWakes, Return::ScreensWake, Return::SessionBecomesActive}) {
        keyboard_.taps().disableSilently();
        EXPECT_EQ(pressWanted(), Fate::Unseen);
        userReturns(how);
        EXPECT_EQ(takeCalls(), kRemoveCalls + kInstallCalls);
        EXPECT_EQ(pressWanted(), Fate::Swallowed);
        EXPECT_EQ(keyboard_.taps().count(), 1);
    }
    EXPECT_EQ(losses_, 0);
    // Whoever records goes on.
    EXPECT_EQ(keyboard_.post(kCGEventKeyDown, KeyCode{20}), Fate::Swallowed);
}

TEST_F(MacEventTapTest, OneInOrderIsLeftAloneWhenTheUserIsBack) {
    ASSERT_TRUE(install());
    static_cast<void>(takeCalls());
    userReturns(Return::MachineWakes);
    EXPECT_EQ(takeCalls(), QStringList());
    keyboard_.tap().remove();
    static_cast<void>(takeCalls());
    userReturns(Return::MachineWakes);
    EXPECT_EQ(takeCalls(), QStringList());
}

TEST_F(MacEventTapTest, NobodyIsToldOfTheUserOnceItIsGone) {
    ASSERT_TRUE(install());
    keyboard_.taps().disableSilently();
    keyboard_.destroyTap();
    userReturns(Return::MachineWakes);
    EXPECT_EQ(keyboard_.taps().count(), 0);
}

TEST_F(MacEventTapTest, OneThatDiedSilentlyIsSoonMadeAnew) {
    keyboard_.tap().setWantedHotkeys({{KeyCode{17}, ModifierFlags()}});
    ASSERT_TRUE(install());
    keyboard_.taps().disableSilently();
    MacKeyboard::waitForALook();
    EXPECT_EQ(pressWanted(), Fate::Swallowed);
    EXPECT_EQ(keyboard_.taps().count(), 1);
}

TEST_F(MacEventTapTest, IsLostWithThePermission) {
    ASSERT_TRUE(install());
    static_cast<void>(takeCalls());
    keyboard_.taps().withdrawPermission();
    onLoss_ = [this] {
        EXPECT_EQ(keyboard_.tap().problem(), TapProblem::NotPermitted);
        EXPECT_EQ(keyboard_.taps().count(), 0);
        EXPECT_FALSE(install());
    };
    userReturns(Return::MachineWakes);
    EXPECT_EQ(losses_, 1);
    // Gone before anything else is tried, so that no key waits for it.
    EXPECT_EQ(takeCalls().mid(0, 4), kRemoveCalls + kInstallCalls.mid(0, 1));
    EXPECT_EQ(liveObjects(), objectsBefore_);
    userReturns(Return::MachineWakes);
    EXPECT_EQ(losses_, 1);

    keyboard_.taps().refuseTaps(false);
    keyboard_.taps().refuseEnabling(false);
    onLoss_ = nullptr;
    EXPECT_TRUE(install());
    EXPECT_EQ(keyboard_.tap().problem(), TapProblem::None);
}

TEST_F(MacEventTapTest, OneThatCannotBeEnabledAnyMoreIsLost) {
    ASSERT_TRUE(install());
    keyboard_.taps().refuseEnabling(true);
    within_ = [this] { keyboard_.tap().enable(); };
    EXPECT_EQ(keyboard_.post(kCGEventTapDisabledByUserInput, KeyCode{0}), Fate::Passed);
    EXPECT_EQ(losses_, 1);
    EXPECT_EQ(keyboard_.taps().count(), 0);
    EXPECT_EQ(keyboard_.tap().problem(), TapProblem::NotPermitted);
}

TEST_F(MacEventTapTest, KeysMayBeWithheldFromTheStart) {
    setSecureInput(true);
    ASSERT_TRUE(install());
    EXPECT_TRUE(keyboard_.tap().areKeysWithheld());
}

TEST_F(MacEventTapTest, WhoeverHearsOfWithheldKeysMayRemoveIt) {
    auto token = std::make_shared<int>();
    const std::weak_ptr<int> held = token;
    bool livedToTheEnd = false;
    ASSERT_TRUE(keyboard_.tap().install(
        {.withheldChanged = [&held, &livedToTheEnd, token, &tap = keyboard_.tap()] {
            const std::weak_ptr<int> &own = held;
            bool &result = livedToTheEnd;
            tap.remove();
            result = !own.expired();
        }}));
    token.reset();
    keyboard_.withholdKeys(true);
    EXPECT_TRUE(livedToTheEnd);
    EXPECT_EQ(keyboard_.taps().count(), 0);
    EXPECT_FALSE(keyboard_.tap().areKeysWithheld());
}

TEST_F(MacEventTapTest, AModifierReleasedWhileThereWasNoTapStaysHeld) {
    keyboard_.tap().setWantedHotkeys({{KeyCode{17}, modifier::kShift}});
    ASSERT_TRUE(install());
    keyboard_.hold(key::kLeftShift);
    keyboard_.tap().remove();
    keyboard_.letGo(key::kLeftShift);
    ASSERT_TRUE(install());
    keyboard_.hold(KeyCode{17});
    EXPECT_EQ(codes_, (std::vector{key::kLeftShift, KeyCode{17}}));
}

TEST_F(MacEventTapTest, EventsWithoutUserDataPass) {
    ASSERT_TRUE(install());
    EXPECT_EQ(keyboard_.taps().postTo(nullptr, kCGEventKeyDown, 17), Fate::Passed);
    EXPECT_TRUE(codes_.empty());
}

TEST_F(MacEventTapTest, KeyCodesHave16Bits) {
    ASSERT_TRUE(install());
    ASSERT_TRUE(keyboard_.tap().setRecording(true));
    EXPECT_EQ(keyboard_.taps().post(kCGEventKeyDown, 65535, 0), Fate::Passed);
    EXPECT_EQ(codes_, std::vector{KeyCode{65535}});
    EXPECT_DEATH(keyboard_.taps().post(kCGEventKeyDown, 65536, 0), "key code 65536");
    EXPECT_DEATH(keyboard_.taps().post(kCGEventKeyDown, -1, 0), "key code -1");
}

}  // namespace
}  // namespace kestrelbay::macos
