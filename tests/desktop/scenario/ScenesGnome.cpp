#include "desktop/scenario/Scenes.h"

namespace kestrelbay::desktop {

using namespace std::chrono_literals;

void sceneGnomeExtension(GnomeStage &stage) {
    const auto saw = [&] {
        return stage.hasHotkeys() ? QStringLiteral("a hotkey") : QStringLiteral("none");
    };
    stage.story().step({
        .done = QStringLiteral("disabled KestrelBay's extension"),
        .expected = QStringLiteral("the program in front gets the keys, KestrelBay runs on"),
        .act = [&] { stage.desktop().enableExtension(false); },
        .seen = [&] { return !stage.hasHotkeys(); },
        .saw = saw,
        .objection =
            [&] {
                return stage.program().isRunning() ? QString()
                                                   : QStringLiteral("KestrelBay has ended");
            },
    });
    stage.story().step({
        .done = QStringLiteral("enabled it again"),
        .expected = QStringLiteral("within a second KestrelBay has its hotkeys again"),
        .act = [&] { stage.desktop().enableExtension(true); },
        .seen = [&] { return stage.hasHotkeys(); },
        .saw = saw,
        .timeout = 1s,
    });
}

}  // namespace kestrelbay::desktop
