#include "desktop/scenario/Scenes.h"

#include <algorithm>

namespace kestrelbay::desktop {

namespace {

/// What stands behind the word in the command line.
QStringList argumentsBehind(const char *word, const QStringList &commandLine) {
    const qsizetype at = commandLine.indexOf(QLatin1String(word));
    return at < 0 ? QStringList() : commandLine.mid(at + 1);
}

QString inBrackets(const QStringList &arguments) {
    return arguments.isEmpty() ? QStringLiteral("nothing")
                               : u'[' + arguments.join(QStringLiteral("] [")) + u']';
}

/// Every press starts one more process with exactly these arguments.
void startsProcesses(StageBase &stage, const Chord &hotkey, const QStringList &arguments,
                     const std::function<std::vector<QStringList>()> &running) {
    const auto count = [&] { return std::ranges::count(running(), arguments); };
    for (const QString &which : {QStringLiteral("a new process"), QStringLiteral("another one")}) {
        const auto before = count();
        stage.press(hotkey, {.expected = which + QStringLiteral(" with ") + inBrackets(arguments),
                             .seen = [&] { return count() == before + 1; },
                             .saw =
                                 [&] {
                                     const auto all = running();
                                     return QStringLiteral("%1 of them, the last with %2")
                                         .arg(count())
                                         .arg(inBrackets(all.empty() ? QStringList() : all.back()));
                                 }});
    }
}

}  // namespace

void sceneUrl(StageBase &stage) {
    const auto opened = [&] {
        const auto found = stage.desktop().processes().withArgument(QLatin1String(kUrlRecorder));
        return found.empty() ? QStringList()
                             : argumentsBehind(kUrlRecorder, Processes::commandLine(found.back()));
    };
    stage.press(leftCommand(scenario::kUrl),
                {.expected = QStringLiteral("the scheme's handler is started with the URL"),
                 .seen = [&] { return opened() == QStringList(QLatin1String(scenario::kUrlText)); },
                 .saw = [&] { return inBrackets(opened()); }});
}

void sceneFile(StageBase &stage) {
    const Chord hotkey = leftCommand(scenario::kEditorFile);
    WindowsView &view = stage.view();
    const auto showsFile = [&](const QString &expected) {
        stage.press(hotkey, {.expected = expected,
                             .seen =
                                 [&] {
                                     return stage.isInFront(stage.cast().editor.window,
                                                            QLatin1String(scenario::kFileName));
                                 },
                             .saw = [&] { return stage.frontInWords(); }});
    };
    stage.bringFrontProgram();
    showsFile(QStringLiteral("the running editor shows the file"));
    const StageBase::Window editor = view.active();

    stage.bringFrontProgram();
    showsFile(QStringLiteral("which it has already: it comes forward"));

    if (stage.can(Ability::Minimises)) {
        stage.bringFrontProgram();
        stage.prepare(
            QStringLiteral("the editor minimised"), [&] { view.minimise(editor); },
            [&] { return view.isMinimised(editor); });
        showsFile(QStringLiteral("from minimised to the front"));
    }

    stage.bringFrontProgram();
    const std::uint32_t here = view.currentDesktop();
    stage.prepare(
        QStringLiteral("the editor on another workspace"),
        [&] { view.moveToDesktop(editor, here + 1); },
        [&] { return view.desktopOf(editor) == here + 1; });
    showsFile(QStringLiteral("from another workspace to the front"));
    stage.prepare(
        QStringLiteral("the first workspace"), [&] { view.showDesktop(here); },
        [&] { return view.currentDesktop() == here; });

    stage.closeAll(stage.cast().editor.window);
    stage.prepare(
        QStringLiteral("the editor has ended"), [] {},
        [&] {
            return stage.desktop()
                .processes()
                .named(QLatin1String(stage.cast().editor.program))
                .empty();
        });
    stage.bringFrontProgram();
    showsFile(QStringLiteral("the editor is launched with the file"));
}

void sceneFolder(StageBase &stage) {
    const Chord home = leftCommand(scenario::kFiles);
    const Chord folder = leftCommand(scenario::kFilesFolder);
    const auto shows = [&](const QString &expected, const QString &title) {
        return Step{
            .expected = expected,
            .seen = [&stage, title] { return stage.isInFront(stage.cast().files.window, title); },
            .saw = [&stage] { return stage.frontInWords(); }};
    };
    const auto processes = [&] {
        return stage.desktop().processes().named(QLatin1String(stage.cast().files.program));
    };
    const QString homeTitle = QStringLiteral("kestrel-home");
    const QString folderTitle = QLatin1String(scenario::kFolderName);

    stage.bringFrontProgram();
    stage.press(folder, shows(QStringLiteral("not running: the file manager is launched on it"),
                              folderTitle));
    stage.closeAll(stage.cast().files.window);
    // It may have ended by itself. What asks it to must not meet the one that is started next.
    const Command quit = stage.desktop().command(QLatin1String(stage.cast().files.program),
                                                 {QStringLiteral("--quit")});
    PtyProcess quitting(quit.program, quit.arguments, stage.desktop().environment());
    stage.prepare(
        QStringLiteral("the file manager has ended"), [] {},
        [&] { return !quitting.isRunning() && processes().empty(); });

    stage.prepare(
        QStringLiteral("a file manager without windows"),
        [&] {
            stage.desktop().start(QLatin1String(stage.cast().files.program),
                                  {QStringLiteral("--daemon")});
        },
        [&] { return processes().size() == 1; });
    stage.bringFrontProgram();
    stage.press(home, shows(QStringLiteral("no windows: one on the home folder opens"), homeTitle));
    stage.bringFrontProgram();
    stage.press(folder, shows(QStringLiteral("running: it shows the folder"), folderTitle));
    stage.screenshot(QStringLiteral("folder"));
    stage.bringFrontProgram();
    stage.press(home, shows(QStringLiteral("with windows: it comes forward"), QString()));
}

void sceneArguments(StageBase &stage) {
    const Processes &processes = stage.desktop().processes();
    startsProcesses(
        stage, leftCommand(scenario::kArguments),
        {QStringLiteral("--user-data-dir=/tmp/a b"), QStringLiteral("-v"), QStringLiteral("it's"),
         QStringLiteral("x")},
        [&] {
            std::vector<QStringList> all;
            for (const pid_t p : processes.withArgument(QLatin1String(kArgumentsRecorder)))
                all.push_back(argumentsBehind(kArgumentsRecorder, Processes::commandLine(p)));
            return all;
        });

    const StageBase::Window terminal = stage.windowOf(stage.cast().terminal.window);
    startsProcesses(
        stage, leftCommand(scenario::kTerminalArguments),
        QString::fromLatin1(stage.cast().terminalArgumentLines).split(u'\n'), [&] {
            std::vector<QStringList> all;
            for (const pid_t p : processes.named(QLatin1String(stage.cast().terminal.program)))
                all.push_back(Processes::commandLine(p).mid(1));
            return all;
        });
    stage.prepare(
        QStringLiteral("three terminals"), [] {},
        [&] { return stage.windowsOf(stage.cast().terminal.window).size() == 3; });
    stage.closeAll(stage.cast().terminal.window, {terminal});
}

}  // namespace kestrelbay::desktop
