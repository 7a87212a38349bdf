// A whole desktop session told step by step: a real window manager, real programs,
// real key presses, and KestrelBay between them.

#include <array>
#include <cstdio>
#include <exception>
#include <optional>

#include <QStringList>

#include "desktop/Scenes.h"

namespace {

using namespace kestrelbay::desktop;

enum class Program { Starts, IsRunning };

struct Scene {
    const char *name;
    void (*play)(Stage &);
    Program program = Program::IsRunning;
};

constexpr std::array kScenes{
    Scene{"Start, and a hotkey that another client holds", sceneStart, Program::Starts},
    Scene{"Launch and bring forward", sceneLaunchAndForward},
    Scene{"Left and right", sceneSides},
    Scene{"Locks", sceneLocks},
    Scene{"A disabled rule", sceneDisabledRule},
    Scene{"The global switch", sceneGlobalSwitch},
    Scene{"A held key", sceneHeldKey},
    Scene{"Hide and show", sceneHideAndShow},
    Scene{"Cycle windows", sceneCycle},
    Scene{"Open a URL", sceneUrl},
    Scene{"Open a file", sceneFile},
    Scene{"Open a folder", sceneFolder},
    Scene{"New instances with arguments", sceneArguments},
    Scene{"Hung targets", sceneHungTargets},
    Scene{"A window manager takes over", sceneWindowManagerRestart},
    Scene{"Quit", sceneQuit},
    Scene{"A broken rules.json", sceneBrokenRules, Program::Starts},
    Scene{"The X server dies", sceneServerDies, Program::Starts},
};

void play(Stage &stage, const Scene &scene) {
    // Without the program every step would wait in vain.
    if (scene.program == Program::IsRunning)
        (void)stage.program();
    scene.play(stage);
}

std::optional<StageOptions> parse(const QStringList &arguments) {
    StageOptions options;
    options.program = QStringLiteral(KESTRELBAY_PROGRAM);
    for (qsizetype i = 0; i + 1 < arguments.size(); i += 2) {
        if (arguments[i] == u"--wm")
            options.windowManager = arguments[i + 1];
        else if (arguments[i] == u"--artifacts")
            options.artifacts = arguments[i + 1];
        else if (arguments[i] == u"--program")
            options.program = arguments[i + 1];
        else
            return std::nullopt;
    }
    const QStringList known{QStringLiteral("openbox"), QStringLiteral("xfwm4"),
                            QStringLiteral("metacity")};
    if (arguments.size() % 2 != 0 || !known.contains(options.windowManager))
        return std::nullopt;
    return options;
}

}  // namespace

int main(int argc, char *argv[]) {
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments += QString::fromLocal8Bit(argv[i]);
    const auto options = parse(arguments);
    if (!options) {
        std::fputs(
            "usage: desktop_scenario [--wm openbox|xfwm4|metacity] [--artifacts DIR] "
            "[--program PATH]\n",
            stderr);
        return 2;
    }
    try {
        Stage stage(*options);
        for (const Scene &scene : kScenes)
            stage.story().scene(QString::fromUtf8(scene.name), [&] { play(stage, scene); });
        return stage.story().conclude(QStringLiteral("KestrelBay under ") + options->windowManager)
                   ? 0
                   : 1;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "desktop_scenario: %s\n", error.what());
        return 1;
    }
}
