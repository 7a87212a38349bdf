#include "desktop/scenario/Scenes.h"

namespace kestrelbay::desktop {

namespace {

using namespace std::chrono_literals;

/// A program of Debian's that begins without KestrelBay is in view under its name, used as others
/// are, and ended.
void showsProgram(WaylandStage &stage, const Cast::Role &role) {
    WindowsView &view = stage.view();
    const auto windows = [&] { return stage.windowsOf(role.window); };
    stage.story().step({
        .done = QStringLiteral("started %1").arg(QLatin1String(role.program)),
        .expected = QStringLiteral("in front, with the keyboard and a process"),
        .act = [&] { stage.desktop().start(QLatin1String(role.program)); },
        .seen =
            [&] {
                return stage.isInFront(role.window) && view.hasFocus(windows().front()) &&
                       view.processId(windows().front()) > 0;
            },
        .saw = [&] { return stage.frontInWords(); },
    });
    const StageBase::Window window = stage.windowOf(role.window);
    stage.story().step({
        .done = QStringLiteral("minimised it"),
        .expected = QStringLiteral("it is out of view"),
        .act = [&] { view.minimise(window); },
        .seen = [&] { return view.isMinimised(window) && !view.isShown(window); },
        .saw = [&] { return stage.frontInWords(); },
    });
    stage.closeAll(role.window);
}

}  // namespace

void sceneWaylandSession(WaylandStage &stage) {
    const Chord typed = plain(keys::kH);
    const Chord users = leftCommand(WaylandStage::kUsersKey);
    stage.bringFrontProgram();
    stage.press(typed, {.expected = QStringLiteral("the program in front gets it"),
                        .seen = [&] { return stage.front().pressesOf(keys::kH.xKeycode) == 1; },
                        .saw = [&] { return stage.frontInWords(); }});
    stage.press(users, {.expected = QStringLiteral("the user's own binding runs, once"),
                        .seen = [&] { return stage.usersPresses() == 1; },
                        .saw =
                            [&] {
                                return QStringLiteral("%1 run, %2 press at the program in front")
                                    .arg(stage.usersPresses())
                                    .arg(stage.front().pressesOf(WaylandStage::kUsersKey.xKeycode));
                            },
                        .objection =
                            [&] {
                                return stage.front().pressesOf(WaylandStage::kUsersKey.xKeycode) ==
                                               0
                                           ? QString()
                                           : QStringLiteral("the program in front saw the key");
                            }});
    showsProgram(stage, stage.cast().terminal);
    showsProgram(stage, stage.cast().otherTerminal);
    showsProgram(stage, stage.cast().editor);
    showsProgram(stage, stage.cast().files);
    stage.screenshot(QStringLiteral("session"));
}

void sceneWaylandStart(WaylandStage &stage) {
    const auto saw = [&] {
        return stage.hasHotkeys() ? QStringLiteral("a hotkey") : QStringLiteral("none");
    };
    stage.story().step({
        .done = QStringLiteral("the desktop as it is"),
        .expected = QStringLiteral("the hotkeys to come reach the program in front"),
        .act = [] {},
        .seen = [&] { return !stage.hasHotkeys(); },
        .saw = saw,
    });
    stage.story().step({
        .done = QStringLiteral("started KestrelBay"),
        .expected = QStringLiteral("it has its hotkeys"),
        .act = [&] { stage.startProgram(); },
        .seen = [&] { return stage.hasHotkeys(); },
        .saw = saw,
    });
    stage.keepLog(QStringLiteral("kestrelbay-start"));

    const Chord users = leftCommand(WaylandStage::kUsersKey);
    const QString taken = QStringLiteral("⌘T");
    const QStringList warning{QStringLiteral("KestrelBay [WARN]"), taken,
                              QLatin1String(WaylandStage::kUsersName)};
    stage.story().step({
        .done = QStringLiteral("the user has bound %1 to something else").arg(users.text),
        .expected = QStringLiteral("a warning names the hotkey and its application"),
        .act = [] {},
        .seen = [&] { return stage.program().line(warning).has_value(); },
        .saw =
            [&] { return stage.program().line(warning).value_or(QStringLiteral("no such line")); },
    });
    const QString report = stage.startAgain({QStringLiteral("--diagnose")}).output;
    const QString held = QStringLiteral("Hotkeys held by other programs: ") + taken;
    stage.story().step({
        .done = QStringLiteral("kestrelbay --diagnose"),
        .expected = u'“' + held + u'”',
        .act = [] {},
        .seen = [&] { return report.contains(held); },
        .saw =
            [&] {
                return report.contains(held) ? QStringLiteral("just that")
                                             : QStringLiteral("other lines");
            },
        .timeout = 0s,
    });
    const int before = stage.usersPresses();
    const int markers = stage.markers();
    const auto started = [&] {
        return stage.desktop()
            .processes()
            .withArgument(QLatin1String(WaylandStage::kUsersArgument))
            .size();
    };
    stage.story().step({
        .done = Stage::told(users) + QStringLiteral(", then the marker's key"),
        .expected = QStringLiteral("the user's own binding runs, and KestrelBay the second only"),
        .act =
            [&] {
                stage.press(users);
                stage.press(leftCommand(scenario::kMarker));
            },
        .seen =
            [&] { return stage.usersPresses() == before + 1 && stage.markers() == markers + 1; },
        .saw =
            [&] {
                return QStringLiteral("%1 run, %2 marker, %3 by the first key")
                    .arg(stage.usersPresses() - before)
                    .arg(stage.markers() - markers)
                    .arg(started());
            },
        .objection =
            [&] { return started() == 0 ? QString() : QStringLiteral("both had the first"); },
    });
}

void sceneWaylandOneSide(WaylandStage &stage) {
    const Chord right = rightCommand(WaylandStage::kOneSidedKey);
    for (const Chord &chord : {leftCommand(WaylandStage::kOneSidedKey), right}) {
        const std::uint8_t keycode = chord.keycodes.back();
        stage.bringFrontProgram();
        const int markers = stage.markers();
        stage.story().step({
            .done = Stage::told(chord) + QStringLiteral(", then the marker's key"),
            .expected = QStringLiteral("neither side fires, the program in front gets the key"),
            .act =
                [&] {
                    stage.press(chord);
                    stage.press(leftCommand(scenario::kMarker));
                },
            .seen = [&] { return stage.markers() == markers + 1; },
            .saw =
                [&] {
                    return QStringLiteral("%1 press at the program in front")
                        .arg(stage.front().pressesOf(keycode));
                },
            .objection =
                [&] {
                    if (stage.front().pressesOf(keycode) != 1)
                        return QStringLiteral("it should have had one press");
                    return stage.desktop()
                                   .processes()
                                   .withArgument(QLatin1String(WaylandStage::kOneSidedArgument))
                                   .empty()
                               ? QString()
                               : QStringLiteral("the rule has fired");
                },
        });
    }
}

void sceneWaylandLocks(WaylandStage &stage) {
    const Chord numLock{QStringLiteral("Num Lock"), {testing::xkey::kNumLock}};
    const Chord capsLock{QStringLiteral("Caps Lock"), {testing::xkey::kCapsLock}};
    const auto fires = [&](const QString &expected) {
        const int before = stage.markers();
        stage.press(
            leftCommand(scenario::kMarker),
            {.expected = expected,
             .seen = [&] { return stage.markers() == before + 1; },
             .saw =
                 [&] { return QStringLiteral("%1 new process").arg(stage.markers() - before); }});
    };
    stage.press(numLock);
    fires(QStringLiteral("with Num Lock on it fires"));
    stage.press(capsLock);
    fires(QStringLiteral("with both locks on it fires"));
    stage.press(numLock);
    fires(QStringLiteral("with Caps Lock on it fires"));
    stage.press(capsLock);
}

}  // namespace kestrelbay::desktop
