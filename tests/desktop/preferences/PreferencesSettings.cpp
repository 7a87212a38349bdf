#include "desktop/preferences/PreferencesScenes.h"

#include <algorithm>
#include <vector>

#include <QFile>

#include "desktop/session/TrayHost.h"

namespace kestrelbay::desktop {

namespace {

using places::Setting;
using shellkeys::kDown;
using shellkeys::kReturn;
using shellkeys::kUp;

const QString kEnglishTitle = QStringLiteral("KestrelBay Preferences");
const QString kChineseTitle = QStringLiteral("KestrelBay 偏好设置");

void beginInAdvancedTab(PreferencesStage &stage) {
    stage.begin({markerRule(stage.desktop().home(), keys::kK)});
    stage.showAdvancedTab();
}

/// Opens the popup with the mouse and chooses the entry before or after with a key.
void choose(PreferencesStage &stage, Setting setting, std::uint8_t arrow) {
    XClient &client = stage.view().client();
    // A toast that is about to go is one of them, too.
    const auto before = client.popups();
    std::vector<xcb_window_t> opened;
    stage.prepare(
        QStringLiteral("a popup"), [&] { stage.click(places::controlOf(setting)); },
        [&] {
            opened = client.popups();
            std::erase_if(opened, [&](xcb_window_t popup) {
                return std::ranges::find(before, popup) != before.end();
            });
            return opened.size() == 1;
        });
    stage.pressKey(arrow);
    stage.pressKey(kReturn);
    stage.prepare(
        QStringLiteral("no popup"), [] {},
        [&] {
            const auto shown = client.popups();
            return std::ranges::find(shown, opened.front()) == shown.end();
        });
}

QString settingInWords(PreferencesStage &stage, const QString &key) {
    return stage.setting(key).toVariant().toString();
}

void seesSetting(PreferencesStage &stage, const QString &done, const QString &key,
                 const QString &expected, const std::function<void()> &act) {
    stage.story().step({
        .done = done,
        .expected = QStringLiteral("on disk: %1 “%2”").arg(key, expected),
        .act = act,
        .seen = [&] { return settingInWords(stage, key) == expected; },
        .saw = [&] { return QStringLiteral("“%1”").arg(settingInWords(stage, key)); },
    });
}

bool isAdvancedTabShown(PreferencesStage &stage) {
    const QColor ground = stage.colorAtPlace(places::kAdvancedTabGround);
    return ground.blue() > ground.red() + 60;
}

}  // namespace

void sceneSettings(PreferencesStage &stage) {
    beginInAdvancedTab(stage);
    const QString entry = stage.desktop().home().config(
        QStringLiteral("autostart/org.kestrelbay.KestrelBay.desktop"));
    const auto switchLogin = [&] { stage.click(places::controlOf(Setting::LaunchAtLogin)); };
    stage.sees(QStringLiteral("switched “Launch at Login” on"),
               QStringLiteral("there is an entry that starts the program"), switchLogin, [&] {
                   return HomeFolder::read(entry).contains("kestrelbay") &&
                          stage.setting(QStringLiteral("launchAtLogin")) == true;
               });
    stage.sees(QStringLiteral("switched it off"), QStringLiteral("there is none any more"),
               switchLogin, [&] {
                   return !QFile::exists(entry) &&
                          stage.setting(QStringLiteral("launchAtLogin")) == false;
               });

    seesSetting(stage, QStringLiteral("chose the next entry of “Launch Icon Toast”"),
                QStringLiteral("launchToastDuration"), QStringLiteral("short"),
                [&] { choose(stage, Setting::Toast, kDown); });
    seesSetting(stage, QStringLiteral("chose the next sound"), QStringLiteral("soundFeedbackName"),
                QStringLiteral("Jump"), [&] { choose(stage, Setting::Sound, kDown); });
    stage.toasts().forget();
    stage.startsMarker(QStringLiteral("pressed L⌘K"), leftCommand(keys::kK));
    stage.sees(
        QStringLiteral("looked on"), QStringLiteral("there was a toast"), [] {},
        [&] { return stage.toasts().launchToasts().size() == 1; });

    stage.openPreferences();
    seesSetting(stage, QStringLiteral("chose the sound before"),
                QStringLiteral("soundFeedbackName"), QString(),
                [&] { choose(stage, Setting::Sound, kUp); });
    stage.sees(
        QStringLiteral("clicked “Show in File Manager”"),
        QStringLiteral("a file manager shows the folder"),
        [&] { stage.click(places::controlOf(Setting::ConfigFolder)); },
        [&] { return stage.isInFront(scenario::kFilesClass, QStringLiteral("KestrelBay")); });
    stage.closeAll(scenario::kFilesClass);
}

void sceneLanguage(PreferencesStage &stage) {
    const TrayHost tray(stage.desktop(), TrayHost::Kind::Notifiers, TrayHost::Shade::Light);
    beginInAdvancedTab(stage);
    const auto switches = [&](const QString &done, std::uint8_t arrow, const QString &title,
                              const QString &language, const QString &quit) {
        stage.story().step({
            .done = done,
            .expected = QStringLiteral("“%1”, still the Advanced tab, “%2” in the menu, %3 on disk")
                            .arg(title, quit, language),
            .act = [&] { choose(stage, Setting::Language, arrow); },
            .seen =
                [&] {
                    const auto menu = stage.notifiers().menu();
                    return stage.windowTitled(title) && isAdvancedTabShown(stage) &&
                           !menu.empty() && menu.back().title == quit &&
                           settingInWords(stage, QStringLiteral("appLanguage")) == language;
                },
            .saw =
                [&] {
                    return QStringLiteral("%1; %2; %3; %4")
                        .arg(stage.frontInWords(),
                             isAdvancedTabShown(stage) ? QStringLiteral("the Advanced tab")
                                                       : QStringLiteral("another tab"),
                             StatusNotifiers::told(stage.notifiers().menu()),
                             settingInWords(stage, QStringLiteral("appLanguage")));
                },
        });
    };
    switches(QStringLiteral("chose Chinese"), kUp, kChineseTitle, QStringLiteral("zh"),
             QStringLiteral("退出"));
    stage.screenshot(QStringLiteral("chinese"));
    switches(QStringLiteral("chose English"), kDown, kEnglishTitle, QStringLiteral("en"),
             QStringLiteral("Quit"));
}

void sceneAsItWasLeft(PreferencesStage &stage) {
    RuleSpec off = markerRule(stage.desktop().home(), keys::kG);
    off.isEnabled = false;
    stage.begin({markerRule(stage.desktop().home(), keys::kK), off,
                 ruleWithoutHotkey(QStringLiteral("Files"), QStringLiteral("thunar"))});
    // One change, so that it is KestrelBay's own file that is read again.
    stage.seesRules(
        QStringLiteral("put the first rule last"),
        {QStringLiteral("Marker 5 100008 launchArgs “--marker” off"), QStringLiteral("Files 0 0"),
         QStringLiteral("Marker 40 100008 launchArgs “--marker”")},
        [&] {
            stage.click(0, places::RowPart::Name);
            stage.settle();
            for (int i = 0; i < 2; ++i)
                stage.press({QStringLiteral("Alt+Down"), {testing::xkey::kLeftAlt, kDown}});
        });
    stage.showAdvancedTab();
    choose(stage, Setting::Language, kUp);
    stage.closeWindow(ShellStage::kPreferencesSize);
    stage.sees(
        QStringLiteral("closed the window, started KestrelBay again"),
        QStringLiteral("the same window is back, in the same tab"),
        [&] {
            const auto ending = stage.startAgain({});
            if (ending.code != 0)
                throw NotPrepared(ending.output);
        },
        [&] {
            return stage.isInFront(ShellStage::kPreferencesSize) &&
                   stage.windowTitled(kChineseTitle) && isAdvancedTabShown(stage);
        });

    const QString rulesPath = stage.desktop().home().rulesPath();
    const QString settingsPath = stage.desktop().home().settingsPath();
    const QByteArray rules = HomeFolder::read(rulesPath);
    const QByteArray settings = HomeFolder::read(settingsPath);
    PtyProcess &program = stage.program();
    stage.prepare(
        QStringLiteral("the end"), [&] { stage.askFor(QStringLiteral("quit")); },
        [&] { return !program.isRunning(); });
    stage.startProgram();
    stage.prepare(
        QStringLiteral("its keys"), [] {}, [&] { return stage.isGrabbed(keys::kK); });
    stage.openPreferences();
    stage.sees(
        QStringLiteral("quit, started anew, opened the preferences"),
        QStringLiteral("rules and settings byte for byte as they were, in Chinese"), [] {},
        [&] { return stage.windowTitled(kChineseTitle).has_value(); },
        [&] {
            return HomeFolder::read(rulesPath) == rules &&
                           HomeFolder::read(settingsPath) == settings
                       ? QString()
                       : QStringLiteral("a file has changed");
        });
    stage.screenshot(QStringLiteral("as-it-was-left"));
    stage.isHeldBack(QStringLiteral("pressed the key of the rule that is off"),
                     leftCommand(keys::kG), leftCommand(keys::kK));
    stage.startsMarker(QStringLiteral("pressed the key of the last rule"), leftCommand(keys::kK));
}

}  // namespace kestrelbay::desktop
