#include "desktop/spoken/SpokenScenes.h"

namespace kestrelbay::desktop {

namespace {

using namespace Qt::StringLiterals;
using shellkeys::kDown;
using shellkeys::kReturn;
using testing::xkey::kSpace;

}  // namespace

void sceneHotkeyByKeysAlone(SpokenStage &stage) {
    stage.beginAt({});
    stage.hearsFocus(u"opened the preferences"_s, kPreferencesName,
                     u"page tab: Shortcut Rules (selected, focused)"_s, [] {});
    stage.hearsFocus(u"pressed Tab"_s, kPreferencesName, u"button: Add (focused)"_s,
                     [&] { stage.pressKey(shellkeys::kTab); });
    stage.hearsFocus(u"pressed Space"_s, kPickerName,
                     u"text: Search apps... “Search apps...” (focused)"_s,
                     [&] { stage.pressKey(kSpace); });
    // The keyboard stays with the field, and screen readers follow what is selected.
    stage.hears(
        u"typed “mousepad”, Down"_s, kPickerName,
        {u"dialog: Select App"_s, u"label: Select App"_s,
         u"text: Search apps... “Search apps...” (focused)"_s, u"list: Select App (focusable)"_s,
         u"list item: Mousepad (selected, focused)"_s,
         u"list item: Text Editor Settings (focusable)"_s, u"button: Browse... (focusable)"_s,
         u"button: Cancel (focusable)"_s, u"button: Select (focusable)"_s},
        [&] {
            stage.type(u"mousepad"_s);
            stage.pressKey(kDown);
        });
    stage.hearsFocus(u"pressed Return"_s, kPreferencesName,
                     u"button: Hotkey of Mousepad, recording, Press hotkey... (focused)"_s,
                     [&] { stage.pressKey(kReturn); });
    stage.hearsFocus(u"pressed L⌘T"_s, kPreferencesName,
                     u"button: Hotkey of Mousepad, left Super, T “left Super, T” (focused)"_s,
                     [&] { stage.press(leftCommand(keys::kT)); });
    stage.seesRules(u"looked at the disk"_s, {u"Mousepad 17 100008"_s}, [] {});
    stage.bringFrontProgram();
    stage.sees(
        u"pressed L⌘T"_s, u"the editor comes forward"_s,
        [&] { stage.press(leftCommand(keys::kT)); },
        [&] { return stage.isInFront(scenario::kEditorClass); });
    stage.closeAll(scenario::kEditorClass);
}

}  // namespace kestrelbay::desktop
