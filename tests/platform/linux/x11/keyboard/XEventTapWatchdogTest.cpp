#include <ctime>
#include <thread>

#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

#include <glib.h>

#include "fakes/FakeSystemLog.h"
#include "hotkeys/ShortcutManager.h"
#include "platform/linux/x11/keyboard/XEventTapFixture.h"

namespace kestrelbay::x11 {
namespace {

using kestrelbay::testing::waitUntil;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A main thread that runs no event loop until the condition holds, as during a write that
/// the disk takes its time for. False when it never did.
bool blockUntil(const std::function<bool()> &condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        constexpr timespec kPause{0, 1'000'000};
        ::nanosleep(&kPause, nullptr);
    }
    return true;
}

/// Longer than the watchdog takes to find that there is nothing to watch.
constexpr std::chrono::milliseconds kUntilAtRest{500};

class XEventTapWatchdogTest : public XEventTapFixture {
protected:
    XEventTapWatchdogTest() { patience_ = XEventTap::Settings().patience; }

    bool cameBack() {
        return waitUntil([this] { return timeouts_ > 0; });
    }
};

TEST_F(XEventTapWatchdogTest, GivesKeysToTheProgramInFrontWhileTheMainThreadIsBlocked) {
    install();
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    keys_->chord({xkey::kA});
    EXPECT_TRUE(blockUntil([&] { return pressesInFront(xkey::kA) == 1; }));
    // From now on hotkeys pass at once.
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    keys_->chord({xkey::kS});
    EXPECT_THAT(front_->pressedKeys(), ElementsAre(xkey::kLeftSuper, xkey::kT, xkey::kA,
                                                   xkey::kLeftSuper, xkey::kT, xkey::kS));
    EXPECT_TRUE(cameBack());
    pressMarker();
    EXPECT_THAT(keyDowns_, IsEmpty());
    EXPECT_EQ(timeouts_, 1);

    keys_->chord({xkey::kLeftSuper, xkey::kT});
    ASSERT_TRUE(cameKeyDowns(1));
    pressMarker();
    EXPECT_EQ(pressesInFront(xkey::kT), 2);
    EXPECT_EQ(timeouts_, 1);
    EXPECT_TRUE(cameModifierReleases());
}

TEST_F(XEventTapWatchdogTest, DoesSoAgainTheNextTime) {
    install();
    for (int time = 1; time <= 2; ++time) {
        keys_->chord({xkey::kLeftSuper, xkey::kT});
        EXPECT_TRUE(blockUntil([&] { return pressesInFront(xkey::kT) == time; }));
        EXPECT_TRUE(waitUntil([&] { return timeouts_ == time; }));
    }
    EXPECT_THAT(keyDowns_, IsEmpty());
}

TEST_F(XEventTapWatchdogTest, DoesNotWaitForAHandlerThatIsBlocked) {
    install();
    onKeyDown_ = [this] {
        EXPECT_TRUE(blockUntil([&] { return pressesInFront(xkey::kA) == 1; }));
        return EventVerdict::Swallow;
    };
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    keys_->chord({xkey::kA});
    EXPECT_TRUE(cameBack());
    EXPECT_EQ(keyDowns_.size(), 1U);
    EXPECT_EQ(pressesInFront(xkey::kT), 1);

    onKeyDown_ = nullptr;
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    ASSERT_TRUE(cameKeyDowns(2));
    pressMarker();
    EXPECT_EQ(pressesInFront(xkey::kT), 1);
    EXPECT_EQ(timeouts_, 1);
}

TEST_F(XEventTapWatchdogTest, DoesNotTakeTheRepeatsOfAKeyThatItPassedForPresses) {
    repeatKeysFast();
    install();
    keys_->press(xkey::kLeftSuper);
    keys_->press(xkey::kT);
    EXPECT_TRUE(blockUntil([&] { return pressesInFront(xkey::kT) > 5; }));
    EXPECT_TRUE(cameBack());
    const auto before = pressesInFront(xkey::kT);
    EXPECT_TRUE(waitUntil([&] { return pressesInFront(xkey::kT) > before + 5; }));
    keys_->release(xkey::kT);
    keys_->release(xkey::kLeftSuper);
    pressMarker();
    EXPECT_THAT(keyDowns_, IsEmpty());
}

TEST_F(XEventTapWatchdogTest, LeavesTheKeysToAMainThreadThatIsBlockedWithoutAPress) {
    install();
    const auto end = std::chrono::steady_clock::now() + 2 * patience_;
    EXPECT_TRUE(blockUntil([&] {
        keys_->chord({xkey::kLeftSuper, xkey::kA});
        return std::chrono::steady_clock::now() > end;
    }));
    pressMarker();
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(1));
    EXPECT_EQ(timeouts_, 0);
    EXPECT_TRUE(cameModifierReleases());
}

