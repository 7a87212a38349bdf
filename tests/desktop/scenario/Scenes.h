#pragma once

#include "desktop/gnome/GnomeStage.h"
#include "desktop/kwin/KWinStage.h"
#include "desktop/stage/Stage.h"
#include "desktop/stage/WaylandStage.h"
#include "desktop/sway/SwayStage.h"

namespace kestrelbay::desktop {

// Each scene is a few steps on one subject. They are played in the order of a list in main.cpp, and
// a later one may find the windows that an earlier one left. Those of a StageBase are played on
// every kind of display, those of a WaylandStage under every Wayland compositor.

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

// ScenesWayland.cpp
void sceneWaylandSession(WaylandStage &stage);
void sceneWaylandStart(WaylandStage &stage);
void sceneWaylandOneSide(WaylandStage &stage);
void sceneWaylandLocks(WaylandStage &stage);

// ScenesGnome.cpp
void sceneGnomeExtension(GnomeStage &stage);

// ScenesWaylandPreferences.cpp
void sceneWaylandPreferences(WaylandStage &stage);
void sceneWaylandNativeWindow(WaylandStage &stage);

// ScenesWaylandEnd.cpp
void sceneWaylandKilled(WaylandStage &stage);
void sceneWaylandQuit(WaylandStage &stage);
/// The last one: everything in view ends with the compositor.
void sceneWaylandRestarted(WaylandStage &stage);

// ScenesSway.cpp
void sceneSwayFloats(SwayStage &stage);
void sceneSwayFocusBefore(SwayStage &stage);
void sceneSwayHolder(SwayStage &stage);
void sceneSwayReloaded(SwayStage &stage);

}  // namespace kestrelbay::desktop
