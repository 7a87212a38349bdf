#include "desktop/shell/ShellScenes.h"

#include "desktop/session/TrayHost.h"

namespace kestrelbay::desktop {

namespace {

using Button = Pointer::Button;
using Entries = std::vector<StatusNotifiers::Entry>;

/// Half an entry below a menu's upper edge, its border included; the same above its
/// lower edge for the last one.
constexpr int kHalfEntry = 16;

QRect iconOf(ShellStage &stage, TrayHost &tray) {
    std::optional<QRect> icon;
    stage.prepare(
        QStringLiteral("an icon in the tray"), [] {},
        [&] {
            const auto last = icon;
            icon = tray.icon();
            return icon && icon == last;
        });
    return *icon;
}

/// Clicks on the icon until its menu is there; the place of that.
QRect openMenu(ShellStage &stage, TrayHost &tray, Button button) {
    XClient &client = stage.view().client();
    stage.prepare(
        QStringLiteral("no menu"), [] {}, [&] { return client.popups().empty(); });
    const QPoint icon = iconOf(stage, tray).center();
    QRect menu;
    stage.prepare(
        QStringLiteral("the menu"), [&] { stage.pointer().click(icon, button); },
        [&] {
            const auto popups = client.popups();
            const QRect last = menu;
            menu = popups.empty() ? QRect() : client.area(popups.back());
            // Not the name of the icon, which comes up under the pointer.
            return menu.height() > 100 && menu == last;
        });
    return menu;
}

QPoint firstEntry(const QRect &menu) {
    return {menu.center().x(), menu.top() + kHalfEntry};
}
QPoint lastEntry(const QRect &menu) {
    return {menu.center().x(), menu.bottom() - kHalfEntry};
}

void seesMenu(ShellStage &stage, const QString &done, const QString &expected,
              const std::function<void()> &act) {
    stage.story().step({
        .done = done,
        .expected = expected,
        .act = act,
        .seen = [&] { return StatusNotifiers::told(stage.notifiers().menu()) == expected; },
        .saw = [&] { return StatusNotifiers::told(stage.notifiers().menu()); },
    });
}

QString englishMenu(bool enabled) {
    return (enabled ? QStringLiteral("Disable") : QStringLiteral("Enable")) +
           QStringLiteral(
               " All Shortcuts | — | Preferences... [Control+comma] | Welcome Guide... | "
               "About KestrelBay | — | Quit [Control+Q]");
}

/// One click in the menu turns the hotkeys off, another one on again.
void togglesByClicks(ShellStage &stage, TrayHost &tray, Button button) {
    const Chord hotkey = leftCommand(scenario::kTerminal);
    const auto clickFirst = [&] {
        stage.pointer().click(firstEntry(openMenu(stage, tray, button)));
    };
    stage.story().step({
        .done = QStringLiteral("clicked the icon, then “Disable All Shortcuts”"),
        .expected = QStringLiteral("no key is grabbed"),
        .act = clickFirst,
        .seen = [&] { return stage.grabbedCount() == 0; },
        .saw = [&] { return QStringLiteral("%1 keys grabbed").arg(stage.grabbedCount()); },
    });
    stage.bringFrontProgram();
    stage.press(hotkey,
                {.expected = QStringLiteral("the program in front gets the key"),
                 .seen = [&] { return stage.front().pressesOf(hotkey.keycodes.back()) == 1; },
                 .saw = [&] { return stage.frontInWords(); }});
    stage.screenshot(QStringLiteral("tray-disabled"));
    stage.story().step({
        .done = QStringLiteral("clicked the icon, then “Enable All Shortcuts”"),
        .expected = QStringLiteral("the hotkeys are grabbed again"),
        .act = clickFirst,
        .seen = [&] { return stage.grabbedCount() == stage.ruleCount(); },
        .saw = [&] { return QStringLiteral("%1 keys grabbed").arg(stage.grabbedCount()); },
    });
}

}  // namespace

void sceneNotifierMenu(ShellStage &stage) {
    const TrayHost tray(stage.desktop(), TrayHost::Kind::Notifiers);
    stage.story().step({
        .done = QStringLiteral("started KestrelBay beside a panel"),
        .expected = QStringLiteral("one icon is announced to it"),
        .act = [&] { stage.restartProgram({}); },
        .seen = [&] { return stage.notifiers().items().size() == 1; },
        .saw = [&] { return stage.notifiers().items().join(QStringLiteral(", ")); },
    });
    seesMenu(stage, QStringLiteral("asked for its menu"), englishMenu(true), [] {});
    seesMenu(stage, QStringLiteral("turned all shortcuts off over the bus"), englishMenu(false),
             [&] { stage.askFor(QStringLiteral("toggle-all-shortcuts")); });
    seesMenu(stage, QStringLiteral("turned them on again"), englishMenu(true),
             [&] { stage.askFor(QStringLiteral("toggle-all-shortcuts")); });
    stage.story().step({
        .done = QStringLiteral("turned them off and started anew"),
        .expected = QStringLiteral("the switch is not kept: all shortcuts are on"),
        .act =
            [&] {
                stage.askFor(QStringLiteral("toggle-all-shortcuts"));
                stage.restartProgram({});
            },
        .seen =
            [&] { return StatusNotifiers::told(stage.notifiers().menu()) == englishMenu(true); },
        .saw = [&] { return StatusNotifiers::told(stage.notifiers().menu()); },
    });
}

void sceneNotifierClicks(ShellStage &stage) {
    TrayHost tray(stage.desktop(), TrayHost::Kind::Notifiers);
    stage.restartProgram({});
    (void)openMenu(stage, tray, Button::Right);
    stage.screenshot(QStringLiteral("panel-menu"));
    stage.pressKey(testing::xkey::kEscape);
    togglesByClicks(stage, tray, Button::Right);
    const QRect menu = openMenu(stage, tray, Button::Left);
    stage.screenshot(QStringLiteral("panel-menu-left"));
    PtyProcess &program = stage.program();
    stage.story().step({
        .done = QStringLiteral("clicked the icon with the left button, then “Quit”"),
        .expected = QStringLiteral("KestrelBay ends with 0"),
        .act = [&] { stage.pointer().click(lastEntry(menu)); },
        .seen = [&] { return !program.isRunning(); },
        .saw = [&] { return program.ending(); },
        .objection =
            [&] {
                return program.exitCode() == 0 ? QString()
                                               : QStringLiteral("the exit code is not 0");
            },
    });
}

void sceneChineseMenu(ShellStage &stage) {
    const TrayHost tray(stage.desktop(), TrayHost::Kind::Notifiers, TrayHost::Shade::Light);
    stage.restartProgram({{QStringLiteral("appLanguage"), QStringLiteral("zh")}});
    seesMenu(stage, QStringLiteral("started in Chinese"),
             QStringLiteral("禁用全部快捷键 | — | 偏好设置... [Control+comma] | 欢迎向导... | "
                            "关于 KestrelBay | — | 退出 [Control+Q]"),
             [] {});
}

void sceneEmbeddedIcon(ShellStage &stage) {
    TrayHost tray(stage.desktop(), TrayHost::Kind::Embedding);
    stage.restartProgram({});
    togglesByClicks(stage, tray, Button::Left);
    (void)openMenu(stage, tray, Button::Right);
    stage.screenshot(QStringLiteral("embedded-menu"));
    PtyProcess &program = stage.program();
    stage.story().step({
        .done = QStringLiteral("opened the menu with the right button and pressed Ctrl+Q"),
        .expected = QStringLiteral("KestrelBay ends with 0"),
        .act =
            [&] {
                stage.press(
                    {QStringLiteral("Ctrl+Q"), {testing::xkey::kLeftControl, testing::xkey::kQ}});
            },
        .seen = [&] { return !program.isRunning(); },
        .saw = [&] { return program.ending(); },
        .objection =
            [&] {
                return program.exitCode() == 0 ? QString()
                                               : QStringLiteral("the exit code is not 0");
            },
    });
}

}  // namespace kestrelbay::desktop
