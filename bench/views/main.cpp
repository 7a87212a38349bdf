#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLoggingCategory>

#include <cstdlib>

#include "platform/SystemSettings.h"
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
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return EXIT_FAILURE;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return EXIT_SUCCESS;
}