// What wakes the main loop would wake the watchdog, too, at each press.
TEST_F(XEventTapWatchdogTest, LeavesTheKeysToAMainLoopThatSleeps) {
    patience_ = std::chrono::milliseconds(100);
    tap_ = makeTap();
    install();
    pressMarker();
    std::thread presses([this] {
        std::this_thread::sleep_for(kUntilAtRest);
        keys_->chord({xkey::kLeftSuper, xkey::kT});
    });
    const std::chrono::milliseconds time = kUntilAtRest + 5 * patience_;
    g_main_context_get_poll_func(nullptr)(nullptr, 0, static_cast<gint>(time.count()));
    presses.join();
    EXPECT_TRUE(cameKeyDowns(1));
    pressMarker();
    EXPECT_EQ(pressesInFront(xkey::kT), 0);
    EXPECT_EQ(timeouts_, 0);
}

TEST_F(XEventTapWatchdogTest, SeesThatAMainLoopThatHasSleptHangs) {
    install();
    pressMarker();
    QEventLoop loop;
    QTimer::singleShot(kUntilAtRest, &loop, [&] {
        keys_->chord({xkey::kLeftSuper, xkey::kT});
        EXPECT_TRUE(blockUntil([&] { return pressesInFront(xkey::kT) == 1; }));
        loop.quit();
    });
    loop.exec();
    EXPECT_TRUE(cameBack());
    EXPECT_THAT(keyDowns_, IsEmpty());
}

TEST_F(XEventTapWatchdogTest, EndsRecordingWhileTheMainThreadIsBlocked) {
    install({});
    ASSERT_TRUE(tap_->setRecording(true));
    EXPECT_TRUE(blockUntil([&] {
        keys_->chord({xkey::kA});
        return pressesInFront(xkey::kA) > 0;
    }));
    EXPECT_TRUE(cameBack());
    pressMarker();
    EXPECT_TRUE(tap_->setRecording(true));
    const auto before = pressesInFront(xkey::kA);
    const std::size_t recorded = keyDowns_.size();
    keys_->chord({xkey::kA});
    EXPECT_TRUE(cameKeyDowns(recorded + 1));
    EXPECT_EQ(pressesInFront(xkey::kA), before);
}

TEST_F(XEventTapWatchdogTest, TheManagerSaysSoInTheLogAndGoesOn) {
    const QTemporaryDir folder;
    FakeSystemLog log;
    int fired = 0;
    ShortcutManager manager(folder.path(), *tap_, log,
                            {.ruleFired = [&fired](const ShortcutRule &) { ++fired; }});
    manager.addRule({.appPath = QStringLiteral("/usr/share/applications/x.desktop"),
                     .keyCode = kLeftCommandT.keyCode,
                     .modifierFlags = kLeftCommandT.modifierFlags});
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(blockUntil([&] { return pressesInFront(xkey::kT) == 1; }));
    EXPECT_TRUE(waitUntil([&] { return !log.lines().isEmpty(); }));
    EXPECT_EQ(log.lines(), QStringList(QStringLiteral(
                               "KestrelBay [WARN] EventTap disabled: TIMEOUT — main thread may "
                               "have been blocked")));
    EXPECT_EQ(fired, 0);
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(waitUntil([&] { return fired == 1; }));
}

}  // namespace
}  // namespace kestrelbay::x11
