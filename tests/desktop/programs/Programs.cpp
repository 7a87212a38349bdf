#include "desktop/programs/Programs.h"

#include <algorithm>

namespace kestrelbay::desktop {

namespace {

using namespace std::chrono_literals;
using Window = Stage::Window;

/// For the slowest, on a machine with much else to do.
constexpr auto kLongestStart = 60s;

}  // namespace

std::vector<RuleSpec> programRules(const HomeFolder &home) {
    std::vector<RuleSpec> rules;
    for (const OrdinaryProgram &program : kPrograms) {
        rules.push_back({.appName = QLatin1String(program.name),
                         .appPath = QStringLiteral("/usr/share/applications/%1.desktop")
                                        .arg(QLatin1String(program.entry)),
                         .key = program.key,
                         .repeatAction = QStringLiteral("toggleVisibility")});
    }
    rules.push_back({.appName = QLatin1String(scenario::kMarkerName),
                     .appPath = home.applicationPath(QStringLiteral("kestrel-arguments.desktop")),
                     .key = scenario::kMarker,
                     .argumentKind = QStringLiteral("launchArgs"),
                     .launchArguments = QLatin1String(scenario::kMarkerArgument)});
    return rules;
}

void showsOneProgram(Stage &stage, const OrdinaryProgram &program) {
    const Chord hotkey = leftCommand(program.key);
    WindowManagerView &view = stage.view();
    const auto front = [&] { return stage.frontInWords(); };
    const auto processes = [&] {
        const QString runs = QLatin1String(program.runs);
        const Processes &all = stage.desktop().processes();
        return (runs.startsWith(u'/') ? all.withArgument(runs) : all.named(runs)).size();
    };
    const std::size_t processesBefore = processes();
    const auto onlyOne = [&] {
        const std::size_t count = processes() - processesBefore;
        return count == 1 ? QString() : QStringLiteral("it runs %1 times").arg(count);
    };

    stage.bringFrontProgram();
    const std::vector<Window> before = view.stacking();
    Window window = XCB_NONE;
    stage.press(hotkey, {.expected = QStringLiteral("not running: it is launched"),
                         .seen =
                             [&] {
                                 window = view.active();
                                 return processes() > processesBefore &&
                                        std::ranges::find(before, window) == before.end() &&
                                        view.title(window).contains(QLatin1String(program.title)) &&
                                        view.isInFront(window);
                             },
                         .saw = front,
                         .objection = onlyOne,
                         .timeout = kLongestStart});
    stage.screenshot(QLatin1String(program.entry));

    const auto shown = [&] { return view.isInFront(window); };
    stage.bringFrontProgram();
    stage.press(hotkey, {.expected = QStringLiteral("from behind to the front"),
                         .seen = shown,
                         .saw = front,
                         .objection = onlyOne});
    stage.press(hotkey, {.expected = QStringLiteral("in front: ") + stage.hidingInWords(),
                         .seen = [&] { return stage.areHidden({window}); },
                         .saw = front,
                         .objection = onlyOne});
    stage.press(hotkey, {.expected = QStringLiteral("hidden: it shows again"),
                         .seen = shown,
                         .saw = front,
                         .objection = onlyOne});

    const int markers = stage.markers();
    stage.bringFrontProgram();
    stage.story().step({
        .done = Stage::told(hotkey) + QStringLiteral(" and the marker's key"),
        .expected = QStringLiteral("it comes forward and is not started again"),
        .act =
            [&] {
                stage.press(hotkey);
                stage.press(leftCommand(scenario::kMarker));
            },
        .seen = [&] { return stage.markers() == markers + 1 && shown(); },
        .saw = front,
        .objection = onlyOne,
    });
}

}  // namespace kestrelbay::desktop
