// A whole desktop session told step by step: a real window manager, real programs,
// real key presses, and KestrelBay between them.

#include <array>

#include "desktop/scenario/Scenes.h"
#include "desktop/stage/Play.h"

namespace {

using namespace kestrelbay::desktop;
using StageScene = Scene<Stage>;

constexpr std::array kScenes{
    StageScene{"Start, and a hotkey that another client holds", sceneStart,
               StageScene::Program::Starts},
    StageScene{"Launch and bring forward", anywhere<Stage, sceneLaunchAndForward>},
    StageScene{"Left and right", sceneSides},
    StageScene{"Locks", sceneLocks},
    StageScene{"A disabled rule", anywhere<Stage, sceneDisabledRule>},
    StageScene{"The global switch", anywhere<Stage, sceneGlobalSwitch>},
    StageScene{"A held key", anywhere<Stage, sceneHeldKey>},
    StageScene{"Hide and show", anywhere<Stage, sceneHideAndShow>},
    StageScene{"Cycle windows", anywhere<Stage, sceneCycle>},
    StageScene{"Open a URL", anywhere<Stage, sceneUrl>},
    StageScene{"Open a file", anywhere<Stage, sceneFile>},
    StageScene{"Open a folder", anywhere<Stage, sceneFolder>},
    StageScene{"Two hotkeys without a gap", anywhere<Stage, sceneWithoutAGap>},
    StageScene{"New instances with arguments", anywhere<Stage, sceneArguments>},
    StageScene{"Hung targets", anywhere<Stage, sceneHungTargets>},
    StageScene{"A window manager takes over", sceneWindowManagerRestart},
    StageScene{"Quit", sceneQuit},
    StageScene{"A hotkey that the window manager holds", sceneManagersHotkey,
               StageScene::Program::Starts},
    StageScene{"A broken rules.json", sceneBrokenRules, StageScene::Program::Starts},
    StageScene{"The X server dies", sceneServerDies, StageScene::Program::Starts},
};

}  // namespace

int main(int argc, char *argv[]) {
    return playAll<Stage>(argc, argv, kScenes);
}
