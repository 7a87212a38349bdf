#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QIcon>
#include <QScopeGuard>
#include <QSessionManager>
#include <QTimer>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>

#include "app/AppDelegate.h"
#include "app/DiagnosticReport.h"
#include "app/TerminationSignals.h"
#include "app/instance/RunningInstance.h"
#include "platform/Platform.h"
#include "platform/SystemLog.h"
#include "tasks/Timers.h"

namespace {

struct Request {
    /// Empty for a plain start.
    QString action;
    bool diagnose = false;
};

QString actionNames() {
    QStringList names;
    for (const QLatin1StringView name : kestrelbay::actions::kAll)
        names.append(name);
    return names.join(QStringLiteral(", "));
}

int fail(const QString &problem) {
    std::cerr << "KestrelBay: " << qPrintable(problem) << '\n';
    return EXIT_FAILURE;
}

/// What the command line asks for. Answers --help and --version, and refuses what
/// it does not know. Works without a display.
Request readCommandLine(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Binds global keyboard shortcuts to applications."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption action(
        QStringLiteral("action"),
        QStringLiteral("Have the running instance carry out <name>: %1.").arg(actionNames()),
        QStringLiteral("name"));
    const QCommandLineOption diagnose(
        QStringLiteral("diagnose"),
        QStringLiteral("Print what a report of a problem should say, and end."));
    // What a session manager starts programs with that were running at log-out.
    QCommandLineOption session(QStringLiteral("session"), {}, QStringLiteral("id"));
    session.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOptions({action, diagnose, session});
    parser.process(application);
    const QString name = parser.value(action);
    if (parser.isSet(action) &&
        std::ranges::find(kestrelbay::actions::kAll, name) == kestrelbay::actions::kAll.end()) {
        std::cerr << "KestrelBay: there is no action \"" << qPrintable(name) << "\", only "
                  << qPrintable(actionNames()) << '\n';
        std::exit(EXIT_FAILURE);
    }
    return {.action = name, .diagnose = parser.isSet(diagnose)};
}

/// The running instance's view, or our own when there is none. Works without a
/// display.
int diagnose(int argc, char **argv, kestrelbay::Platform &platform) {
    const QCoreApplication application(argc, argv);
    const std::optional<QString> running = kestrelbay::RunningInstance::diagnosticReport();
    std::cout << qUtf8Printable(running ? *running
                                        : kestrelbay::diagnosticReport(platform, nullptr));
    return EXIT_SUCCESS;
}

/// Where Qt's own messages go. Its handler is a plain function without user data.
kestrelbay::SystemLog *messageLog = nullptr;

/// Sends what Qt itself has to say to the system log, where the user looks.
void forwardMessage(QtMsgType type, const QMessageLogContext & /*context*/,
                    const QString &message) {
    const bool plain = type == QtDebugMsg || type == QtInfoMsg;
    messageLog->write(
        (plain ? QStringLiteral("KestrelBay: ") : QStringLiteral("KestrelBay [WARN] ")) + message);
}

}  // namespace

int main(int argc, char **argv) {
    QCoreApplication::setApplicationName(QStringLiteral("KestrelBay"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KESTRELBAY_VERSION));
    QGuiApplication::setDesktopFileName(kestrelbay::ApplicationService::kName);
    const Request request = argc > 1 ? readCommandLine(argc, argv) : Request();

    const std::unique_ptr<kestrelbay::Platform> platform = kestrelbay::makePlatform();
    if (request.diagnose)
        return diagnose(argc, argv, *platform);
    if (kestrelbay::storageDirectory(*platform).isEmpty())
        return fail(QStringLiteral("there is no folder for application data (set HOME)"));
    if (const QString problem = platform->startupProblem(); !problem.isEmpty())
        return fail(problem);

    // Launched programs begin where this one is. They expect to be at home, wherever
    // this one was started.
    QDir::setCurrent(QDir::homePath());

    QApplication application(argc, argv);
    // Launch at login is the user's choice; session managers need not restore it.
    QObject::connect(
        &application, &QGuiApplication::saveStateRequest, &application,
        [](QSessionManager &manager) { manager.setRestartHint(QSessionManager::RestartNever); });
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/org.kestrelbay.KestrelBay.svg")));
    messageLog = &platform->systemLog();
    qInstallMessageHandler(forwardMessage);
    const auto restoreMessages = qScopeGuard([] { qInstallMessageHandler(nullptr); });
    const kestrelbay::TerminationSignals signals([] { QCoreApplication::exit(EXIT_SUCCESS); });
    platform->setSessionEndedHandler([&platform] {
        platform->systemLog().write(
            QStringLiteral("KestrelBay [WARN] The connection to the display is gone, ending"));
        QCoreApplication::exit(EXIT_FAILURE);
    });

    kestrelbay::QtTimers timers;
    kestrelbay::AppDelegate delegate(*platform, timers);
    if (!delegate.registerOnSessionBus()) {
        switch (kestrelbay::RunningInstance::request(request.action)) {
            case kestrelbay::RunningInstance::Answer::Done:
                return EXIT_SUCCESS;
            case kestrelbay::RunningInstance::Answer::NoAnswer:
                return fail(QStringLiteral("the running instance does not answer"));
            case kestrelbay::RunningInstance::Answer::Nobody:
                break;
        }
    }
    if (request.action == kestrelbay::actions::kQuit)
        return EXIT_SUCCESS;
    // Before any request of others is heard.
    delegate.applicationDidFinishLaunching();
    QTimer::singleShot(0, &delegate,
                       [&delegate, action = request.action] { delegate.performAction(action); });
    return QApplication::exec();
}
