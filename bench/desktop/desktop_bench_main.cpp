// KestrelBay on a whole desktop, beside sxhkd and beside what is possible at all.

#include <cstdint>
#include <cstdio>
#include <exception>
#include <optional>
#include <stdexcept>

#include "BusyProcessors.h"
#include "Contender.h"
#include "Eviction.h"
#include "IdleStates.h"
#include "Latency.h"
#include "PreferencesMemory.h"
#include "Samples.h"
#include "Start.h"
#include "TextTable.h"
#include "desktop/display/FrontWindow.h"
#include "support/Poll.h"

namespace {

using namespace kestrelbay::bench;
using namespace std::chrono_literals;
using kestrelbay::desktop::Desktop;
using kestrelbay::desktop::FrontWindow;
using kestrelbay::desktop::Processes;
using kestrelbay::testing::waitUntil;

const QStringList kParts{QStringLiteral("start"), QStringLiteral("preferences"),
                         QStringLiteral("presses"), QStringLiteral("idle")};

struct Options {
    QString program = QStringLiteral(KESTRELBAY_PROGRAM);
    QString windowManager = QStringLiteral("openbox");
    int trials = 200;
    int idleSeconds = 60;
    QString only;  ///< one part of the measurements; empty: all
};

std::optional<Options> parse(const QStringList &arguments) {
    Options options;
    for (qsizetype i = 0; i + 1 < arguments.size(); i += 2) {
        if (arguments[i] == u"--program")
            options.program = arguments[i + 1];
        else if (arguments[i] == u"--wm")
            options.windowManager = arguments[i + 1];
        else if (arguments[i] == u"--trials")
            options.trials = arguments[i + 1].toInt();
        else if (arguments[i] == u"--idle-seconds")
            options.idleSeconds = arguments[i + 1].toInt();
        else if (arguments[i] == u"--only" && kParts.contains(arguments[i + 1]))
            options.only = arguments[i + 1];
        else
            return std::nullopt;
    }
    if (arguments.size() % 2 != 0 || options.trials < 1 || options.idleSeconds < 0)
        return std::nullopt;
    return options;
}

QString number(double value, int digits = 2) {
    return QString::number(value, 'f', digits);
}

QString inKiB(std::optional<qint64> memory) {
    return memory ? QString::number(*memory) : QStringLiteral("?");
}

/// What other programs do meanwhile.
enum class Load { None, Full };

/// What the median and the 99th percentile may be, as multiples of the limit's.
struct Goal {
    double median;
    double p99;
};

class DesktopBench {
public:
    explicit DesktopBench(const Options &options)
        : options_(options),
          desktop_(options.windowManager),
          other_(desktop_.displayName()),
          target_(startTarget()),
          contenders_(makeContenders(desktop_, options.program, target_)) {}

    void run() {
        if (wants(u"start"))
            measureStart(desktop_, options_.program);
        startContenders();
        if (wants(u"preferences"))
            measurePreferencesMemory(desktop_, contenders_.front(), options_.program);
        if (wants(u"idle"))
            idle();
        if (wants(u"presses"))
            presses();
        if (wants(u"idle"))
            IdleStates(desktop_, contenders_.front(), std::chrono::seconds(options_.idleSeconds))
                .run();
    }

private:
    [[nodiscard]] bool wants(QStringView part) const {
        return options_.only.isEmpty() || options_.only == part;
    }

    void presses() {
        Latency latency(desktop_, target_, other_.id());
        const double median = measure(latency, Load::None, {.median = 1.15, .p99 = 1.4});
        (void)measure(latency, Load::Full, {.median = 1.15, .p99 = 1.4});
        firstPress(latency, median);
        fillDesktop();
        (void)measure(latency, Load::None, {.median = 1.2, .p99 = 1.4});
        (void)measure(latency, Load::Full, {.median = 1.2, .p99 = 1.4});
        memory();
    }

    std::size_t windowCount() { return desktop_.view().stacking().size(); }

    xcb_window_t startTarget() {
        desktop_.start(QStringLiteral("xterm"));
        if (!waitUntil([&] { return windowCount() == 2; }))
            throw std::runtime_error("there is no target window");
        return desktop_.view().windowsOf(QStringLiteral("XTerm")).at(0);
    }

    void startContenders() {
        for (Contender &contender : contenders_) {
            contender.start(desktop_);
            contender.settle();
        }
    }

    void idle() {
        std::vector<qint64> before;
        for (const Contender &contender : contenders_)
            before.push_back(Processes::wakeUps(contender.processId()).value_or(0));
        const auto end =
            std::chrono::steady_clock::now() + std::chrono::seconds(options_.idleSeconds);
        (void)waitUntil([&] { return std::chrono::steady_clock::now() > end; },
                        std::chrono::seconds(options_.idleSeconds + 1));
        TextTable table(
            {QStringLiteral("program"), QStringLiteral("wake-ups"), QStringLiteral("goal")});
        for (std::size_t i = 0; i < contenders_.size(); ++i) {
            contenders_[i].expectRunning();
            const qint64 now = Processes::wakeUps(contenders_[i].processId()).value_or(0);
            table.add({contenders_[i].name(), QString::number(now - before[i]),
                       i == 0 ? QStringLiteral("0") : QString()});
        }
        table.print(
            QStringLiteral("Wake-ups in %1 s in which nothing happens").arg(options_.idleSeconds));
    }

