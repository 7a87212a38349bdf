#pragma once

#include "desktop/preferences/PreferencesStage.h"

namespace kestrelbay::desktop {

// Each scene is a few steps on one subject, and starts KestrelBay with the rules and
// settings that it needs.

// PreferencesFirstUse.cpp
void sceneFirstHotkey(PreferencesStage &stage);
void sceneHotkeyOfAnother(PreferencesStage &stage);

// PreferencesCarried.cpp
void sceneCarriedByCommand(PreferencesStage &stage);
void sceneCarriedByMenu(PreferencesStage &stage);

// PreferencesMenu.cpp
void sceneRuleMenu(PreferencesStage &stage);
void sceneUndoByToast(PreferencesStage &stage);

// PreferencesFile.cpp
void sceneEditedByHand(PreferencesStage &stage);

// PreferencesRules.cpp
void sceneAdvancedPanel(PreferencesStage &stage);
void scenePopupInSheet(PreferencesStage &stage);
void sceneConflict(PreferencesStage &stage);
void sceneSwitch(PreferencesStage &stage);
void sceneOrder(PreferencesStage &stage);
void sceneDelete(PreferencesStage &stage);
void sceneManyRules(PreferencesStage &stage);

// PreferencesRecording.cpp
void sceneWaysOutByKey(PreferencesStage &stage);
void sceneWaysOutInWindow(PreferencesStage &stage);
void sceneWaysOutOfWindow(PreferencesStage &stage);
void sceneLockedWhileRecording(PreferencesStage &stage);
void sceneKilledWhileRecording(PreferencesStage &stage);

// PreferencesSettings.cpp
void sceneSettings(PreferencesStage &stage);
void sceneLanguage(PreferencesStage &stage);
void sceneAsItWasLeft(PreferencesStage &stage);

}  // namespace kestrelbay::desktop
