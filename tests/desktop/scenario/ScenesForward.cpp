#include "desktop/scenario/Scenes.h"

#include <array>

#include "support/Poll.h"

namespace kestrelbay::desktop {

void sceneLaunchAndForward(StageBase &stage) {
    const Chord hotkey = leftCommand(scenario::kTerminal);
    WindowsView &view = stage.view();
    const auto inFront = [&] { return stage.isInFront(stage.cast().terminal.window); };
    const auto front = [&] { return stage.frontInWords(); };
    const auto count = [&] { return stage.windowsOf(stage.cast().terminal.window).size(); };
    const auto onlyOne = [&] {
        return count() == 1 ? QString() : QStringLiteral("there are %1 terminals").arg(count());
    };

    stage.bringFrontProgram();
    stage.press(hotkey, {.expected = QStringLiteral("not running: the terminal is launched"),
                         .seen = inFront,
                         .saw = front,
                         .objection = onlyOne});
    const StageBase::Window terminal = stage.windowOf(stage.cast().terminal.window);
    stage.screenshot(QStringLiteral("launched"));

    const int markers = stage.markers();
    stage.story().step({
        .done = Stage::told(hotkey) + QStringLiteral(" and the marker's key"),
        .expected = QStringLiteral("keep open: it stays in front"),
        .act =
            [&] {
                stage.press(hotkey);
                stage.press(leftCommand(scenario::kMarker));
            },
        .seen = [&] { return stage.markers() == markers + 1 && view.isInFront(terminal); },
        .saw = front,
        .objection = onlyOne,
    });

    const auto forward = [&](const QString &expected) {
        stage.press(hotkey, {.expected = expected,
                             .seen = [&] { return view.isInFront(terminal); },
                             .saw =
                                 [&] {
                                     return QStringLiteral("%1, workspace %2")
                                         .arg(front())
                                         .arg(view.currentDesktop() + 1);
                                 },
                             .objection = onlyOne});
    };
    stage.bringFrontProgram();
    forward(QStringLiteral("from behind to the front"));

    stage.bringFrontProgram();
    stage.story().step({
        .done = QStringLiteral("asked the window manager to minimise the terminal"),
        .expected = QStringLiteral("it is minimised"),
        .act = [&] { view.minimise(terminal); },
        .seen = [&] { return view.isMinimised(terminal); },
        .saw = front,
        .needs = Ability::Minimises,
    });
    if (stage.can(Ability::Minimises))
        forward(QStringLiteral("from minimised to the front"));

    stage.bringFrontProgram();
    const std::uint32_t here = view.currentDesktop();
    stage.prepare(
        QStringLiteral("the terminal on another workspace"),
        [&] { view.moveToDesktop(terminal, here + 1); },
        [&] { return view.desktopOf(terminal) == here + 1; });
    forward(QStringLiteral("from another workspace to the front"));
    stage.prepare(
        QStringLiteral("the first workspace"),
        [&] {
            view.moveToDesktop(terminal, here);
            view.showDesktop(here);
        },
        [&] { return view.currentDesktop() == here && view.desktopOf(terminal) == here; });
}

void sceneWithoutAGap(StageBase &stage) {
    constexpr int kPairs = 100;
    struct Target {
        Chord hotkey;
        const char *windowClass;
    };
    const std::array targets{
        Target{leftCommand(scenario::kTerminal), stage.cast().terminal.window},
        Target{leftCommand(scenario::kOtherTerminal), stage.cast().otherTerminal.window}};
    const auto isInFront = [&](const Target &target) {
        return stage.isInFront(target.windowClass);
    };
    for (const Target &target : targets)
        stage.prepare(
            QLatin1String(target.windowClass) + QStringLiteral(" runs"),
            [&] { stage.press(target.hotkey); }, [&] { return isInFront(target); });

    // When the marker's process is there as well, nothing of the two presses is still to come.
    int right = 0;
    const auto pressPairs = [&] {
        for (int i = 0; i < kPairs; ++i) {
            const Target &first = targets[static_cast<std::size_t>(i + 1) % 2];
            const Target &last = targets[static_cast<std::size_t>(i) % 2];
            const int markers = stage.markers();
            stage.bringFrontProgram();
            for (const Chord &chord : {first.hotkey, last.hotkey, leftCommand(scenario::kMarker)})
                stage.press(chord);
            if (!testing::waitUntil([&] { return stage.markers() == markers + 1; }) ||
                !testing::waitUntil([&] { return isInFront(last); }))
                return;
            ++right;
        }
    };
    stage.story().step({
        .done = QStringLiteral("pressed %1 and %2 %3 times, by turns one or the other last")
                    .arg(targets[0].hotkey.text, targets[1].hotkey.text)
                    .arg(kPairs),
        .expected = QStringLiteral("the one pressed last ends in front each time"),
        .act = pressPairs,
        .seen = [&] { return right == kPairs; },
        .saw =
            [&] {
                return QStringLiteral("%1 times in a row; %2").arg(right).arg(stage.frontInWords());
            },
        .timeout = std::chrono::milliseconds(0),
    });
    stage.closeAll(stage.cast().otherTerminal.window);
}

}  // namespace kestrelbay::desktop
