#include "desktop/scenario/Scenes.h"

#include <csignal>

namespace kestrelbay::desktop {

namespace {

using namespace std::chrono_literals;

/// A process that does not answer until its owner ends.
class Stopped {
public:
    explicit Stopped(pid_t process) : process_(process) {
        if (process_ < 1)
            throw NotPrepared(QStringLiteral("no process to stop"));
        ::kill(process_, SIGSTOP);
    }
    ~Stopped() { ::kill(process_, SIGCONT); }
    Stopped(const Stopped &) = delete;
    Stopped &operator=(const Stopped &) = delete;

private:
    pid_t process_;
};

constexpr auto kPromptly = 2s;

/// Hotkeys are in place before the rest of the program is there.
bool isOnSessionBus(Stage &stage) {
    testing::ChildProcess call(
        QStringLiteral("gdbus"),
        {QStringLiteral("call"), QStringLiteral("--session"), QStringLiteral("--dest"),
         QStringLiteral("org.freedesktop.DBus"), QStringLiteral("--object-path"),
         QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("--method"),
         QStringLiteral("org.freedesktop.DBus.NameHasOwner"),
         QStringLiteral("org.kestrelbay.KestrelBay")},
        stage.desktop().environment());
    return call.waitForExit() && call.output().contains("true");
}

/// A window of KestrelBay; none while it shows none.
WindowManagerView::Window ownWindow(Stage &stage) {
    for (const WindowManagerView::Window window : stage.view().stacking())
        if (stage.view().processId(window) == stage.program().processId())
            return window;
    return XCB_NONE;
}

}  // namespace

void sceneHungTargets(StageBase &stage) {
    WindowsView &view = stage.view();
    const StageBase::Window terminal = stage.windowOf(stage.cast().terminal.window);
    const auto front = [&] { return stage.frontInWords(); };
    {
        stage.bringFrontProgram();
        const Stopped hung(static_cast<pid_t>(view.processId(terminal)));
        const int markers = stage.markers();
        stage.story().step({
            .done = QStringLiteral("pressed %1 on a hung terminal, then the marker's key")
                        .arg(leftCommand(scenario::kTerminal).text),
            .expected = QStringLiteral("the next hotkey is not held up"),
            .act =
                [&] {
                    stage.press(leftCommand(scenario::kTerminal));
                    stage.press(leftCommand(scenario::kMarker));
                },
            .seen = [&] { return stage.markers() == markers + 1; },
            .saw = [&] { return QStringLiteral("%1 marker").arg(stage.markers() - markers); },
            .timeout = kPromptly,
        });
    }
    stage.bringFrontProgram();
    stage.press(leftCommand(scenario::kTerminal),
                {.expected = QStringLiteral("the terminal answers again and comes forward"),
                 .seen = [&] { return view.isInFront(terminal); },
                 .saw = front});

    const auto folders = [&] { return stage.windowsOf(stage.cast().files.window).size(); };
    const std::size_t before = folders();
    {
        stage.bringFrontProgram();
        const Stopped hung(
            static_cast<pid_t>(view.processId(stage.windowOf(stage.cast().files.window))));
        stage.story().step({
            .done = QStringLiteral("pressed %1 on a hung file manager, then %2")
                        .arg(leftCommand(scenario::kFilesFolder).text,
                             leftCommand(scenario::kTerminal).text),
            .expected = QStringLiteral("the terminal comes forward at once"),
            .act =
                [&] {
                    stage.press(leftCommand(scenario::kFilesFolder));
                    stage.press(leftCommand(scenario::kTerminal));
                },
            .seen = [&] { return view.isInFront(terminal); },
            .saw = front,
            .timeout = kPromptly,
        });
    }
    stage.story().step({
        .done = QStringLiteral("the file manager answers again"),
        .expected = QStringLiteral("it still shows the folder"),
        .act = [] {},
        .seen = [&] { return folders() == before + 1; },
        .saw = [&] { return QStringLiteral("%1 windows, %2 before").arg(folders()).arg(before); },
    });
    // It may still be about to bring that window forward.
    stage.closeAll(stage.cast().files.window);
}

void sceneWindowManagerRestart(Stage &stage) {
    WindowManagerView &view = stage.view();
    const Stage::Window terminal = stage.windowOf(scenario::kTerminalClass);
    stage.desktop().replaceWindowManager();
    stage.bringFrontProgram();
    stage.press(leftCommand(scenario::kTerminal),
                {.expected = QStringLiteral("under the new window manager it comes forward"),
                 .seen = [&] { return view.isInFront(terminal); },
                 .saw = [&] { return stage.frontInWords(); }});
    stage.bringForward(stage.windowOf(scenario::kEditorClass));
    stage.press(leftCommand(scenario::kEditorToggle),
                {.expected = QStringLiteral("the editor in front: ") + stage.hidingInWords(),
                 .seen = [&] { return stage.areHidden(stage.windowsOf(scenario::kEditorClass)); },
                 .saw = [&] { return stage.frontInWords(); }});
}

void sceneBrokenRules(Stage &stage) {
    const QString path = stage.desktop().home().rulesPath();
    const QByteArray broken = R"([{"appName": "half a ru)";
    HomeFolder::write(path, broken);
    stage.bringFrontProgram();
    stage.startProgram();
    PtyProcess &program = stage.program();
    // Without rules there is no grab to wait for.
    stage.prepare(
        QStringLiteral("KestrelBay is up and has read the rules"), [] {},
        [&] {
            return stage.view().client().ownerOf("_KESTRELBAY_EVENT_TAP") != XCB_NONE &&
                   program.line({QStringLiteral("rules.json cannot be used")});
        });
    const Chord hotkey = leftCommand(scenario::kTerminal);
    const auto presses = [&] { return stage.front().pressesOf(scenario::kTerminal.xKeycode); };
    stage.press(hotkey,
                {.expected = QStringLiteral("a broken rules.json: no rule, so the key passes"),
                 .seen = [&] { return presses() == 1; },
                 .saw =
                     [&] {
                         return QStringLiteral(
                                    "%1 press at the program in front, %2 keys grabbed, "
                                    "KestrelBay %3, the broken file %4")
                             .arg(presses())
                             .arg(stage.grabbedCount())
                             .arg(program.ending(), HomeFolder::read(path) == broken
                                                        ? QStringLiteral("as it was")
                                                        : QStringLiteral("changed"));
                     },
                 .objection =
                     [&] {
                         return program.isRunning() && stage.grabbedCount() == 0 &&
                                        HomeFolder::read(path) == broken
                                    ? QString()
                                    : QStringLiteral("that is not all right");
                     }});
    stage.keepLog(QStringLiteral("kestrelbay-broken-rules"));
    program.sendSignal(SIGTERM);
    stage.prepare(
        QStringLiteral("KestrelBay ended"), [] {}, [&] { return !program.isRunning(); });
}

