#pragma once

#include "desktop/stage/ShellStage.h"

namespace kestrelbay::desktop {

// Each scene is a few steps on one subject, and starts KestrelBay with the settings
// that it needs.

// ShellGuide.cpp
void sceneFirstStart(ShellStage &stage);
void sceneGuideAgain(ShellStage &stage);
void sceneGuideClosed(ShellStage &stage);

// ShellTray.cpp
void sceneNotifierMenu(ShellStage &stage);
void sceneNotifierClicks(ShellStage &stage);
void sceneEmbeddedIcon(ShellStage &stage);
void sceneChineseMenu(ShellStage &stage);

// ShellTrayIcon.cpp
void sceneIconOnPanels(ShellStage &stage);
void sceneEmbeddedIconOnPanels(ShellStage &stage);
void sceneInstalledIconOnPanels(ShellStage &stage);

// ShellWithoutTray.cpp
void sceneNoTray(ShellStage &stage);
void sceneTrayComesLate(ShellStage &stage);
void sceneTrayComesBack(ShellStage &stage);

// ShellToasts.cpp
void sceneToastTimes(ShellStage &stage);
void sceneToastInTheWay(ShellStage &stage);
void sceneToastCorners(ShellStage &stage);
void sceneToastsInARow(ShellStage &stage);

// ShellFromOutside.cpp
void sceneRunRule(ShellStage &stage);
void sceneRunRuleAlone(ShellStage &stage);
void sceneListRules(ShellStage &stage);

// ShellReports.cpp
void sceneColorScheme(ShellStage &stage);
void sceneNamedStyle(ShellStage &stage);
void sceneDiagnose(ShellStage &stage);
void sceneNoSvgPlugin(ShellStage &stage);
void sceneUnknownSound(ShellStage &stage);

}  // namespace kestrelbay::desktop
