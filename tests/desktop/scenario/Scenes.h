#pragma once

#include "desktop/stage/Stage.h"

namespace kestrelbay::desktop {

// Each scene is a few steps on one subject. They are played in this order, and a
// later one may find the windows that an earlier one left.

// ScenesStart.cpp
void sceneStart(Stage &stage);
void sceneQuit(Stage &stage);

// ScenesForward.cpp
void sceneLaunchAndForward(Stage &stage);
void sceneWithoutAGap(Stage &stage);

// ScenesKeys.cpp
void sceneSides(Stage &stage);
void sceneLocks(Stage &stage);
void sceneDisabledRule(Stage &stage);
void sceneGlobalSwitch(Stage &stage);
void sceneHeldKey(Stage &stage);

// ScenesWindows.cpp
void sceneHideAndShow(Stage &stage);
void sceneCycle(Stage &stage);

// ScenesOpen.cpp
void sceneUrl(Stage &stage);
void sceneFile(Stage &stage);
void sceneFolder(Stage &stage);
void sceneArguments(Stage &stage);

// ScenesManager.cpp
void sceneManagersHotkey(Stage &stage);

// ScenesTrouble.cpp
void sceneHungTargets(Stage &stage);
void sceneWindowManagerRestart(Stage &stage);
void sceneBrokenRules(Stage &stage);
/// The last one: there is no desktop after it.
void sceneServerDies(Stage &stage);

}  // namespace kestrelbay::desktop
