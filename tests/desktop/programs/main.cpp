// Ordinary programs of many toolkits, with KestrelBay between them.

#include <utility>

#include "desktop/programs/Programs.h"
#include "desktop/stage/Play.h"

namespace {

using namespace kestrelbay::desktop;
using StageScene = Scene<Stage>;

void sceneStart(Stage &stage) {
    stage.useRules(programRules(stage.desktop().home()));
    HomeFolder::write(stage.desktop().home().rulesPath(), stage.rulesBytes());
    // Chromium's sandbox wants a user other than root, which the tests may be run by.
    stage.setProgramVariable(QStringLiteral("QTWEBENGINE_DISABLE_SANDBOX"), QStringLiteral("1"));
    // Java asks the system for the home folder, and jEdit shows help and tips at its start.
    const QString home = stage.desktop().home().path();
    stage.setProgramVariable(QStringLiteral("JAVA_TOOL_OPTIONS"),
                             QStringLiteral("-Duser.home=") + home);
    HomeFolder::write(home + QStringLiteral("/.jedit/properties"),
                      "firstTime=false\ntip.show=false\n");
    stage.story().step({
        .done = QStringLiteral("started KestrelBay"),
        .expected = QStringLiteral("its hotkeys are grabbed"),
        .act = [&] { stage.startProgram(); },
        .seen = [&] { return stage.grabbedCount() == stage.ruleCount(); },
        .saw =
            [&] {
                return QStringLiteral("%1 of %2 keys grabbed")
                    .arg(stage.grabbedCount())
                    .arg(stage.ruleCount());
            },
    });
}

template <std::size_t number>
void sceneProgram(Stage &stage) {
    showsOneProgram(stage, kPrograms[number]);
}

/// Each under its name.
template <std::size_t... number>
constexpr auto scenesOf(std::index_sequence<number...>) {
    return std::array{StageScene{"Start", sceneStart, StageScene::Program::Starts},
                      StageScene{kPrograms[number].name, sceneProgram<number>}...};
}

constexpr auto kScenes = scenesOf(std::make_index_sequence<kPrograms.size()>());

}  // namespace

int main(int argc, char *argv[]) {
    return playAll<Stage>(argc, argv, kScenes);
}
