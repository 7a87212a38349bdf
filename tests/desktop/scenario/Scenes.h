#pragma once

#include "desktop/stage/Stage.h"
#include "desktop/sway/SwayStage.h"

namespace kestrelbay::desktop {

// Each scene is a few steps on one subject. They are played in the order of a list in main.cpp, and
// a later one may find the windows that an earlier one left. Those of a StageBase are played on
// every kind of display.

// ScenesStart.cpp
void sceneStart(Stage &stage);
void sceneQuit(Stage &stage);

// ScenesForward.cpp
void sceneLaunchAndForward(StageBase &stage);
void sceneWithoutAGap(StageBase &stage);

// ScenesKeys.cpp
void sceneSides(Stage &stage);
void sceneLocks(Stage &stage);
void sceneDisabledRule(StageBase &stage);
void sceneGlobalSwitch(StageBase &stage);
void sceneHeldKey(StageBase &stage);

// ScenesWindows.cpp
void sceneHideAndShow(StageBase &stage);
void sceneCycle(StageBase &stage);

// ScenesOpen.cpp
void sceneUrl(StageBase &stage);
void sceneFile(StageBase &stage);
void sceneFolder(StageBase &stage);
void sceneArguments(StageBase &stage);

// ScenesManager.cpp
void sceneManagersHotkey(Stage &stage);

// ScenesTrouble.cpp
void sceneHungTargets(StageBase &stage);
void sceneWindowManagerRestart(Stage &stage);
void sceneBrokenRules(Stage &stage);
/// The last one: there is no desktop after it.
void sceneServerDies(Stage &stage);

// ScenesSway.cpp
void sceneSway(SwayStage &stage);
void sceneSwayStart(SwayStage &stage);
void sceneSwayOneSide(SwayStage &stage);
void sceneSwayLocks(SwayStage &stage);
void sceneSwayReloaded(SwayStage &stage);

// ScenesSwayPreferences.cpp
void sceneSwayPreferences(SwayStage &stage);

// ScenesSwayEnd.cpp
void sceneSwayKilled(SwayStage &stage);
void sceneSwayQuit(SwayStage &stage);
/// The last one: everything in view ends with the compositor.
void sceneSwayRestarted(SwayStage &stage);

}  // namespace kestrelbay::desktop
