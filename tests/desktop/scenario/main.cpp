// A whole desktop session told step by step: a real window manager, real programs,
// real key presses, and KestrelBay between them.

#include <array>

#include "desktop/scenario/Scenes.h"
#include "desktop/stage/Play.h"

namespace {

using namespace kestrelbay::desktop;
using StageScene = Scene<Stage>;
using SwayScene = Scene<SwayStage>;

constexpr std::array kScenesOnX{
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

constexpr std::array kScenesUnderSway{
    SwayScene{"The session", sceneSway, SwayScene::Program::Starts},
    SwayScene{"Start, and a hotkey that the user has bound", sceneSwayStart,
              SwayScene::Program::Starts},
    SwayScene{"Launch and bring forward", anywhere<SwayStage, sceneLaunchAndForward>},
    SwayScene{"A rule with a side", sceneSwayOneSide},
    SwayScene{"Locks", sceneSwayLocks},
    SwayScene{"A disabled rule", anywhere<SwayStage, sceneDisabledRule>},
    SwayScene{"The global switch", anywhere<SwayStage, sceneGlobalSwitch>},
    SwayScene{"A held key", anywhere<SwayStage, sceneHeldKey>},
    SwayScene{"Hide and show", anywhere<SwayStage, sceneHideAndShow>},
    SwayScene{"Cycle windows", anywhere<SwayStage, sceneCycle>},
    SwayScene{"Open a URL", anywhere<SwayStage, sceneUrl>},
    SwayScene{"Open a file", anywhere<SwayStage, sceneFile>},
    SwayScene{"Open a folder", anywhere<SwayStage, sceneFolder>},
    SwayScene{"Two hotkeys without a gap", anywhere<SwayStage, sceneWithoutAGap>},
    SwayScene{"New instances with arguments", anywhere<SwayStage, sceneArguments>},
    SwayScene{"Hung targets", anywhere<SwayStage, sceneHungTargets>},
    SwayScene{"The preferences", sceneSwayPreferences, SwayScene::Program::Starts},
    SwayScene{"The configuration is read again", sceneSwayReloaded},
    SwayScene{"KestrelBay is killed", sceneSwayKilled},
    SwayScene{"Quit", sceneSwayQuit, SwayScene::Program::Starts},
    SwayScene{"sway is killed and started again", sceneSwayRestarted, SwayScene::Program::Starts},
};

}  // namespace

int main(int argc, char *argv[]) {
    const QString sway = QStringLiteral("sway");
    const auto options = readStageOptions(argc, argv, {sway});
    if (!options)
        return 2;
    return options->windowManager == sway ? play<SwayStage>(*options, kScenesUnderSway)
                                          : play<Stage>(*options, kScenesOnX);
}
