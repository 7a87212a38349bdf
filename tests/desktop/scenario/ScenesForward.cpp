#include "desktop/scenario/Scenes.h"

namespace kestrelbay::desktop {

using State = WindowManagerView::State;

void sceneLaunchAndForward(Stage &stage) {
    const Chord hotkey = leftCommand(scenario::kTerminal);
    WindowManagerView &view = stage.view();
    const auto inFront = [&] { return stage.isInFront(scenario::kTerminalClass); };
    const auto front = [&] { return stage.frontInWords(); };
    const auto count = [&] { return stage.windowsOf(scenario::kTerminalClass).size(); };
    const auto onlyOne = [&] {
        return count() == 1 ? QString() : QStringLiteral("there are %1 terminals").arg(count());
    };

    stage.bringFrontProgram();
    stage.press(hotkey, {.expected = QStringLiteral("not running: the terminal is launched"),
                         .seen = inFront,
                         .saw = front,
                         .objection = onlyOne});
    const Stage::Window terminal = stage.windowOf(scenario::kTerminalClass);
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
                                     return QStringLiteral("%1, workspace %2 of %3")
                                         .arg(front())
                                         .arg(view.currentDesktop() + 1)
                                         .arg(view.desktopCount());
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
        .seen = [&] { return view.state(terminal) == State::Iconic; },
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

}  // namespace kestrelbay::desktop
