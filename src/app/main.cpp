#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTimer>

#include <cstdlib>
#include <iostream>

#include "app/AppDelegate.h"
#include "app/QtMessages.h"
#include "app/RunningInstance.h"
#include "app/TerminationSignals.h"
#include "platform/Platform.h"
#include "platform/SystemLog.h"

namespace {

/// What the command line asks for, empty for a plain start. Answers --help and
/// --version, and refuses what it does not know. Works without a display.
QString requestedAction(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Binds global keyboard shortcuts to applications."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption action(
        QStringLiteral("action"),
        QStringLiteral("Have the running instance carry out <name>: toggle-all-shortcuts."),
        QStringLiteral("name"));
    parser.addOption(action);
    parser.process(application);
    return parser.value(action);
}

}  // namespace

int main(int argc, char **argv) {
    QCoreApplication::setApplicationName(QStringLiteral("KestrelBay"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KESTRELBAY_VERSION));
    QGuiApplication::setDesktopFileName(kestrelbay::ApplicationService::kName);
    const QString action = argc > 1 ? requestedAction(argc, argv) : QString();

    const std::unique_ptr<kestrelbay::Platform> platform = kestrelbay::makePlatform();
    if (const QString problem = platform->startupProblem(); !problem.isEmpty()) {
        std::cerr << "KestrelBay: " << qPrintable(problem) << '\n';
        return EXIT_FAILURE;
    }

    // Launched programs begin where this one is. They expect to be at home, wherever
    // this one was started.
    QDir::setCurrent(QDir::homePath());

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
    if (!delegate.registerOnSessionBus() && kestrelbay::RunningInstance::request(action))
        return EXIT_SUCCESS;
    QTimer::singleShot(0, &delegate, [&delegate, action] {
        delegate.applicationDidFinishLaunching();
        delegate.performAction(action);
    });
    return QApplication::exec();
}
