// Takes pictures of everything that KestrelBay shows, in every look.

#include <array>
#include <cstdio>

#include <QCoreApplication>

#include "desktop/shots/Shots.h"
#include "desktop/stage/Play.h"
#include "support/bus/FakeSettingsPortal.h"

namespace {

using namespace kestrelbay::desktop;
using kestrelbay::testing::FakeSettingsPortal;

const std::array kLooks{
    Look{.language = QStringLiteral("en")},
    Look{.language = QStringLiteral("en"), .isDark = true},
    Look{.language = QStringLiteral("zh")},
    Look{.language = QStringLiteral("zh"), .isDark = true},
    Look{.language = QStringLiteral("en"), .scale = QStringLiteral("1.5")},
    Look{.language = QStringLiteral("en"), .scale = QStringLiteral("2")},
    Look{.language = QStringLiteral("en"), .isDark = true, .scale = QStringLiteral("2")},
    Look{.language = QStringLiteral("zh"), .scale = QStringLiteral("2")},
    Look{.language = QStringLiteral("zh"), .isDark = true, .scale = QStringLiteral("2")},
    Look{.language = QStringLiteral("en"), .isContrastHigh = true},
    Look{.language = QStringLiteral("zh"), .isDark = true, .isContrastHigh = true},
    // One that Qt brings, and one of a package of its own.
    Look{.language = QStringLiteral("en"), .style = QStringLiteral("Windows")},
    Look{.language = QStringLiteral("zh"), .style = QStringLiteral("Windows")},
    Look{.language = QStringLiteral("en"), .style = QStringLiteral("Adwaita")},
    Look{.language = QStringLiteral("zh"), .isDark = true, .style = QStringLiteral("Adwaita-Dark")},
};

}  // namespace

int main(int argc, char *argv[]) {
    const QCoreApplication application(argc, argv);
    auto options = readStageOptions(argc, argv);
    if (!options)
        return 2;
    if (options->artifacts.isEmpty())
        options->artifacts = QStringLiteral(".");
    // Room for the largest window at the largest scale.
    options->serverArguments = {QStringLiteral("-screen"), QStringLiteral("0"),
                                QStringLiteral("2560x1600x24")};
    try {
        std::vector<Shot> shots = shellShots();
        shots.insert(shots.end(), preferencesShots().begin(), preferencesShots().end());
        ShotStage stage(*options);
        FakeSettingsPortal portal(stage.busAddress(), FakeSettingsPortal::kPreferLight);
        for (const Look &look : kLooks) {
            portal.setColorScheme(look.isDark ? FakeSettingsPortal::kPreferDark
                                              : FakeSettingsPortal::kPreferLight);
            portal.setContrastHigh(look.isContrastHigh);
            for (const Shot &shot : shots) {
                const QString name =
                    look.name() + QStringLiteral(": ") + QString::fromUtf8(shot.name);
                if (!name.contains(options->only))
                    continue;
                stage.wear(look);
                stage.story().scene(name, [&] { shot.take(stage); });
            }
        }
        return stage.story().hasFailures() ? 1 : 0;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "no stage: %s\n", error.what());
        return 1;
    }
}
