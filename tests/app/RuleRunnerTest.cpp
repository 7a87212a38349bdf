#include "app/RuleRunner.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include <QIconEngine>
#include <QImage>
#include <QPainter>

#include "fakes/FakeApplicationCatalog.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeSystemLog.h"
#include "fakes/FakeSystemSounds.h"
#include "fakes/FakeTimers.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualDispatchQueue.h"
#include "fixtures/QtPrinters.h"
#include "launcher/AppLauncher.h"
#include "model/ShortcutRule.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

/// Nobody hears that it is not at once.
constexpr std::chrono::milliseconds kSoonAfter{10};

constexpr QRgb kIconColor = qRgb(20, 140, 60);

/// An icon of one colour; remembers the thread that drew it and the size asked for.
class PlainIconEngine final : public QIconEngine {
public:
    struct Drawn {
        std::atomic<int> count = 0;
        std::thread::id thread;
        QSize size;
    };

    explicit PlainIconEngine(Drawn &drawn) : drawn_(drawn) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode, QIcon::State) override {
        ++drawn_.count;
        drawn_.thread = std::this_thread::get_id();
        drawn_.size = rect.size();
        painter->fillRect(rect, QColor(kIconColor));
    }
    [[nodiscard]] QIconEngine *clone() const override { return new PlainIconEngine(drawn_); }

private:
    Drawn &drawn_;
};

class RuleRunnerTest : public testing::Test {
protected:
    RuleRunnerTest() { catalog_.add(rule_.appPath, u"Notes"_s, icon_); }

    [[nodiscard]] RuleRunner runner(bool withToast = true) {
        RuleRunner::ShowLaunchToast show;
        if (withToast)
            show = [this](const QImage &icon, LaunchToastDuration duration) {
                toasts_.emplace_back(icon.pixel(36, 36), duration);
            };
        return RuleRunner(
            {.launcher = launcher_,
             .workspace = workspace_,
             .catalog = catalog_,
             .defaults = defaults_,
             .sounds = sounds_,
             .log = log_,
             .clock = clock_,
             .timers = timers_,
             .mainQueue = mainQueue_,
             .launchQueue = launchQueue_,
             .showLaunchToast = show,
             .openedUnseen = [this](const QString &appPath) { unseen_.append(appPath); }});
    }
    void fireAndRunAll() {
        RuleRunner runner = this->runner();
        runner.ruleFired(rule_);
        runAll();
    }
    /// A press, and then its toast, go from one queue to the other and back.
    void runAll() {
        timers_.advance(kSoonAfter);
        for (int i = 0; i < 2; ++i) {
            mainQueue_.runAll();
            launchQueue_.runAll();
        }
        mainQueue_.runAll();
    }
    void launchTakes(std::chrono::milliseconds duration) {
        workspace_.setRequestHook([this, duration] { clock_.advance(duration); });
    }

    PlainIconEngine::Drawn drawn_;
    QIcon icon_{new PlainIconEngine(drawn_)};
    ShortcutRule rule_{.appName = u"Notes"_s, .appPath = u"/Applications/Notes.app"_s};
    FakeWorkspace workspace_;
    FakeSystemLog log_;
    FakeSystemSounds sounds_;
    FakeUserDefaults defaults_;
    FakeApplicationCatalog catalog_;
    FakeClock clock_;
    FakeTimers timers_;
    ManualDispatchQueue mainQueue_;
    ManualDispatchQueue launchQueue_;
    AppLauncher launcher_{workspace_, log_};
    std::vector<std::pair<QRgb, LaunchToastDuration>> toasts_;
    QStringList unseen_;
};

TEST_F(RuleRunnerTest, TellsOfWhatIsOpenedWhileTheDesktopKeepsWindowsToItself) {
    fireAndRunAll();
    EXPECT_EQ(unseen_, QStringList());
    workspace_.setSeesAllWindows(false);
    fireAndRunAll();
    EXPECT_EQ(unseen_, QStringList{rule_.appPath});
    // What is seen all the same is brought forward.
    workspace_.run(u"Notes"_s, rule_.appPath);
    fireAndRunAll();
    EXPECT_EQ(unseen_, QStringList{rule_.appPath});
}

