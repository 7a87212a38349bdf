#include "desktop/shell/ShellScenes.h"

#include "desktop/session/TrayHost.h"
#include "support/Poll.h"

namespace kestrelbay::desktop {

namespace {

using namespace std::chrono_literals;
using Kind = TrayHost::Kind;

void seesIcon(ShellStage &stage, std::optional<TrayHost> &tray, const QString &done,
              const std::function<void()> &act) {
    stage.story().step({
        .done = done,
        .expected = QStringLiteral("the icon is there"),
        .act = act,
        .seen = [&] { return tray->icon().has_value(); },
        .saw =
            [&] {
                const auto icon = tray->icon();
                return icon ? QStringLiteral("an icon of %1×%2 at %3,%4")
                                  .arg(icon->width())
                                  .arg(icon->height())
                                  .arg(icon->x())
                                  .arg(icon->y())
                            : QStringLiteral("no icon");
            },
    });
}

}  // namespace

void sceneNoTray(ShellStage &stage) {
    stage.restartProgram({});
    stage.bringFrontProgram();
    stage.press(leftCommand(scenario::kTerminal),
                {.expected = QStringLiteral("without a tray, hotkeys work"),
                 .seen = [&] { return stage.isInFront(scenario::kTerminalClass); },
                 .saw = [&] { return stage.frontInWords(); }});

    ShellStage::Ending second;
    stage.story().step({
        .done = QStringLiteral("started KestrelBay a second time"),
        .expected = QStringLiteral("that ends with 0, and the first opens its preferences"),
        .act = [&] { second = stage.startAgain({}); },
        .seen = [&] { return stage.isInFront(ShellStage::kPreferencesSize); },
        .saw =
            [&] {
                return QStringLiteral("exit %1; %2").arg(second.code).arg(stage.windowsInWords());
            },
        .objection =
            [&] { return second.code == 0 ? QString() : QStringLiteral("the exit code is not 0"); },
    });
    stage.closeWindow(ShellStage::kPreferencesSize);
    stage.story().step({
        .done = QStringLiteral("closed the preferences, and opened them by --action=preferences"),
        .expected = QStringLiteral("closing did not end the program"),
        .act = [&] { stage.askFor(QStringLiteral("preferences")); },
        .seen = [&] { return stage.isInFront(ShellStage::kPreferencesSize); },
        .saw = [&] { return stage.windowsInWords(); },
    });
    PtyProcess &program = stage.program();
    stage.story().step({
        .done = QStringLiteral("--action=quit"),
        .expected = QStringLiteral("the program ends with 0 and gives the keys back"),
        .act = [&] { second = stage.startAgain({QStringLiteral("--action=quit")}); },
        .seen = [&] { return !program.isRunning() && stage.grabbedCount() == 0; },
        .saw =
            [&] {
                return QStringLiteral("%1, %2 keys grabbed, the request ended with %3")
                    .arg(program.ending())
                    .arg(stage.grabbedCount())
                    .arg(second.code);
            },
        .objection =
            [&] {
                return program.exitCode() == 0 && second.code == 0
                           ? QString()
                           : QStringLiteral("not both exit codes are 0");
            },
    });
}

void sceneTrayComesLate(ShellStage &stage) {
    for (const Kind kind : {Kind::Notifiers, Kind::Embedding}) {
        stage.restartProgram({});
        const auto late = std::chrono::steady_clock::now() + 5s;
        (void)testing::waitUntil([&] { return std::chrono::steady_clock::now() > late; });
        std::optional<TrayHost> tray;
        seesIcon(stage, tray,
                 kind == Kind::Notifiers
                     ? QStringLiteral("a panel started 5 s after the program")
                     : QStringLiteral("an embedding tray started 5 s after the program"),
                 [&] { tray.emplace(stage.desktop(), kind); });
    }
}

void sceneTrayComesBack(ShellStage &stage) {
    for (const Kind kind : {Kind::Notifiers, Kind::Embedding}) {
        const QString name =
            kind == Kind::Notifiers ? QStringLiteral("the panel") : QStringLiteral("the tray");
        std::optional<TrayHost> tray(std::in_place, stage.desktop(), kind);
        stage.restartProgram({});
        seesIcon(stage, tray, QStringLiteral("started with %1 there").arg(name), [] {});
        tray.reset();
        seesIcon(stage, tray, QStringLiteral("%1 ended and started again").arg(name),
                 [&] { tray.emplace(stage.desktop(), kind); });
    }
}

}  // namespace kestrelbay::desktop
