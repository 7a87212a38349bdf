#include "platform/linux/wayland/plasma/KGlobalAccelEventTap.h"

#include <chrono>
#include <optional>

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/wayland/plasma/FakeKGlobalAccel.h"
#include "platform/linux/wayland/plasma/Keymaps.h"
#include "support/Poll.h"
#include "support/bus/FakeBusObject.h"
#include "support/bus/PrivateSessionBus.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::plasma {
namespace {

using namespace std::chrono_literals;
using kestrelbay::testing::FakeBusObject;
using kestrelbay::testing::FakeKGlobalAccel;
using kestrelbay::testing::makeKeymap;
using kestrelbay::testing::waitUntil;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr Hotkey kCommandT{KeyCode{17}, modifier::kCommand};
constexpr Hotkey kCommandY{KeyCode{16}, modifier::kCommand};
constexpr Hotkey kCommandZ{KeyCode{6}, modifier::kCommand};
constexpr Hotkey kF5{KeyCode{96}, {}};
constexpr std::chrono::milliseconds kFirstRetry{20};

class OneKeymap final : public wayland::KeymapSource {
public:
    [[nodiscard]] xkb_keymap *get() const override { return keymap_.get(); }

private:
    const kestrelbay::testing::KeymapOwner keymap_ = makeKeymap("us,de");
};

class KGlobalAccelEventTapTest : public ::testing::Test {
protected:
    KGlobalAccelEventTapTest() {
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus_.address().toUtf8());
        plasma_.emplace(bus_.address());
    }
    ~KGlobalAccelEventTapTest() override { qunsetenv("DBUS_SESSION_BUS_ADDRESS"); }

    [[nodiscard]] KGlobalAccelEventTap::Settings settings(
        std::chrono::milliseconds firstRetry = kFirstRetry) const {
        return {.claimPath = folder_.filePath(u"claim"_s),
                .keymap = [](const auto &) { return std::make_unique<OneKeymap>(); },
                .firstRetry = firstRetry,
                .longestSilence = 300ms};
    }
    [[nodiscard]] bool install() {
        return tap_.install(
            {.hotkeyPressed = [this](const Hotkey &hotkey) { pressed_.push_back(hotkey); },
             .refusalsChanged = [this] { ++refusalChanges_; }});
    }
    [[nodiscard]] bool becomesBound(const QStringList &keys) {
        return waitUntil([&] { return plasma_->bound() == keys; });
    }
    /// What was told until now has arrived.
    void catchUp() {
        plasma_->press(u"F5"_s);
        const auto before = std::ranges::count(pressed_, kF5);
        EXPECT_TRUE(waitUntil([&] { return std::ranges::count(pressed_, kF5) > before; }));
        plasma_->release(u"F5"_s);
        std::erase(pressed_, kF5);
    }

    testing::PrivateSessionBus bus_;
    const QTemporaryDir folder_;
    std::optional<FakeKGlobalAccel> plasma_;
    KGlobalAccelEventTap tap_{settings()};
    std::vector<Hotkey> pressed_;
    int refusalChanges_ = 0;
};

TEST_F(KGlobalAccelEventTapTest, BindsWantedHotkeysAndTellsOfTheirPresses) {
    tap_.setWantedHotkeys({kCommandT, kF5});
    ASSERT_TRUE(install());
    EXPECT_EQ(tap_.abilities(), (TapAbilities{.tellsSides = false, .passesKeysBack = false}));
    EXPECT_TRUE(becomesBound({u"F5"_s, u"Meta+T"_s}));
    plasma_->press(u"Meta+T"_s);
    plasma_->press(u"F5"_s);
    EXPECT_TRUE(waitUntil([&] { return pressed_.size() == 2; }));
    EXPECT_THAT(pressed_, ElementsAre(kCommandT, kF5));
    EXPECT_THAT(tap_.refusedHotkeys(), IsEmpty());
    EXPECT_EQ(refusalChanges_, 0);
}

TEST_F(KGlobalAccelEventTapTest, TellsOnceOfAKeyThatIsHeld) {
    tap_.setWantedHotkeys({kCommandT, kF5});
    ASSERT_TRUE(install());
    ASSERT_TRUE(becomesBound({u"F5"_s, u"Meta+T"_s}));
    for (int i = 0; i < 5; ++i)
        plasma_->press(u"Meta+T"_s);
    catchUp();
    EXPECT_THAT(pressed_, ElementsAre(kCommandT));
    plasma_->release(u"Meta+T"_s);
    plasma_->press(u"Meta+T"_s);
    catchUp();
    EXPECT_THAT(pressed_, ElementsAre(kCommandT, kCommandT));
}

