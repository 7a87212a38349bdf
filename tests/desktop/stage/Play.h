#pragma once

#include <cstdio>
#include <exception>
#include <optional>
#include <span>

#include "desktop/stage/Stage.h"

namespace kestrelbay::desktop {

/// One scene of a story that is played on a stage of that type.
template <class StageType>
struct Scene {
    enum class Program { Starts, IsRunning };

    const char *name;
    void (*play)(StageType &);
    Program program = Program::IsRunning;
};

/// A scene that is played on every kind of display, or on every one of a kind.
template <class StageType, auto play>
void anywhere(StageType &stage) {
    play(stage);
}

/// What the command line asks for; tells how to ask when it makes no sense. Some stories are
/// played under these Wayland compositors as well.
[[nodiscard]] std::optional<StageOptions> readStageOptions(int argc, char **argv,
                                                           const QStringList &compositors = {});

/// Plays them in this order. The exit code of the program: 0 when everything was seen.
template <class StageType>
int play(const StageOptions &options, std::span<const Scene<StageType>> scenes) {
    try {
        StageType stage(options);
        for (const Scene<StageType> &scene : scenes) {
            const QString name = QString::fromUtf8(scene.name);
            if (!name.contains(options.only))
                continue;
            stage.story().scene(name, [&] {
                // Without the program every step would wait in vain.
                if (scene.program == Scene<StageType>::Program::IsRunning)
                    (void)stage.program();
                scene.play(stage);
            });
        }
        const QString title = QStringLiteral("KestrelBay under ") + options.windowManager;
        return stage.story().conclude(title) ? 0 : 1;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "no stage: %s\n", error.what());
        return 1;
    }
}

/// The same for a story under window managers only, the X server started with these arguments
/// besides the usual ones.
template <class StageType>
int playAll(int argc, char **argv, std::span<const Scene<StageType>> scenes,
            const QStringList &serverArguments = {}) {
    auto options = readStageOptions(argc, argv);
    if (!options)
        return 2;
    options->serverArguments = serverArguments;
    return play(*options, scenes);
}

}  // namespace kestrelbay::desktop
