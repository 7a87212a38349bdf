#include "desktop/scenario/Scenes.h"

#include <csignal>

namespace kestrelbay::desktop {

namespace {

using namespace std::chrono_literals;

Key anotherClientsKey() {
    return scenario::kMarker;
}

void grab(XClient &client, const Key &key) {
    xcb_grab_key(client.get(), 0, client.root(), XCB_MOD_MASK_4, key.xKeycode, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    client.sync();
}

}  // namespace

void sceneStart(Stage &stage) {
    stage.story().step({
        .done = QStringLiteral("the desktop as it is"),
        .expected = QStringLiteral("nobody holds a hotkey of the rules to come"),
        .act = [] {},
        .seen = [&] { return stage.grabbedCount() == 0; },
        .saw = [&] { return QStringLiteral("%1 keys grabbed").arg(stage.grabbedCount()); },
    });
    // Another program was faster with one of the keys.
    std::optional<XClient> rival(stage.desktop().displayName());
    grab(*rival, anotherClientsKey());

    stage.story().step({
        .done = QStringLiteral("started KestrelBay"),
        .expected = QStringLiteral("its hotkeys are grabbed"),
        .act = [&] { stage.startProgram(); },
        .seen = [&] { return stage.grabbedCount() == stage.ruleCount(); },
        .saw =
            [&] {
                return QStringLiteral("%1 of %2 keys grabbed, one of them by another client")
                    .arg(stage.grabbedCount())
                    .arg(stage.ruleCount());
            },
    });
    PtyProcess &program = stage.program();
    const QStringList warning{QStringLiteral("KestrelBay [WARN]"),
                              leftCommand(anotherClientsKey()).text,
                              QLatin1String(scenario::kMarkerName)};
    stage.story().step({
        .done = QStringLiteral("another client holds %1").arg(warning[1]),
        .expected = QStringLiteral("a warning names the hotkey and its application"),
        .act = [] {},
        .seen = [&] { return program.line(warning).has_value(); },
        .saw =
            [&] {
                return program.line(warning).value_or(
                    QStringLiteral("only “%1”").arg(program.lines().join(QStringLiteral(" ⏎ "))));
            },
    });
    stage.story().step({
        .done = QStringLiteral("the other client lets go of %1").arg(warning[1]),
        .expected = QStringLiteral("KestrelBay asks again and gets it"),
        .act = [&] { rival.reset(); },
        .seen = [&] { return stage.isGrabbed(anotherClientsKey()); },
        .saw =
            [&] {
                return stage.isGrabbed(anotherClientsKey()) ? QStringLiteral("grabbed")
                                                            : QStringLiteral("free");
            },
        .timeout = 70s,
    });
    stage.press(leftCommand(anotherClientsKey()),
                {.expected = QStringLiteral("now it fires"),
                 .seen = [&] { return stage.markers() == 1; },
                 .saw = [&] { return QStringLiteral("%1 new process").arg(stage.markers()); }});
}

void sceneQuit(Stage &stage) {
    PtyProcess &program = stage.program();
    stage.story().step({
        .done = QStringLiteral("SIGTERM"),
        .expected = QStringLiteral("a clean end, every key given back"),
        .act = [&] { program.sendSignal(SIGTERM); },
        .seen = [&] { return !program.isRunning() && stage.grabbedCount() == 0; },
        .saw =
            [&] {
                return QStringLiteral("%1, %2 keys grabbed")
                    .arg(program.ending())
                    .arg(stage.grabbedCount());
            },
        .objection =
            [&] {
                return program.exitCode() == 0 ? QString()
                                               : QStringLiteral("the exit code is not 0");
            },
    });
    stage.keepLog(QStringLiteral("kestrelbay"));
}

}  // namespace kestrelbay::desktop