TEST_F(KGlobalAccelEventTapTest, DoesNotWaitForeverForARelease) {
    tap_.setWantedHotkeys({kCommandT});
    ASSERT_TRUE(install());
    ASSERT_TRUE(becomesBound({u"Meta+T"_s}));
    plasma_->press(u"Meta+T"_s);
    ASSERT_TRUE(waitUntil([&] { return pressed_.size() == 1; }));
    QElapsedTimer time;
    time.start();
    ASSERT_TRUE(waitUntil([&] { return time.hasExpired(400); }));
    plasma_->press(u"Meta+T"_s);
    EXPECT_TRUE(waitUntil([&] { return pressed_.size() == 2; }));
}

TEST_F(KGlobalAccelEventTapTest, LetsGoWhatIsNoMoreWantedAndNothingElse) {
    ASSERT_TRUE(install());
    tap_.setWantedHotkeys({kCommandT, kF5});
    ASSERT_TRUE(becomesBound({u"F5"_s, u"Meta+T"_s}));
    const int questions = plasma_->questionCount();
    tap_.setWantedHotkeys({kCommandT, kCommandY});
    EXPECT_TRUE(becomesBound({u"Meta+T"_s, u"Meta+Y"_s}));
    EXPECT_EQ(plasma_->questionCount(), questions + 1);
    tap_.setWantedHotkeys({});
    EXPECT_TRUE(becomesBound({}));
}

TEST_F(KGlobalAccelEventTapTest, NamesWhatOthersHaveAndAsksForItAgain) {
    plasma_->setTaken(u"Meta+T"_s, true);
    tap_.setWantedHotkeys({kCommandT, kF5});
    ASSERT_TRUE(install());
    ASSERT_TRUE(waitUntil([&] { return refusalChanges_ == 1; }));
    EXPECT_THAT(tap_.refusedHotkeys(), ElementsAre(RefusedHotkey{kCommandT}));
    plasma_->setTaken(u"Meta+T"_s, false);
    EXPECT_TRUE(waitUntil([&] { return refusalChanges_ == 2; }));
    EXPECT_THAT(tap_.refusedHotkeys(), IsEmpty());
    EXPECT_EQ(plasma_->bound(), (QStringList{u"F5"_s, u"Meta+T"_s}));
}

TEST_F(KGlobalAccelEventTapTest, AsksForWhatOthersHaveAfterLongerAndLongerPauses) {
    plasma_->setTaken(u"Meta+T"_s, true);
    tap_.setWantedHotkeys({kCommandT});
    ASSERT_TRUE(install());
    QElapsedTimer time;
    time.start();
    const int before = plasma_->questionCount();
    ASSERT_TRUE(waitUntil([&] { return plasma_->questionCount() >= before + 5; }));
    // The first question may have come by then. Timers may be early by a twentieth.
    EXPECT_GE(std::chrono::milliseconds(time.elapsed()), 12 * kFirstRetry);
}

TEST_F(KGlobalAccelEventTapTest, AsksForWhatOthersHaveWhenTheUserHasChangedTheirKeys) {
    tap_.remove();
    KGlobalAccelEventTap patient(settings(1h));
    plasma_->setTaken(u"Meta+T"_s, true);
    patient.setWantedHotkeys({kCommandT});
    ASSERT_TRUE(patient.install({}));
    ASSERT_TRUE(waitUntil([&] { return !patient.refusedHotkeys().empty(); }));
    plasma_->setTaken(u"Meta+T"_s, false);
    plasma_->changeAnother();
    EXPECT_TRUE(waitUntil([&] { return patient.refusedHotkeys().empty(); }));
}

TEST_F(KGlobalAccelEventTapTest, SaysSoWhenTheUserTakesAKeyAway) {
    tap_.setWantedHotkeys({kCommandT});
    ASSERT_TRUE(install());
    ASSERT_TRUE(becomesBound({u"Meta+T"_s}));
    plasma_->setTaken(u"Meta+T"_s, true);
    plasma_->takeAway(u"Meta+T"_s);
    EXPECT_TRUE(waitUntil([&] { return refusalChanges_ == 1; }));
    EXPECT_THAT(tap_.refusedHotkeys(), ElementsAre(RefusedHotkey{kCommandT}));
}

TEST_F(KGlobalAccelEventTapTest, BindsAllAnewWhenPlasmaBeginsAnew) {
    tap_.setWantedHotkeys({kCommandT});
    ASSERT_TRUE(install());
    ASSERT_TRUE(becomesBound({u"Meta+T"_s}));
    plasma_.reset();
    plasma_.emplace(bus_.address());
    EXPECT_TRUE(becomesBound({u"Meta+T"_s}));
    plasma_->press(u"Meta+T"_s);
    EXPECT_TRUE(waitUntil([&] { return !pressed_.empty(); }));
}

