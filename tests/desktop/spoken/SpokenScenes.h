#pragma once

#include "desktop/spoken/SpokenStage.h"

namespace kestrelbay::desktop {

// SpokenViews.cpp
void sceneSpokenGuide(SpokenStage &stage);
void sceneSpokenRules(SpokenStage &stage);
void sceneSpokenSettings(SpokenStage &stage);
void sceneSpokenOptions(SpokenStage &stage);
void sceneSpokenQuestions(SpokenStage &stage);

// SpokenHotkey.cpp
void sceneHotkeyByKeysAlone(SpokenStage &stage);

// SpokenReach.cpp
void sceneLargeText(SpokenStage &stage);

// SpokenContrast.cpp
void sceneHighContrast(SpokenStage &stage);

}  // namespace kestrelbay::desktop
