#include "desktop/spoken/SpokenScenes.h"

#include <QDir>

namespace kestrelbay::desktop {

namespace {

using namespace Qt::StringLiterals;
using shellkeys::kReturn;
using testing::xkey::kEscape;
using testing::xkey::kSpace;

}  // namespace

void sceneSpokenGuide(SpokenStage &stage) {
    stage.endProgram();
    QDir(stage.desktop().home().config(u"KestrelBay"_s)).removeRecursively();
    stage.hears(u"started as a new user"_s, kGuideName,
                {u"frame: KestrelBay"_s, u"label: KestrelBay is running"_s,
                 u"label: You can locate it in the tray and access its menu for settings."_s,
                 u"label: TIP: If you cannot find the app's icon, look among the hidden icons of "
                 "your tray. Without a tray, start KestrelBay again to open its preferences."_s,
                 u"button: Get Started (focused)"_s, u"button: Dismiss (focusable)"_s},
                [&] { stage.startProgram(); });
    (void)stage.waitForWindow(kGuideName);
    stage.hears(u"pressed Return"_s, kGuideName,
                {u"frame: KestrelBay"_s, u"label: Keyboard Access Available"_s,
                 u"label: KestrelBay can listen for global hotkeys here.\nWe only respond to "
                 "hotkeys you configure — no other keystrokes are recorded."_s,
                 u"button: Continue (focused)"_s},
                [&] { stage.pressKey(kReturn); });
    stage.hears(u"pressed Return"_s, kGuideName,
                {u"frame: KestrelBay"_s, u"label: All set!"_s,
                 u"label: KestrelBay is ready\nAdd your first shortcut now"_s,
                 u"button: Add First Shortcut (focused)"_s, u"button: Skip for now (focusable)"_s},
                [&] { stage.pressKey(kReturn); });
}

void sceneSpokenRules(SpokenStage &stage) {
    RuleSpec off = ruleWithoutHotkey(u"Files"_s, u"thunar"_s);
    off.isEnabled = false;
    stage.beginAt({markerRule(stage.desktop().home(), keys::kK), off});
    stage.hears(u"opened the preferences"_s, kPreferencesName,
                {u"frame: KestrelBay Preferences"_s,
                 u"page tab: Shortcut Rules (selected, focused)"_s,
                 u"page tab: Advanced"_s,
                 u"list: Shortcut Rules (focusable)"_s,
                 u"list item: Marker, left Super, K (focusable)"_s,
                 u"label: Marker"_s,
                 u"label: --marker “--marker”"_s,
                 u"label: ~/.local/share/applications/kestrel-arguments.desktop"_s,
                 u"button: Hotkey of Marker, left Super, K “left Super, K” (focusable)"_s,
                 u"label: left Super, K"_s,
                 u"button: Clear hotkey of Marker"_s,
                 u"check box: Enable Marker (checked, focusable)"_s,
                 u"button: Advanced Options: Marker “Advanced Options” (focusable)"_s,
                 u"button: Delete Marker “Delete” (focusable)"_s,
                 u"image: Drag to reorder “Drag to reorder”"_s,
                 u"list item: Files, none (focusable)"_s,
                 u"label: Files"_s,
                 u"label: /usr/share/applications/thunar.desktop"_s,
                 u"button: Hotkey of Files, none (focusable)"_s,
                 u"label: none"_s,
                 u"check box: Enable Files (focusable)"_s,
                 u"button: Advanced Options: Files “Advanced Options” (focusable)"_s,
                 u"button: Delete Files “Delete” (focusable)"_s,
                 u"image: Drag to reorder “Drag to reorder”"_s,
                 u"button: Add (focusable)"_s,
                 u"label: 2 configured"_s},
                [] {});
    stage.tabTo(kPreferencesName, u"Hotkey of Marker"_s);
    stage.tabTo(kPreferencesName, u"Enable Marker"_s);
    stage.hearsFocus(u"pressed Space"_s, kPreferencesName, u"check box: Enable Marker (focused)"_s,
                     [&] { stage.pressKey(kSpace); });
}

void sceneSpokenSettings(SpokenStage &stage) {
    stage.beginAt({});
    const QString folder = stage.desktop().home().config(u"KestrelBay"_s);
    stage.hears(
        u"pressed Right"_s, kPreferencesName,
        {u"frame: KestrelBay Preferences"_s,
         u"page tab: Shortcut Rules"_s,
         u"page tab: Advanced (selected, focused)"_s,
         u"label: Launch at Login"_s,
         u"label: Automatically run KestrelBay after login"_s,
         u"check box: Launch at Login “Automatically run KestrelBay after login” (focusable)"_s,
         u"label: Language"_s,
         u"label: Interface language for KestrelBay"_s,
         u"combo box: English “Interface language for KestrelBay” (focusable, of Language)"_s,
         u"label: Sound on Shortcut Trigger"_s,
         u"label: Play a sound each time a shortcut fires"_s,
         u"combo box: No Sound “Play a sound each time a shortcut fires” (focusable, of Sound on "
         "Shortcut Trigger)"_s,
         u"label: Launch Icon Toast"_s,
         u"label: Show app icon popup when a shortcut fires"_s,
         u"combo box: Off “Show app icon popup when a shortcut fires” (focusable, of Launch Icon "
         "Toast)"_s,
         u"label: Config File Location"_s,
         u"label: "_s + folder,
         u"button: Config File Location “%1” (focusable)"_s.arg(folder),
         u"label: Keyboard Access"_s,
         u"label: ✓ Available — global shortcuts working"_s},
        [&] { stage.pressKey(spokenkeys::kRight); });
}

void sceneSpokenOptions(SpokenStage &stage) {
    stage.beginAt({editorRule()});
    stage.tabTo(kPreferencesName, u"Advanced Options"_s);
    const QString sheet = u"Advanced · Editor"_s;
    stage.hears(
        u"pressed Space on the options"_s, sheet,
        {u"dialog: Advanced · Editor"_s, u"label: Advanced · Editor"_s,
         u"label: When shortcut is pressed repeatedly"_s,
         u"panel: When shortcut is pressed repeatedly"_s,
         u"radio button: Keep app open “No extra effect when app is already in front (default)” "
         "(checked, focused)"_s,
         u"label: No extra effect when app is already in front (default)"_s,
         u"radio button: Toggle show/hide “Press again to hide the app when already in front” "
         "(focusable)"_s,
         u"label: Press again to hide the app when already in front"_s,
         u"radio button: Cycle through windows “Cycle through multiple windows of the same app” "
         "(focusable)"_s,
         u"label: Cycle through multiple windows of the same app"_s,
         u"label: Launch Args / URL Scheme / File Path"_s,
         u"label: Pick a type, then enter the value on the right"_s,
         u"combo box: Default (none) (focusable, of Launch Args / URL Scheme / File Path)"_s,
         u"text: Value “Select a type to enable” (disabled, focusable)"_s,
         u"button: Learn more about Deep Launch “Help” (focusable)"_s,
         u"button: Cancel (focusable)"_s, u"button: Save (focusable)"_s},
        [&] { stage.pressKey(kSpace); });
    (void)stage.waitForWindow(sheet);
    stage.hearsFocus(u"pressed Down"_s, sheet,
                     u"radio button: Toggle show/hide “Press again to hide the app when already in "
                     "front” (checked, focused)"_s,
                     [&] { stage.pressKey(shellkeys::kDown); });
    stage.pressKey(kEscape);
    (void)stage.waitForWindow(kPreferencesName);
}

void sceneSpokenQuestions(SpokenStage &stage) {
    stage.beginAt({editorRule(), ruleWithoutHotkey(u"Files"_s, u"thunar"_s)});
    stage.tabTo(kPreferencesName, u"list item"_s);
    stage.pressKey(shellkeys::kDown);
    stage.tabTo(kPreferencesName, u"Hotkey of Files"_s);
    stage.prepare(
        u"recording"_s, [&] { stage.pressKey(kSpace); }, [&] { return stage.isRecording(); });
    const QString conflict = u"Hotkey conflict: already used by another rule, please re-enter"_s;
    stage.hears(u"recorded L⌘E, which the other rule has"_s, conflict,
                {u"alert: "_s + conflict,
                 u"label: Hotkey conflict: already used\nby another rule, please re-enter"_s},
                [&] { stage.press(leftCommand(keys::kE)); });
    stage.hearsFocus(u"looked on"_s, kPreferencesName, u"button: Hotkey of Files, none (focused)"_s,
                     [] {});
    stage.tabTo(kPreferencesName, u"Delete Files"_s);
    stage.hears(u"pressed Return on Delete"_s, u"Delete Shortcut"_s,
                {u"dialog: Delete Shortcut “Are you sure you want to delete the shortcut for "
                 "\"Files\"?”"_s,
                 u"label: Delete Shortcut"_s,
                 u"label: Are you sure you want to delete the shortcut for \"Files\"?"_s,
                 u"button: Cancel (focused)"_s, u"button: Delete (focusable)"_s},
                [&] { stage.pressKey(kReturn); });
    stage.tabTo(u"Delete Shortcut"_s, u"button: Delete"_s);
    const QString deleted = u"The shortcut for \"Files\" was deleted"_s;
    stage.hears(u"pressed Space on it"_s, deleted,
                {u"alert: "_s + deleted, u"label: "_s + deleted, u"button: Undo"_s},
                [&] { stage.pressKey(kSpace); });
    stage.hearsFocus(u"looked on"_s, kPreferencesName,
                     u"list item: Editor, left Super, E (selected, focused)"_s, [] {});
}

}  // namespace kestrelbay::desktop