TEST_F(RuleRunnerTest, FiringOnlyQueuesWork) {
    defaults_.setString(u"soundFeedbackName"_s, u"Pop"_s);
    RuleRunner runner = this->runner();
    runner.ruleFired(rule_);
    EXPECT_EQ(timers_.waitingCount(), 1U);
    EXPECT_EQ(launchQueue_.pendingCount(), 1U);
    EXPECT_EQ(sounds_.played(), QStringList());
    EXPECT_EQ(workspace_.requests().lines(), QStringList());
}

TEST_F(RuleRunnerTest, AsksAheadUnlessALaunchBeforeMayChangeTheAnswer) {
    RuleRunner runner = this->runner();
    runner.ruleFired(rule_);
    EXPECT_EQ(workspace_.askedAhead(), 1);
    runner.ruleFired(rule_);
    EXPECT_EQ(workspace_.askedAhead(), 1);
    launchQueue_.runAll();
    runner.ruleFired(rule_);
    EXPECT_EQ(workspace_.askedAhead(), 2);
    launchQueue_.runAll();
    // Nobody would take the answer.
    rule_.argumentKind = ArgumentKind::LaunchArgs;
    runner.ruleFired(rule_);
    EXPECT_EQ(workspace_.askedAhead(), 2);
}

TEST_F(RuleRunnerTest, SoundPlaysWithoutWaitingForTheLaunch) {
    defaults_.setString(u"soundFeedbackName"_s, u"Pop"_s);
    RuleRunner runner = this->runner();
    runner.ruleFired(rule_);
    timers_.advance(kSoonAfter);
    EXPECT_EQ(sounds_.played(), QStringList{u"Pop"_s});
    EXPECT_EQ(workspace_.requests().lines(), QStringList());
    launchQueue_.runAll();
    EXPECT_EQ(workspace_.requests().lines(), QStringList{u"open file:///Applications/Notes.app"_s});
}

TEST_F(RuleRunnerTest, SoundSettingIsReadWhenTheSoundPlays) {
    RuleRunner runner = this->runner();
    runner.ruleFired(rule_);
    defaults_.setString(u"soundFeedbackName"_s, u"Pop"_s);
    timers_.advance(kSoonAfter);
    EXPECT_EQ(sounds_.played(), QStringList{u"Pop"_s});
}

TEST_F(RuleRunnerTest, AbsentOrEmptySoundNamePlaysNothing) {
    fireAndRunAll();
    defaults_.setString(u"soundFeedbackName"_s, u""_s);
    fireAndRunAll();
    defaults_.storeNumber(u"soundFeedbackName"_s, 3);
    fireAndRunAll();
    EXPECT_EQ(sounds_.played(), QStringList());
}

TEST_F(RuleRunnerTest, LaunchWorksOnACopyOfTheRule) {
    auto rule = std::make_unique<ShortcutRule>(rule_);
    runner().ruleFired(*rule);
    rule->appPath = u"/elsewhere"_s;
    rule.reset();
    launchQueue_.runAll();
    EXPECT_EQ(workspace_.requests().lines(), QStringList{u"open file:///Applications/Notes.app"_s});
}

TEST_F(RuleRunnerTest, PressesTakeEffectInTheirOrderWhicheverThreadIsFirst) {
    const auto pass = [this] {
        RuleRunner runner = this->runner();
        runner.ruleFired(rule_);
        runner.ruleFired({.appPath = u"/Applications/Later.app"_s});
        std::thread first(launchQueue_.takeNext());
        std::thread second(launchQueue_.takeNext());
        first.join();
        second.join();
        return workspace_.requests().take();
    };
    for (int i = 0; i < 100; ++i)
        ASSERT_EQ(pass(), (QStringList{u"open file:///Applications/Notes.app"_s,
                                       u"open file:///Applications/Later.app"_s}))
            << i;
}

TEST_F(RuleRunnerTest, APressThatHangsHoldsUpNoneAndTakesNothingFromTheLaterOne) {
    const ShortcutRule hanging{.appPath = u"/Applications/Hanging.app"_s};
    workspace_.run(u"Notes"_s, rule_.appPath)->addWindow(u"A"_s);
    workspace_.run(u"Hanging"_s, hanging.appPath)->addWindow(u"B"_s)->isMinimized = true;
    RuleRunner runner = this->runner();
    runner.ruleFired(hanging);
    runner.ruleFired(rule_);
    const auto first = launchQueue_.takeNext();
    const auto second = launchQueue_.takeNext();
    // The window takes its time to come back, and the next press comes and goes.
    workspace_.newest().windows.front()->whenAsked = second;
    first();
    EXPECT_EQ(workspace_.requests().lines(), (QStringList{u"unminimize B"_s, u"activate Notes"_s}));
}

