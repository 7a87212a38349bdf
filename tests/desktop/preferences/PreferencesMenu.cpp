#include "desktop/preferences/PreferencesScenes.h"

namespace kestrelbay::desktop {

namespace {

using places::RowPart;
using shellkeys::kDown;
using shellkeys::kReturn;
using shellkeys::kTab;

constexpr std::uint8_t kMenuKey = 135, kDeleteKey = 119, kF10 = 76, kZ = 52;
constexpr int kDuplicate = 4, kDeleteEntry = 5;

const QString kDeleteTitle = QStringLiteral("Delete Shortcut");

/// The entry at this place of the menu, counted from one.
void choose(PreferencesStage &stage, int entry) {
    for (int i = 0; i < entry; ++i)
        stage.pressKey(kDown);
    stage.pressKey(kReturn);
}

void rightClick(PreferencesStage &stage, int row) {
    stage.pointer().click(stage.onScreen(places::inRow(row, RowPart::Name)),
                          Pointer::Button::Right);
}

void confirmDeletion(PreferencesStage &stage) {
    (void)stage.waitForWindow(kDeleteTitle);
    stage.pressKey(kTab);
    stage.pressKey(testing::xkey::kSpace);
}

/// Waits until the keyboard is back with the preferences.
void waitForPreferences(PreferencesStage &stage) {
    stage.prepare(
        QStringLiteral("the preferences"), [] {},
        [&] { return stage.isInFront(ShellStage::kPreferencesSize); });
    stage.settle();
}

}  // namespace

void sceneRuleMenu(PreferencesStage &stage) {
    stage.begin({markerRule(stage.desktop().home(), keys::kK), editorRule()});
    stage.waitForMenu([&] { rightClick(stage, 0); });
    stage.screenshot(QStringLiteral("rule-menu"));
    const QString copy = QStringLiteral("Marker 0 0 launchArgs “--marker”");
    stage.seesRules(QStringLiteral("clicked the first row with the right button, “Duplicate”"),
                    {kMarkerRule, copy, kEditorRule}, [&] { choose(stage, kDuplicate); });
    stage.prepare(
        QStringLiteral("recording"), [] {}, [&] { return stage.isRecording(); });
    stage.settle();
    stage.seesRules(
        QStringLiteral("pressed L⌘G"),
        {kMarkerRule, QStringLiteral("Marker 5 100008 launchArgs “--marker”"), kEditorRule},
        [&] { stage.press(leftCommand(keys::kG)); });
    stage.startsMarker(QStringLiteral("pressed L⌘G in another program"), leftCommand(keys::kG));

    stage.openPreferences();
    stage.click(1, RowPart::Name);
    stage.settle();
    stage.waitForMenu([&] { stage.pressKey(kMenuKey); });
    stage.toasts().forget();
    stage.seesRules(QStringLiteral("pressed the menu key on the copy, “Delete”, “Delete”"),
                    {kMarkerRule, kEditorRule}, [&] {
                        choose(stage, kDeleteEntry);
                        confirmDeletion(stage);
                    });
    waitForPreferences(stage);
    stage.waitForMenu([&] {
        stage.press({QStringLiteral("⇧F10"), {testing::xkey::kLeftShift, kF10}});
    });
    stage.closeMenu();
    stage.settle();
    stage.seesRules(
        QStringLiteral("pressed Shift+F10, Escape, Ctrl+Z"),
        {kMarkerRule, QStringLiteral("Marker 5 100008 launchArgs “--marker”"), kEditorRule}, [&] {
            stage.press({QStringLiteral("Ctrl+Z"), {testing::xkey::kLeftControl, kZ}});
        });
    stage.startsMarker(QStringLiteral("pressed L⌘G again"), leftCommand(keys::kG));
}

void sceneUndoByToast(PreferencesStage &stage) {
    stage.begin({markerRule(stage.desktop().home(), keys::kK), editorRule()});
    stage.click(0, RowPart::Name);
    stage.settle();
    stage.toasts().forget();
    stage.seesRules(QStringLiteral("pressed Delete on the first row, “Delete”"), {kEditorRule},
                    [&] {
                        stage.pressKey(kDeleteKey);
                        confirmDeletion(stage);
                    });
    stage.prepare(
        QStringLiteral("a toast"), [] {},
        [&] { return stage.toasts().messageToasts().size() == 1; });
    stage.screenshot(QStringLiteral("deleted-toast"));
    const QRect toast = stage.toasts().messageToasts().front().area;
    stage.seesRules(QStringLiteral("clicked “Undo” in the toast"), {kMarkerRule, kEditorRule}, [&] {
        stage.pointer().click({toast.right() - 2 * toast.height() / 3, toast.center().y()});
    });
    stage.startsMarker(QStringLiteral("pressed L⌘K"), leftCommand(keys::kK));

    stage.openPreferences();
    stage.click(0, RowPart::Recorder);
    stage.prepare(
        QStringLiteral("recording"), [] {}, [&] { return stage.isRecording(); });
    stage.waitForMenu([&] { rightClick(stage, 1); });
    stage.sees(
        QStringLiteral("clicked the other row with the right button while a field records"),
        QStringLiteral("recording ends, the menu is there"), [] {},
        [&] { return stage.openMenu().has_value(); });
    stage.closeMenu();
}

}  // namespace kestrelbay::desktop
