#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>

#include <cstdlib>
#include <iostream>

#include "app/AppDelegate.h"
#include "app/QtMessages.h"
#include "app/TerminationSignals.h"
#include "platform/Platform.h"
#include "platform/SystemLog.h"

namespace {

/// Answers --help and --version, and refuses what it does not know. Works without
/// a display.
void parseCommandLine(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Binds global keyboard shortcuts to applications."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(application);
}

}  // namespace

int main(int argc, char **argv) {
    QCoreApplication::setApplicationName(QStringLiteral("KestrelBay"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KESTRELBAY_VERSION));
    QGuiApplication::setDesktopFileName(kestrelbay::ApplicationService::kName);
    if (argc > 1)
        parseCommandLine(argc, argv);

    const std::unique_ptr<kestrelbay::Platform> platform = kestrelbay::makePlatform();
    if (const QString problem = platform->startupProblem(); !problem.isEmpty()) {
        std::cerr << "KestrelBay: " << qPrintable(problem) << '\n';
        return EXIT_FAILURE;
    }

    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const kestrelbay::QtMessages messages(platform->systemLog());
    const kestrelbay::TerminationSignals signals([] { QCoreApplication::exit(EXIT_SUCCESS); });
    platform->setSessionEndedHandler([&platform] {
        platform->systemLog().write(
            QStringLiteral("KestrelBay [WARN] The connection to the display is gone, ending"));
        QCoreApplication::exit(EXIT_FAILURE);
    });

    kestrelbay::AppDelegate delegate(*platform);
    QTimer::singleShot(0, &delegate, &kestrelbay::AppDelegate::applicationDidFinishLaunching);
    return QApplication::exec();
}