TEST_F(RuleRunnerTest, SlowLaunchIsLogged) {
    launchTakes(std::chrono::milliseconds(1234));
    fireAndRunAll();
    EXPECT_EQ(log_.lines(), QStringList{u"KestrelBay [WARN] AppLauncher.handle took 1.23s for "
                                        "/Applications/Notes.app"_s});
}

TEST_F(RuleRunnerTest, HalfASecondIsNotSlow) {
    launchTakes(std::chrono::milliseconds(500));
    fireAndRunAll();
    EXPECT_EQ(log_.lines(), QStringList());
}

TEST_F(RuleRunnerTest, JustOverHalfASecondIsSlow) {
    launchTakes(std::chrono::milliseconds(501));
    fireAndRunAll();
    EXPECT_EQ(log_.lines(), QStringList{u"KestrelBay [WARN] AppLauncher.handle took 0.50s for "
                                        "/Applications/Notes.app"_s});
}

TEST_F(RuleRunnerTest, PathWithPlaceholdersIsLoggedAsItIs) {
    rule_.appPath = u"/tmp/%1 %2"_s;
    launchTakes(std::chrono::seconds(2));
    fireAndRunAll();
    EXPECT_EQ(log_.lines(),
              QStringList{u"KestrelBay [WARN] AppLauncher.handle took 2.00s for /tmp/%1 %2"_s});
}

TEST_F(RuleRunnerTest, ToastIsQueuedBackAfterTheLaunch) {
    defaults_.setString(u"launchToastDuration"_s, u"medium"_s);
    runner().ruleFired(rule_);
    mainQueue_.runAll();
    EXPECT_TRUE(toasts_.empty());
    launchQueue_.runAll();
    EXPECT_TRUE(toasts_.empty());
    runAll();
    EXPECT_EQ(toasts_, (std::vector{std::pair{kIconColor, LaunchToastDuration::Medium}}));
    EXPECT_EQ(catalog_.listIconRequests(), QStringList{u"/Applications/Notes.app"_s});
}

TEST_F(RuleRunnerTest, IconIsDrawnWhereTheLaunchRunsAndNeverOnTheMainThread) {
    defaults_.setString(u"launchToastDuration"_s, u"short"_s);
    runner().ruleFired(rule_);
    launchQueue_.runAll();
    mainQueue_.runAll();
    std::thread worker([this] { launchQueue_.runAll(); });
    const std::thread::id workerId = worker.get_id();
    worker.join();
    EXPECT_EQ(drawn_.thread, workerId);
    EXPECT_EQ(drawn_.size, QSize(72, 72));
    mainQueue_.runAll();
    EXPECT_EQ(toasts_, (std::vector{std::pair{kIconColor, LaunchToastDuration::Short}}));
    EXPECT_EQ(drawn_.count, 1);
}

TEST_F(RuleRunnerTest, ApplicationWithoutAnyIconHasAnEmptyToast) {
    defaults_.setString(u"launchToastDuration"_s, u"short"_s);
    catalog_.add(rule_.appPath, u"Notes"_s);
    fireAndRunAll();
    EXPECT_EQ(toasts_, (std::vector{std::pair{QRgb(0), LaunchToastDuration::Short}}));
}

TEST_F(RuleRunnerTest, ToastSettingIsReadAfterTheLaunch) {
    runner().ruleFired(rule_);
    defaults_.setString(u"launchToastDuration"_s, u"short"_s);
    launchQueue_.runAll();
    defaults_.setString(u"launchToastDuration"_s, u"none"_s);
    runAll();
    EXPECT_EQ(toasts_.size(), 1U);
}

TEST_F(RuleRunnerTest, NoOrUnknownDurationShowsNoToast) {
    fireAndRunAll();
    for (const QString &text : {u"none"_s, u"Short"_s, u""_s}) {
        defaults_.setString(u"launchToastDuration"_s, text);
        fireAndRunAll();
    }
    EXPECT_TRUE(toasts_.empty());
    EXPECT_EQ(catalog_.listIconRequests(), QStringList());
}

TEST_F(RuleRunnerTest, WithoutAToastWindowNothingIsShown) {
    defaults_.setString(u"launchToastDuration"_s, u"long"_s);
    runner(false).ruleFired(rule_);
    runAll();
    EXPECT_TRUE(toasts_.empty());
}

}  // namespace

}  // namespace kestrelbay
