// KestrelBay as a program among others, told step by step: its guide, its icon in
// real trays, its toasts, its reports.

#include <array>

#include <QCoreApplication>

#include "desktop/shell/ShellScenes.h"
#include "desktop/stage/Play.h"

namespace {

using namespace kestrelbay::desktop;
using ShellScene = Scene<ShellStage>;

constexpr std::array kScenes{
    ShellScene{"The first start", sceneFirstStart, ShellScene::Program::Starts},
    ShellScene{"The guide again", sceneGuideAgain, ShellScene::Program::Starts},
    ShellScene{"The guide closed and dismissed", sceneGuideClosed, ShellScene::Program::Starts},
    ShellScene{"No tray", sceneNoTray, ShellScene::Program::Starts},
    ShellScene{"A tray that comes late", sceneTrayComesLate, ShellScene::Program::Starts},
    ShellScene{"A tray that comes back", sceneTrayComesBack, ShellScene::Program::Starts},
    ShellScene{"The menu that a panel gets", sceneNotifierMenu, ShellScene::Program::Starts},
    ShellScene{"Clicks in a panel", sceneNotifierClicks, ShellScene::Program::Starts},
    ShellScene{"The menu in Chinese", sceneChineseMenu, ShellScene::Program::Starts},
    ShellScene{"The icon on panels", sceneIconOnPanels, ShellScene::Program::Starts},
    ShellScene{"The installed icon on panels", sceneInstalledIconOnPanels,
               ShellScene::Program::Starts},
    ShellScene{"The icon in embedding trays", sceneEmbeddedIconOnPanels,
               ShellScene::Program::Starts},
    ShellScene{"An embedding tray", sceneEmbeddedIcon, ShellScene::Program::Starts},
    ShellScene{"How long toasts stay", sceneToastTimes, ShellScene::Program::Starts},
    ShellScene{"A toast is in nobody's way", sceneToastInTheWay, ShellScene::Program::Starts},
    ShellScene{"The corners of toasts", sceneToastCorners, ShellScene::Program::Starts},
    ShellScene{"One toast at a time", sceneToastsInARow, ShellScene::Program::Starts},
    ShellScene{"Rules run from outside", sceneRunRule, ShellScene::Program::Starts},
    ShellScene{"Rules run where nobody waits", sceneRunRuleAlone, ShellScene::Program::Starts},
    ShellScene{"The list of rules", sceneListRules, ShellScene::Program::Starts},
    ShellScene{"Light and dark", sceneColorScheme, ShellScene::Program::Starts},
    ShellScene{"A style of the user's", sceneNamedStyle, ShellScene::Program::Starts},
    ShellScene{"Reports", sceneDiagnose, ShellScene::Program::Starts},
    ShellScene{"No plugin for SVG", sceneNoSvgPlugin, ShellScene::Program::Starts},
    ShellScene{"A sound that nobody knows", sceneUnknownSound, ShellScene::Program::Starts},
};

}  // namespace

int main(int argc, char *argv[]) {
    // The session bus is asked through it.
    const QCoreApplication application(argc, argv);
    return playAll<ShellStage>(argc, argv, kScenes);
}
