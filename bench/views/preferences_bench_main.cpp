// How long the preferences take to come up, on a desktop of their own. Each figure is that of a
// process which has not opened a window before.

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QProcess>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

#include "app/AppDelegate.h"
#include "core/RulesBench.h"
#include "desktop/session/Desktop.h"
#include "fakes/FakePlatform.h"
#include "hotkeys/ShortcutManager.h"
#include "model/RuleFile.h"
#include "platform/Platform.h"
#include "preferences/window/PreferencesWindowController.h"
#include "settings/SettingsKeys.h"
#include "tasks/Timers.h"

namespace {

using namespace kestrelbay;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

/// Tells when a window has painted a frame.
class TimedApplication final : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override {
        if (event->type() == QEvent::Paint)
            isPainting_ = true;
        ++depth_;
        const bool result = QApplication::notify(receiver, event);
        // All widgets of a window are painted, and handed to the server, within one event of it.
        if (--depth_ == 0 && std::exchange(isPainting_, false))
            frames_.push_back(Clock::now());
        return result;
    }

    [[nodiscard]] Clock::time_point firstFrame() {
        while (frames_.empty())
            processEvents(QEventLoop::WaitForMoreEvents);
        return frames_.front();
    }
    /// Until nothing is left to do.
    void settle() {
        for (const Clock::time_point end = Clock::now() + 200ms; Clock::now() < end;)
            processEvents(QEventLoop::AllEvents, 50);
        frames_.clear();
    }

private:
    int depth_ = 0;
    bool isPainting_ = false;
    std::vector<Clock::time_point> frames_;
};

/// Prints the milliseconds of the first opening of this process, of the second, and of the first
/// after a rest.
int openPreferences(int argc, char **argv) {
    TimedApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const bool isOffscreen = QGuiApplication::platformName() == u"offscreen";
    std::unique_ptr<Platform> platform;
    if (isOffscreen) {
        // Nothing else of the system: it would have to work with windows that no server knows.
        auto fake = std::make_unique<FakePlatform>();
        fake->setApplicationSupportDirectory(qEnvironmentVariable("XDG_CONFIG_HOME"));
        write(fake->userDefaults(), settings::kOnboardingCompleted, true);
        platform = std::move(fake);
    } else {
        platform = makePlatform();
    }
    QtTimers timers;
    AppDelegate delegate(*platform, timers, AppDelegate::makeManager(*platform), false);
    delegate.applicationDidFinishLaunching();
    for (const bool isAfterRest : {false, false, true}) {
        if (isAfterRest)
            delegate.preferences()->forgetViews();
        application.settle();
        const Clock::time_point start = Clock::now();
        delegate.openPreferences();
        const std::chrono::duration<double, std::milli> time = application.firstFrame() - start;
        std::printf("%f\n", time.count());
        application.settle();
        delegate.preferences()->window()->close();
    }
    return EXIT_SUCCESS;
}

/// As openPreferences() prints them.
std::vector<double> timesOfNewProcess(const desktop::Desktop &desktop, const QString &platform) {
    QProcess process;
    QProcessEnvironment environment = desktop.environment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), platform);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--open")});
    if (!process.waitForFinished() || process.exitCode() != 0)
        throw std::runtime_error("the preferences did not open");
    std::vector<double> times;
    for (const QByteArray &line : process.readAllStandardOutput().trimmed().split('\n'))
        times.push_back(line.toDouble());
    return times;
}

void measure(const desktop::Desktop &desktop, const QString &platform, std::size_t rules,
             int goal) {
    constexpr int kProcesses = 7;
    const QString folder = QFileInfo(desktop.home().rulesPath()).path();
    if (!QDir().mkpath(folder) || !RuleFile(desktop.home().rulesPath()).save(manyRules(rules)))
        throw std::runtime_error("the rules cannot be written");
    std::vector<std::vector<double>> times(3);
    for (int i = 0; i < kProcesses; ++i) {
        const std::vector<double> of = timesOfNewProcess(desktop, platform);
        for (std::size_t opening = 0; opening < times.size(); ++opening)
            times[opening].push_back(of.at(opening));
    }
    std::printf("%-10s %5zu", qPrintable(platform), rules);
    for (std::vector<double> &each : times) {
        std::ranges::sort(each);
        std::printf(" %9.1f (%.1f)", each[kProcesses / 2], each.front());
    }
    std::printf("   goal %d\n", goal);
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char **argv) {
    if (argc > 1 && qstrcmp(argv[1], "--open") == 0)
        return openPreferences(argc, argv);
    const QCoreApplication application(argc, argv);
    try {
        const desktop::Desktop desktop(QStringLiteral("openbox"));
        desktop::HomeFolder::write(desktop.home().settingsPath(),
                                   R"({"onboardingCompleted": true, "appLanguage": "en"})");
        std::puts("From the wish to the first frame of the preferences, median (best), ms");
        std::puts("platform   rules  first in process   second   after a rest");
        for (const char *platform : {"xcb", "offscreen"}) {
            measure(desktop, QLatin1String(platform), 10, 80);
            measure(desktop, QLatin1String(platform), 1'000, 120);
        }
    } catch (const std::exception &error) {
        std::fprintf(stderr, "preferences_bench: %s\n", error.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
