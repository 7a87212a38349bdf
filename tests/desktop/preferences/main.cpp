// The preferences as a user works with them, told step by step, and what is on disk
// after each step.

#include <array>

#include <QCoreApplication>

#include "desktop/preferences/PreferencesScenes.h"
#include "desktop/stage/Play.h"

namespace {

using namespace kestrelbay::desktop;
using PreferencesScene = Scene<PreferencesStage>;

constexpr auto kStarts = PreferencesScene::Program::Starts;
constexpr std::array kScenes{
    PreferencesScene{"From nothing to a first hotkey", sceneFirstHotkey, kStarts},
    PreferencesScene{"A hotkey that another program has", sceneHotkeyOfAnother, kStarts},
    PreferencesScene{"The options of a rule", sceneAdvancedPanel, kStarts},
    PreferencesScene{"A list in a sheet", scenePopupInSheet, kStarts},
    PreferencesScene{"A conflict", sceneConflict, kStarts},
    PreferencesScene{"Rules edited by hand", sceneEditedByHand, kStarts},
    PreferencesScene{"Off and on", sceneSwitch, kStarts},
    PreferencesScene{"Another order", sceneOrder, kStarts},
    PreferencesScene{"Deleting", sceneDelete, kStarts},
    PreferencesScene{"The menu of a rule", sceneRuleMenu, kStarts},
    PreferencesScene{"Deleting undone by the toast", sceneUndoByToast, kStarts},
    PreferencesScene{"Rules carried by command", sceneCarriedByCommand, kStarts},
    PreferencesScene{"Rules carried by the menu", sceneCarriedByMenu, kStarts},
    PreferencesScene{"Ways out of recording by key", sceneWaysOutByKey, kStarts},
    PreferencesScene{"Ways out of recording in the window", sceneWaysOutInWindow, kStarts},
    PreferencesScene{"Ways out of recording by other windows", sceneWaysOutOfWindow, kStarts},
    PreferencesScene{"Locked while recording", sceneLockedWhileRecording, kStarts},
    PreferencesScene{"Killed while recording", sceneKilledWhileRecording, kStarts},
    PreferencesScene{"Settings", sceneSettings, kStarts},
    PreferencesScene{"Another language", sceneLanguage, kStarts},
    PreferencesScene{"Everything as it was left", sceneAsItWasLeft, kStarts},
    PreferencesScene{"A thousand rules", sceneManyRules, kStarts},
};

}  // namespace

int main(int argc, char *argv[]) {
    // The session bus is asked through it.
    const QCoreApplication application(argc, argv);
    return playAll<PreferencesStage>(argc, argv, kScenes);
}
