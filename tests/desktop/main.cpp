// A whole desktop session told step by step: a real window manager, real programs,
// real key presses, and KestrelBay between them.

#include <cstdio>
#include <exception>
#include <iterator>
#include <optional>

#include <QStringList>

#include "desktop/Scenes.h"

namespace {

using namespace kestrelbay::desktop;

struct Scene {
    const char *name;
    void (*play)(Stage &);
};

// The global switch cannot be turned from outside the program; its step belongs
// after the disabled rule.
constexpr Scene kScenes[] = {
    {"Start, and a hotkey that another client holds", sceneStart},
    {"Launch and bring forward", sceneLaunchAndForward},
    {"Left and right", sceneSides},
    {"Locks", sceneLocks},
    {"A disabled rule", sceneDisabledRule},
    {"A held key", sceneHeldKey},
    {"Hide and show", sceneHideAndShow},
    {"Cycle windows", sceneCycle},
    {"Open a URL", sceneUrl},
    {"Open a file", sceneFile},
    {"Open a folder", sceneFolder},
    {"New instances with arguments", sceneArguments},
    {"Hung targets", sceneHungTargets},
    {"A window manager takes over", sceneWindowManagerRestart},
    {"Quit", sceneQuit},
    {"A broken rules.json", sceneBrokenRules},
    {"The X server dies", sceneServerDies},
};

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
            stage.story().scene(QString::fromUtf8(scene.name), [&] { scene.play(stage); });
        return stage.story().conclude(QStringLiteral("KestrelBay under ") + options->windowManager)
                   ? 0
                   : 1;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "desktop_scenario: %s\n", error.what());
        return 1;
    }
}
