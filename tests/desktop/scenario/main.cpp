// A whole desktop session told step by step: a real window manager, real programs,
// real key presses, and KestrelBay between them.

#include <array>
#include <initializer_list>
#include <vector>

#include <QCoreApplication>

#include "desktop/scenario/Scenes.h"
#include "desktop/stage/Play.h"

namespace {

using namespace kestrelbay::desktop;
using StageScene = Scene<Stage>;

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

/// Those of every Wayland compositor, and after them what only one has.
template <class StageType>
std::vector<Scene<StageType>> scenesOnWayland(std::initializer_list<Scene<StageType>> own = {}) {
    constexpr auto kStarts = Scene<StageType>::Program::Starts;
    std::vector<Scene<StageType>> scenes{
        {"The session", anywhere<StageType, sceneWaylandSession>, kStarts},
        {"Start, and a hotkey that the user has bound", anywhere<StageType, sceneWaylandStart>,
         kStarts},
        {"Launch and bring forward", anywhere<StageType, sceneLaunchAndForward>},
        {"A rule with a side", anywhere<StageType, sceneWaylandOneSide>},
        {"Locks", anywhere<StageType, sceneWaylandLocks>},
        {"A disabled rule", anywhere<StageType, sceneDisabledRule>},
        {"The global switch", anywhere<StageType, sceneGlobalSwitch>},
        {"A held key", anywhere<StageType, sceneHeldKey>},
        {"Hide and show", anywhere<StageType, sceneHideAndShow>},
        {"Cycle windows", anywhere<StageType, sceneCycle>},
        {"Open a URL", anywhere<StageType, sceneUrl>},
        {"Open a file", anywhere<StageType, sceneFile>},
        {"Open a folder", anywhere<StageType, sceneFolder>},
        {"Two hotkeys without a gap", anywhere<StageType, sceneWithoutAGap>},
        {"New instances with arguments", anywhere<StageType, sceneArguments>},
        {"Hung targets", anywhere<StageType, sceneHungTargets>},
        {"The preferences", anywhere<StageType, sceneWaylandPreferences>, kStarts},
        {"Recording in a window of Wayland's", anywhere<StageType, sceneWaylandNativeWindow>,
         kStarts},
    };
    scenes.insert(scenes.end(), own);
    scenes.push_back({"KestrelBay is killed", anywhere<StageType, sceneWaylandKilled>});
    scenes.push_back({"Quit", anywhere<StageType, sceneWaylandQuit>, kStarts});
    scenes.push_back({"The compositor is killed and started again",
                      anywhere<StageType, sceneWaylandRestarted>, kStarts});
    return scenes;
}

}  // namespace

int main(int argc, char *argv[]) {
    // KWin's answers come by D-Bus.
    const QCoreApplication application(argc, argv);
    const QString sway = QStringLiteral("sway");
    const QString kwin = QStringLiteral("kwin");
    const QString gnome = QStringLiteral("gnome");
    const auto options = readStageOptions(argc, argv, {sway, kwin, gnome});
    if (!options)
        return 2;
    if (options->windowManager == sway)
        return play<SwayStage>(
            *options, scenesOnWayland<SwayStage>(
                          {{"Who has a hotkey", sceneSwayHolder},
                           {"The focus goes elsewhere right before a press", sceneSwayFocusBefore},
                           {"The configuration is read again", sceneSwayReloaded},
                           {"A window of KestrelBay's", sceneSwayFloats,
                            Scene<SwayStage>::Program::Starts}}));
    if (options->windowManager == kwin)
        return play<KWinStage>(*options, scenesOnWayland<KWinStage>());
    if (options->windowManager == gnome)
        return play<GnomeStage>(*options,
                                scenesOnWayland<GnomeStage>({{"The extension is disabled and "
                                                              "enabled again",
                                                              sceneGnomeExtension}}));
    return play<Stage>(*options, kScenesOnX);
}
