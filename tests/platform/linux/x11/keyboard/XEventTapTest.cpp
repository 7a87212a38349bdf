#include <QElapsedTimer>

#include "platform/linux/x11/keyboard/HotkeyGrabs.h"
#include "platform/linux/x11/keyboard/XEventTapFixture.h"
#include "platform/linux/x11/keymap/KeyboardState.h"

namespace kestrelbay::x11 {
namespace {

using kestrelbay::testing::waitUntil;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class XEventTapTest : public XEventTapFixture {};

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
    EXPECT_THAT(tap_->refusedHotkeys(), ElementsAre(RefusedHotkey{kLeftCommandT}));
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
    EXPECT_THAT(tap.refusedHotkeys(), ElementsAre(RefusedHotkey{kLeftCommandT}));
    front_->ungrabKey(xkey::kT, kMod4Mask);
    front_->announceWindowManager();
    EXPECT_TRUE(waitUntil([&] { return tap.refusedHotkeys().empty(); }));
}

/// The grabs alone, with the Command T of the test refused.
class RefusedGrabs : public XEventTapFixture {
protected:
    void SetUp() override {
        XEventTapFixture::SetUp();
        connection_.emplace(server_->displayName());
        ASSERT_TRUE(watchKeymap(connection_->get()));
        keyboard_ = readKeyboardModel(connection_->get());
        ASSERT_TRUE(keyboard_);
        ASSERT_TRUE(front_->grabKey(xkey::kT, kMod4Mask));
    }
    std::unique_ptr<HotkeyGrabs> grabs(std::chrono::milliseconds first,
                                       std::chrono::milliseconds longest) {
        auto grabs = std::make_unique<HotkeyGrabs>(
            first, longest,
            HotkeyGrabs::Hooks{.refusalsChanged = [] {}, .serverAsked = [this] { ++asked_; }});
        grabs->setWanted({kLeftCommandT});
        grabs->start(*connection_, *keyboard_);
        return grabs;
    }

    std::optional<XConnection> connection_;
    std::optional<KeyboardModel> keyboard_;
    int asked_ = 0;
};

TEST_F(RefusedGrabs, AreAskedForOnlyForAWhileByThemselves) {
    const auto grabs = this->grabs(std::chrono::milliseconds(1), std::chrono::milliseconds(4));
    // After 1, 2 and 4 ms. That nothing more comes shows nowhere, so it is given the time of ten.
    QElapsedTimer time;
    time.start();
    ASSERT_TRUE(waitUntil([&] { return asked_ >= 4 && time.elapsed() > 40; }));
    EXPECT_EQ(asked_, 4);
}

TEST_F(RefusedGrabs, AreAskedForAgainWhenTheirHotkeyIsOnItsWay) {
    const auto grabs = this->grabs(std::chrono::hours(1), std::chrono::hours(1));
    ASSERT_EQ(asked_, 1);
    const auto goDown = [&](KeyCode key, const std::set<KeyCode> &held) {
        grabs->keyWentDown(key, buildDetailedFlags(held));
    };
    goDown(key::kLeftControl, {key::kLeftControl});
    goDown(key::kRightCommand, {key::kRightCommand});
    goDown(key::kLeftShift, {key::kLeftCommand, key::kLeftShift});
    goDown(kLeftCommandE.keyCode, {key::kLeftCommand});
    goDown(kLeftCommandT.keyCode, {});
    EXPECT_EQ(asked_, 1);
    goDown(kLeftCommandT.keyCode, {key::kLeftCommand});
    EXPECT_EQ(asked_, 2);
    front_->ungrabKey(xkey::kT, kMod4Mask);
    // Before the key itself goes down, so that even this press arrives.
    goDown(key::kLeftCommand, {key::kLeftCommand});
    EXPECT_THAT(grabs->refused(), IsEmpty());
    EXPECT_EQ(asked_, 3);
    goDown(key::kLeftCommand, {key::kLeftCommand});
    EXPECT_EQ(asked_, 3);
}

TEST_F(XEventTapTest, AsksAgainWhenARefusedHotkeyIsOnItsWay) {
    XEventTap::Settings settings;
    settings.displayName = server_->displayName();
    settings.firstRetry = std::chrono::hours(1);
    XEventTap tap(settings);
    ASSERT_TRUE(front_->grabKey(xkey::kT, kMod4Mask));
    tap.setWantedHotkeys({kLeftCommandT});
    ASSERT_TRUE(tap.install(handlers()));
    front_->ungrabKey(xkey::kT, kMod4Mask);
    keys_->press(xkey::kLeftSuper);
    EXPECT_TRUE(waitUntil([&] { return tap.refusedHotkeys().empty(); }));
    keys_->press(xkey::kT);
    EXPECT_TRUE(cameKeyDowns(1));
    keys_->release(xkey::kT);
    keys_->release(xkey::kLeftSuper);
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