void sceneServerDies(Stage &stage) {
    const QString path = stage.desktop().home().rulesPath();
    HomeFolder::write(path, stage.rulesBytes());
    const auto losesDisplay = [&](const QString &done, const QString &log,
                                  const std::function<void()> &act) {
        PtyProcess &program = stage.program();
        const qsizetype said = program.lines().size();
        stage.story().step({
            .done = done,
            .expected = QStringLiteral("KestrelBay says so and ends with an error, rules kept"),
            .act = act,
            .seen = [&] { return !program.isRunning(); },
            .saw =
                [&] {
                    return QStringLiteral("%1, “%2”")
                        .arg(program.ending(),
                             program.lines().mid(said).join(QStringLiteral(" ⏎ ")));
                },
            .objection =
                [&] {
                    if (program.exitCode().value_or(0) == 0)
                        return QStringLiteral("that is no exit code of an error");
                    const QStringList lines = program.lines().mid(said);
                    if (lines.filter(QStringLiteral("The connection to the display is gone"))
                            .size() != 1)
                        return QStringLiteral("it did not say once that the display is gone");
                    return HomeFolder::read(path) == stage.rulesBytes()
                               ? QString()
                               : QStringLiteral("rules.json has changed");
                },
        });
        stage.keepLog(log);
    };

    stage.prepare(
        QStringLiteral("KestrelBay started again with its preferences"),
        [&] { stage.startProgram({QStringLiteral("--action=preferences")}); },
        [&] { return ownWindow(stage) != XCB_NONE; });
    losesDisplay(QStringLiteral("closed the connection of its windows, as xkill does"),
                 QStringLiteral("kestrelbay-windows-killed"), [&] {
                     XClient client(stage.desktop().displayName());
                     xcb_kill_client(client.get(), ownWindow(stage));
                     client.sync();
                 });
    stage.prepare(
        QStringLiteral("KestrelBay started once more"), [&] { stage.startProgram(); },
        [&] { return stage.grabbedCount() == stage.ruleCount() && isOnSessionBus(stage); });
    losesDisplay(QStringLiteral("killed the X server"), QStringLiteral("kestrelbay-server-died"),
                 [&] { stage.desktop().killServer(); });
}

}  // namespace kestrelbay::desktop
