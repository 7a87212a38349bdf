// KestrelBay in a Wayland session, beside the desktop's own binding that runs a program, and beside
// what is possible at all: the time from a key press to the target having the focus.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>

#include <QByteArray>
#include <QCoreApplication>
#include <QFileInfo>

#include "Samples.h"
#include "TextTable.h"
#include "session/BenchSession.h"
#include "session/GnomeBenchSession.h"
#include "session/KWinBenchSession.h"
#include "session/SwayBenchSession.h"
#include "support/Poll.h"

namespace {

using namespace kestrelbay::bench;
using namespace std::chrono_literals;
using kestrelbay::desktop::Chord;
using kestrelbay::desktop::Key;
using kestrelbay::desktop::Keyboard;
using kestrelbay::desktop::leftCommand;
using kestrelbay::desktop::WaylandStage;
using kestrelbay::testing::waitUntil;

constexpr double kGoal = 1.5;
constexpr auto kQuiet = 15ms;
constexpr auto kGiveUp = 5s;

struct Contender {
    QString name;
    Key key;
};

/// In milliseconds. No value when the target did not come forward.
std::optional<double> trial(BenchSession &session, const Chord &chord,
                            std::chrono::milliseconds giveUp = kGiveUp) {
    WaylandStage &stage = session.stage();
    stage.bringForward(stage.front().id());
    while (session.nextFocus(kQuiet)) {
    }
    Keyboard &keyboard = stage.desktop().keyboard();
    const std::uint8_t super = chord.keycodes.front();
    const std::uint8_t key = chord.keycodes.back();
    keyboard.press(super);
    const auto start = BenchSession::Clock::now();
    keyboard.press(key);
    std::optional<double> time;
    while (const std::optional<BenchSession::Focus> focus = session.nextFocus(giveUp)) {
        if (!focus->isTargets)
            continue;
        time = std::chrono::duration<double, std::milli>(focus->when - start).count();
        break;
    }
    keyboard.release(key);
    keyboard.release(super);
    return time;
}

void prepare(BenchSession &session) {
    WaylandStage &stage = session.stage();
    stage.startProgram();
    if (!waitUntil([&] { return stage.hasHotkeys(); }))
        throw std::runtime_error("KestrelBay has no hotkeys");
    const auto &terminal = stage.cast().terminal;
    stage.desktop().start(QLatin1String(terminal.program));
    if (!waitUntil([&] { return !stage.windowsOf(terminal.window).empty(); }))
        throw std::runtime_error("there is no target window");
    session.startOthers(stage.windowOf(terminal.window));
    for (const Key &key : {BenchSession::kOwnKey, BenchSession::kLimitsKey}) {
        if (!waitUntil([&] { return trial(session, leftCommand(key), 1s).has_value(); }))
            throw std::runtime_error("nobody has " + leftCommand(key).text.toStdString());
    }
}

void print(const QString &name, const std::vector<Contender> &contenders,
           const std::vector<Samples> &samples, int trials) {
    const auto number = [](double value) { return QString::number(value, 'f', 2); };
    const Samples &limit = samples.back();
    TextTable table({QStringLiteral("program"), QStringLiteral("median ms"),
                     QStringLiteral("p99 ms"), QStringLiteral("median/limit"),
                     QStringLiteral("goal"), QStringLiteral("lost")});
    for (std::size_t i = 0; i < samples.size(); ++i)
        table.add({contenders[i].name, number(samples[i].median()),
                   number(samples[i].percentile(99)), number(samples[i].median() / limit.median()),
                   i == 0 ? QStringLiteral("≤ ") + number(kGoal) : QString(),
                   QString::number(samples[i].lost())});
    table.print(QStringLiteral("From key press to the target having the focus, %1, %2 trials "
                               "each, by turns")
                    .arg(name)
                    .arg(trials));
}

void run(BenchSession &session, const QString &name, int trials) {
    prepare(session);
    const std::vector<Contender> contenders{
        {QStringLiteral("KestrelBay"), kestrelbay::desktop::scenario::kTerminal},
        {session.ownWay(), BenchSession::kOwnKey},
        {QStringLiteral("limit"), BenchSession::kLimitsKey}};
    const auto samples = byTurns(contenders.size(), trials, [&](std::size_t contender) {
        return trial(session, leftCommand(contenders[contender].key));
    });
    print(name, contenders, samples, trials);
}

std::unique_ptr<BenchSession> makeSession(const QString &name, const QString &program) {
    if (name == u"sway")
        return std::make_unique<SwayBenchSession>(program);
    if (name == u"kwin")
        return std::make_unique<KWinBenchSession>(program, KWinBenchSession::Windows::Protocol);
    if (name == u"kwin-script")
        return std::make_unique<KWinBenchSession>(program, KWinBenchSession::Windows::Script);
    if (name == u"gnome")
        return std::make_unique<GnomeBenchSession>(program);
    return nullptr;
}

}  // namespace

int main(int argc, char *argv[]) {
    // KWin's answers come by D-Bus.
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString name = arguments.value(1);
    const QString program = arguments.value(2, QStringLiteral(KESTRELBAY_PROGRAM));
    const int trials = arguments.value(3, QStringLiteral("200")).toInt();
    try {
        const auto session = makeSession(name, QFileInfo(program).absoluteFilePath());
        if (!session || arguments.size() > 4 || trials < 1) {
            std::fputs(
                "usage: desktop_bench_session sway|kwin|kwin-script|gnome [PROGRAM [TRIALS]]\n",
                stderr);
            return EXIT_FAILURE;
        }
        run(*session, name, trials);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "desktop_bench_session: %s\n", error.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
