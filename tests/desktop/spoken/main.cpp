// KestrelBay as a screen reader tells it, and by keys alone, on a small screen.

#include <array>

#include <QCoreApplication>

#include "desktop/spoken/SpokenScenes.h"
#include "desktop/stage/Play.h"

namespace {

using namespace kestrelbay::desktop;
using SpokenScene = Scene<SpokenStage>;

constexpr auto kStarts = SpokenScene::Program::Starts;
constexpr std::array kScenes{
    SpokenScene{"The guide", sceneSpokenGuide, kStarts},
    SpokenScene{"The rules", sceneSpokenRules, kStarts},
    SpokenScene{"The settings", sceneSpokenSettings, kStarts},
    SpokenScene{"The options of a rule", sceneSpokenOptions, kStarts},
    SpokenScene{"Questions and their answers", sceneSpokenQuestions, kStarts},
    SpokenScene{"A hotkey by keys alone", sceneHotkeyByKeysAlone, kStarts},
    SpokenScene{"Text twice as large", sceneLargeText, kStarts},
    SpokenScene{"High contrast", sceneHighContrast, kStarts},
};

}  // namespace

int main(int argc, char *argv[]) {
    const QCoreApplication application(argc, argv);
    // A widespread small one.
    return playAll<SpokenStage>(
        argc, argv, kScenes,
        {QStringLiteral("-screen"), QStringLiteral("0"), QStringLiteral("1366x768x24")});
}