TEST_F(KGlobalAccelEventTapTest, FollowsTheLayoutInUse) {
    FakeBusObject keyboard(
        bus_.address(), u"org.kde.keyboard"_s, u"/Layouts"_s,
        [](const QDBusMessage &call) { return std::optional(call.createReply(1U)); });
    tap_.setWantedHotkeys({kCommandT, kCommandY, kCommandZ});
    ASSERT_TRUE(install());
    EXPECT_TRUE(becomesBound({u"Meta+T"_s, u"Meta+Y"_s, u"Meta+Z"_s}));
    const auto pressedBy = [&](const QString &key) {
        pressed_.clear();
        plasma_->press(key);
        EXPECT_TRUE(waitUntil([&] { return !pressed_.empty(); }));
        plasma_->release(key);
        return pressed_.front();
    };
    // A German keyboard has Z where ours has Y.
    EXPECT_TRUE(waitUntil([&] { return pressedBy(u"Meta+Z"_s) == kCommandY; }));
    keyboard.emitSignal(u"org.kde.KeyboardLayouts"_s, u"layoutChanged"_s, {0U});
    EXPECT_TRUE(waitUntil([&] { return pressedBy(u"Meta+Z"_s) == kCommandZ; }));
    EXPECT_TRUE(becomesBound({u"Meta+T"_s, u"Meta+Y"_s, u"Meta+Z"_s}));
    EXPECT_THAT(tap_.refusedHotkeys(), IsEmpty());
}

TEST_F(KGlobalAccelEventTapTest, LeavesTheKeysToTheWindowThatRecords) {
    tap_.setWantedHotkeys({kCommandT});
    ASSERT_TRUE(install());
    EXPECT_TRUE(tap_.setRecording(true));
    EXPECT_TRUE(waitUntil([&] { return plasma_->isBlocked(); }));
    EXPECT_TRUE(tap_.setRecording(false));
    EXPECT_TRUE(waitUntil([&] { return !plasma_->isBlocked(); }));
    EXPECT_TRUE(tap_.setRecording(true));
    tap_.remove();
    EXPECT_FALSE(plasma_->isBlocked());
}

TEST_F(KGlobalAccelEventTapTest, UnbindsAllWhenItIsRemoved) {
    tap_.setWantedHotkeys({kCommandT, kF5});
    ASSERT_TRUE(install());
    ASSERT_TRUE(becomesBound({u"F5"_s, u"Meta+T"_s}));
    tap_.remove();
    EXPECT_THAT(plasma_->actions(), IsEmpty());
    tap_.remove();
    ASSERT_TRUE(install());
    EXPECT_TRUE(becomesBound({u"F5"_s, u"Meta+T"_s}));
}

TEST_F(KGlobalAccelEventTapTest, UnbindsWhatWasLeftBehind) {
    plasma_->remember(u"of a program that is no more"_s);
    tap_.setWantedHotkeys({kF5});
    ASSERT_TRUE(install());
    EXPECT_TRUE(waitUntil([&] { return plasma_->actions().size() == 1; }));
    EXPECT_TRUE(becomesBound({u"F5"_s}));
}

TEST_F(KGlobalAccelEventTapTest, IsNoneWithoutPlasma) {
    plasma_.reset();
    tap_.setWantedHotkeys({kCommandT});
    EXPECT_FALSE(install());
    EXPECT_EQ(tap_.problem(), TapProblem::WaylandSession);
    EXPECT_FALSE(tap_.setRecording(true));
    EXPECT_THAT(tap_.refusedHotkeys(), IsEmpty());
}

TEST_F(KGlobalAccelEventTapTest, IsOneInASession) {
    ASSERT_TRUE(install());
    KGlobalAccelEventTap other(settings());
    EXPECT_FALSE(other.install({}));
    EXPECT_EQ(other.problem(), TapProblem::OtherInstance);
    tap_.remove();
    EXPECT_TRUE(other.install({}));
}

TEST_F(KGlobalAccelEventTapTest, MayBeRemovedByWhoIsToldOfAPress) {
    tap_.setWantedHotkeys({kCommandT});
    int presses = 0;
    ASSERT_TRUE(tap_.install({.hotkeyPressed = [&](const Hotkey &) {
        ++presses;
        tap_.remove();
    }}));
    ASSERT_TRUE(becomesBound({u"Meta+T"_s}));
    plasma_->press(u"Meta+T"_s);
    EXPECT_TRUE(waitUntil([&] { return presses == 1; }));
}

}  // namespace
}  // namespace kestrelbay::plasma
