#include "desktop/scenario/Scenes.h"

#include <csignal>

namespace kestrelbay::desktop {

namespace {

/// KestrelBay, started again, has its hotkeys.
void startsAgain(WaylandStage &stage, const QString &done) {
    stage.story().step({
        .done = done,
        .expected = QStringLiteral("it has its hotkeys"),
        .act = [&] { stage.startProgram(); },
        .seen = [&] { return stage.hasHotkeys(); },
        .saw =
            [&] {
                return stage.hasHotkeys() ? QStringLiteral("a hotkey") : QStringLiteral("none");
            },
    });
}

/// After the signal the keys of the rules go to the program in front.
void givesKeysBack(WaylandStage &stage, int signal, const QString &expected,
                   const std::function<QString(PtyProcess &)> &objection) {
    PtyProcess &program = stage.program();
    stage.story().step({
        .done = QStringLiteral("signal %1").arg(signal),
        .expected = expected + QStringLiteral(", and the program in front gets the keys"),
        .act = [&] { program.sendSignal(signal); },
        .seen = [&] { return !program.isRunning() && !stage.hasHotkeys(); },
        .saw =
            [&] {
                return QStringLiteral("%1, %2 press at the program in front")
                    .arg(program.ending())
                    .arg(stage.front().pressesOf(scenario::kMarker.xKeycode));
            },
        .objection = [&] { return objection(program); },
    });
}

}  // namespace

void sceneWaylandKilled(WaylandStage &stage) {
    givesKeysBack(stage, SIGKILL, QStringLiteral("it is gone at once"),
                  [](PtyProcess &) { return QString(); });
    startsAgain(stage, QStringLiteral("started KestrelBay again"));
}

void sceneWaylandQuit(WaylandStage &stage) {
    givesKeysBack(stage, SIGTERM, QStringLiteral("a clean end"), [](PtyProcess &program) {
        return program.exitCode() == 0 ? QString() : QStringLiteral("the exit code is not 0");
    });
    stage.keepLog(QStringLiteral("kestrelbay"));
}

void sceneWaylandRestarted(WaylandStage &stage) {
    startsAgain(stage, QStringLiteral("started KestrelBay once more"));
    PtyProcess &program = stage.program();
    stage.story().step({
        .done = QStringLiteral("killed the compositor and started another one"),
        .expected = QStringLiteral("KestrelBay, whose display was in it, says so and ends"),
        .act = [&] { stage.restartCompositor(); },
        .seen = [&] { return !program.isRunning(); },
        .saw =
            [&] {
                return QStringLiteral("%1, “%2”")
                    .arg(program.ending(), program.lines().join(QStringLiteral(" ⏎ ")));
            },
        .objection =
            [&] {
                if (program.exitCode().value_or(0) == 0)
                    return QStringLiteral("that is no exit code of an error");
                return program.lines()
                                   .filter(QStringLiteral("The connection to the display is gone"))
                                   .size() == 1
                           ? QString()
                           : QStringLiteral("it did not say once that the display is gone");
            },
    });
    startsAgain(stage, QStringLiteral("started KestrelBay under it"));
    stage.endProgram();
}

}  // namespace kestrelbay::desktop
