#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <cstdlib>

#ifdef __linux__
#include "platform/linux/desktop/JsonUserDefaults.h"
#endif
#include "platform/SystemSettings.h"
#include "settings/Language.h"
#include "settings/SettingsKeys.h"
#include "ui/look/SystemColors.h"
#include "ui/look/SystemStyle.h"

int main(int argc, char **argv) {
    // Painted in memory: what a server does with it is not ours.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Nor does it matter here what the platform cannot do.
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(new kestrelbay::SystemStyle);
    QApplication::setPalette(kestrelbay::systemPalette(kestrelbay::ColorScheme::Light));
#ifdef __linux__
    // As in the program, where every text asks it for the language.
    const QTemporaryDir folder;
    kestrelbay::JsonUserDefaults defaults(folder.filePath(QStringLiteral("settings.json")));
    defaults.setString(QStringLiteral("appLanguage"), QStringLiteral("en"));
    kestrelbay::Language::setDefaults(&defaults);
#endif
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return EXIT_FAILURE;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    kestrelbay::Language::setDefaults(nullptr);
    return EXIT_SUCCESS;
}