    /// Gives the median of KestrelBay.
    double measure(Latency &latency, Load load, Goal goal) {
        std::optional<BusyProcessors> busy;
        if (load == Load::Full)
            busy.emplace();
        const std::size_t windows = windowCount();
        const std::vector<Samples> samples = latency.run(
            contenders_, options_.trials, busy ? Latency::kQuietUnderLoad : Latency::kQuiet);
        const Samples &limit = samples.back();
        TextTable table(
            {QStringLiteral("program"), QStringLiteral("median ms"), QStringLiteral("p90 ms"),
             QStringLiteral("p99 ms"), QStringLiteral("median/limit"), QStringLiteral("goal"),
             QStringLiteral("p99/limit"), QStringLiteral("goal"), QStringLiteral("lost")});
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const auto bound = [&](double value) {
                return i == 0 ? QStringLiteral("≤ ") + number(value) : QString();
            };
            table.add({contenders_[i].name(), number(samples[i].median()),
                       number(samples[i].percentile(90)), number(samples[i].percentile(99)),
                       number(samples[i].median() / limit.median()), bound(goal.median),
                       number(samples[i].percentile(99) / limit.percentile(99)), bound(goal.p99),
                       QString::number(samples[i].lost())});
        }
        table.print(QStringLiteral("From key press to the target being active, %1 windows, %2%3, "
                                   "%4 trials each, by turns")
                        .arg(windows)
                        .arg(options_.windowManager,
                             busy ? QStringLiteral(", all processors kept busy") : QString())
                        .arg(options_.trials));
        return samples.front().median();
    }

    /// The first press after the program has slept for hours.
    void firstPress(Latency &latency, double median) {
        constexpr int kRounds = 10;
        constexpr double kMost = 3;
        Contender &kestrelbay = contenders_.front();
        Samples times;
        Resident before;
        Resident after;
        for (int round = 0; round < kRounds; ++round) {
            kestrelbay.settle();
            before = resident(kestrelbay.processId());
            pageOut(kestrelbay.processId());
            after = resident(kestrelbay.processId());
            if (const std::optional<double> time = latency.trial(kestrelbay))
                times.add(*time);
            else
                times.addLost();
        }
        TextTable table({QStringLiteral("median ms"), QStringLiteral("most ms"),
                         QStringLiteral("median/usual median"), QStringLiteral("goal"),
                         QStringLiteral("lost"), QStringLiteral("files KiB"),
                         QStringLiteral("other KiB")});
        const auto change = [](std::int64_t from, std::int64_t to) {
            return QStringLiteral("%1 → %2").arg(from).arg(to);
        };
        table.add({number(times.median()), number(times.percentile(100)),
                   number(times.median() / median), QStringLiteral("≤ ") + number(kMost),
                   QString::number(times.lost()), change(before.files, after.files),
                   change(before.anonymous, after.anonymous)});
        table.print(QStringLiteral("First press of KestrelBay after its memory was paged out, %1 "
                                   "rounds; what was resident before and after")
                        .arg(kRounds));
    }

    /// Up to 200 windows of 14 programs.
    void fillDesktop() {
        constexpr int kPrograms = 12;
        constexpr int kWindowsOfEach = 16;
        constexpr std::size_t kAll = 200;
        const auto startAndWait = [&](const QString &program, const QStringList &arguments,
                                      std::size_t more) {
            const std::size_t wanted = windowCount() + more;
            desktop_.start(program, arguments);
            if (!waitUntil([&] { return windowCount() == wanted; }, 20s))
                throw std::runtime_error("the desktop did not fill");
        };
        for (const char *folder : {"a", "b", "c"}) {
            const QString path = desktop_.home().path(QLatin1String(folder));
            kestrelbay::desktop::HomeFolder::write(path + QStringLiteral("/note.txt"), "A note.\n");
            startAndWait(QStringLiteral("thunar"), {path}, 1);
            startAndWait(QStringLiteral("mousepad"),
                         {QStringLiteral("-o"), QStringLiteral("window"),
                          path + QStringLiteral("/note.txt")},
                         1);
        }
        for (int i = 1; i <= kPrograms; ++i)
            startAndWait(QStringLiteral(CROWD_PROGRAM),
                         {QString::number(kWindowsOfEach), QStringLiteral("Crowd%1").arg(i)},
                         kWindowsOfEach);
        if (windowCount() != kAll)
            throw std::runtime_error("there are not 200 windows");
        for (Contender &contender : contenders_)
            contender.settle();
    }

    void memory() {
        TextTable table({QStringLiteral("program"), QStringLiteral("private KiB")});
        for (Contender &contender : contenders_) {
            contender.settle();
            table.add({contender.name(), inKiB(Processes::privateMemory(contender.processId()))});
        }
        table.print(QStringLiteral("Memory after all presses"));
    }

    Options options_;
    Desktop desktop_;
    FrontWindow other_;
    xcb_window_t target_;
    std::vector<Contender> contenders_;
};

}  // namespace

int main(int argc, char *argv[]) {
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments += QString::fromLocal8Bit(argv[i]);
    const auto options = parse(arguments);
    if (!options) {
        std::fputs(
            "usage: desktop_bench [--program PATH] [--wm openbox|xfwm4|metacity] [--trials N] "
            "[--idle-seconds N] [--only start|preferences|presses|idle]\n",
            stderr);
        return 2;
    }
    try {
        DesktopBench(*options).run();
    } catch (const std::exception &error) {
        std::fprintf(stderr, "desktop_bench: %s\n", error.what());
        return 1;
    }
    return 0;
}
