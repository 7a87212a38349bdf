#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QScopeGuard>
#include <QSessionManager>
#include <QTimer>

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>
#include <utility>

#include "app/AppDelegate.h"
#include "app/CommandLine.h"
#include "app/DiagnosticReport.h"
#include "app/RuleList.h"
#include "app/RuleTransferCommands.h"
#include "app/instance/RunningInstance.h"
#include "app/process/QtArguments.h"
#include "app/process/SessionLoss.h"
#include "app/process/StartupTrace.h"
#include "app/process/TerminationSignals.h"
#include "hotkeys/ShortcutManager.h"
#include "model/RuleFile.h"
#include "model/RuleJson.h"
#include "platform/Platform.h"
#include "platform/SystemLog.h"
#include "tasks/Timers.h"
#include "ui/look/KeyboardUse.h"

namespace {

constexpr QLatin1StringView kCannotBeUsed{"rules.json cannot be used: "};
constexpr QLatin1StringView kNoSuchRule{"there is no rule with the id "};

/// The running instance's view, or our own when there is none. Works without a
/// display.
int diagnose(int argc, char **argv, kestrelbay::Platform &platform) {
    const QCoreApplication application(argc, argv);
    const std::optional<QString> running = kestrelbay::RunningInstance::diagnosticReport();
    std::cout << qUtf8Printable(running ? *running
                                        : kestrelbay::diagnosticReport(platform, nullptr));
    return EXIT_SUCCESS;
}

kestrelbay::RuleFile::LoadResult rulesOnDisk(const kestrelbay::Platform &platform) {
    using kestrelbay::RuleFile;
    return RuleFile(RuleFile::pathIn(kestrelbay::storageDirectory(platform))).load();
}

int listRules(const kestrelbay::Platform &platform, kestrelbay::RuleListFormat format) {
    const kestrelbay::RuleFile::LoadResult loaded = rulesOnDisk(platform);
    if (loaded.status == kestrelbay::RuleFile::LoadStatus::Unusable)
        return kestrelbay::fail(kCannotBeUsed + loaded.problem);
    std::cout << kestrelbay::ruleList(loaded, format).constData() << std::flush;
    return std::cout ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// Why the instance that is about to start could not run the rule; empty when it can.
QString problemWithRule(const kestrelbay::Platform &platform, const QString &id) {
    const kestrelbay::RuleFile::LoadResult loaded = rulesOnDisk(platform);
    if (loaded.status == kestrelbay::RuleFile::LoadStatus::Unusable)
        return kCannotBeUsed + loaded.problem;
    const bool isThere =
        std::ranges::find(loaded.rules, kestrelbay::ruleIdFromText(id).value_or(QUuid()),
                          &kestrelbay::ShortcutRule::id) != loaded.rules.end();
    return isThere ? QString() : kNoSuchRule + id;
}

/// Has the running instance do it. The code to end with; none when this process has to do it.
std::optional<int> handOver(const kestrelbay::Request &request) {
    using Answer = kestrelbay::RunningInstance::Answer;
    switch (kestrelbay::RunningInstance::request(request.action, request.ruleId)) {
        case Answer::Done:
            return EXIT_SUCCESS;
        case Answer::NoAnswer:
            return kestrelbay::fail(QStringLiteral("the running instance does not answer"));
        case Answer::NoSuchRule:
            return kestrelbay::fail(kNoSuchRule + request.ruleId);
        case Answer::NoBus:
            // Otherwise each key press would start an instance that the next one cannot find.
            if (request.action == kestrelbay::actions::kRunRule)
                return kestrelbay::fail(
                    QStringLiteral("rules are run over the session bus, and there is none"));
            break;
        case Answer::Nobody:
            break;
    }
    return request.action == kestrelbay::actions::kQuit ? std::optional(EXIT_SUCCESS)
                                                        : std::nullopt;
}

/// Qt takes it from either place.
bool isStyleNamed(const kestrelbay::Request &request) {
    return request.isStyleNamed || !qEnvironmentVariableIsEmpty("QT_STYLE_OVERRIDE");
}

int importRules(int argc, char **argv, kestrelbay::Platform &platform,
                const kestrelbay::Request &request) {
    const QCoreApplication application(argc, argv);
    return kestrelbay::ImportCommand{.storageDirectory = kestrelbay::storageDirectory(platform),
                                     .catalog = platform.applicationCatalog(),
                                     .handOver = kestrelbay::RunningInstance::importRules,
                                     .in = std::cin,
                                     .out = std::cout,
                                     .canAsk = ::isatty(STDIN_FILENO) == 1,
                                     .isConfirmed = request.isImportConfirmed}
        .run(request.importFile);
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
    kestrelbay::StartupTrace trace;
    QCoreApplication::setApplicationName(QStringLiteral("KestrelBay"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KESTRELBAY_VERSION));
    QGuiApplication::setDesktopFileName(kestrelbay::ApplicationService::kName);
    const kestrelbay::Request request =
        argc > 1 ? kestrelbay::readCommandLine(argc, argv) : kestrelbay::Request();

    trace.setEnabled(request.tracesStartup);
    trace.step("command line");

    const std::unique_ptr<kestrelbay::Platform> platform = kestrelbay::makePlatform();
    if (request.diagnose)
        return diagnose(argc, argv, *platform);
    if (kestrelbay::storageDirectory(*platform).isEmpty())
        return kestrelbay::fail(
            QStringLiteral("there is no folder for application data (set HOME)"));
    if (request.listRules)
        return listRules(*platform, *request.listRules);
    if (!request.exportFile.isEmpty())
        return kestrelbay::exportRulesCommand(kestrelbay::storageDirectory(*platform),
                                              request.exportFile);
    if (!request.importFile.isEmpty())
        return importRules(argc, argv, *platform, request);
    if (!request.action.isEmpty()) {
        // Before a display is needed, which whoever asks may not have.
        const QCoreApplication application(argc, argv);
        if (const std::optional<int> code = handOver(request))
            return *code;
    }
    if (request.action == kestrelbay::actions::kRunRule) {
        if (const QString problem = problemWithRule(*platform, request.ruleId); !problem.isEmpty())
            return kestrelbay::fail(problem);
    }
    if (const QString problem = platform->startupProblem(); !problem.isEmpty())
        return kestrelbay::fail(problem);

    // Launched programs begin where this one is. They expect to be at home, wherever
    // this one was started.
    QDir::setCurrent(QDir::homePath());
    trace.step("session looked at");

    // Whoever sees the hotkeys taken may end the program already.
    const kestrelbay::TerminationSignals signals([] { QCoreApplication::exit(EXIT_SUCCESS); });
    auto manager = kestrelbay::AppDelegate::makeManager(
        *platform, {.rulesChanged = [&trace](const auto &) { trace.step("rules read"); }});
    trace.step("hotkeys in place");

    kestrelbay::QtArguments arguments(
        argc, argv, request.qtPlatform.isEmpty() ? platform->qtPlatform() : request.qtPlatform);
    QApplication application(arguments.count(), arguments.values());
    trace.step("application object");
    // Launch at login is the user's choice; session managers need not restore it.
    QObject::connect(
        &application, &QGuiApplication::saveStateRequest, &application,
        [](QSessionManager &sessions) { sessions.setRestartHint(QSessionManager::RestartNever); });
    const kestrelbay::KeyboardUse keyboardUse;
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/org.kestrelbay.KestrelBay.svg")));
    messageLog = &platform->systemLog();
    qInstallMessageHandler(forwardMessage);
    const auto restoreMessages = qScopeGuard([] { qInstallMessageHandler(nullptr); });
    const kestrelbay::SessionLoss sessionLoss(*platform);

    kestrelbay::QtTimers timers;
    kestrelbay::AppDelegate delegate(*platform, timers, std::move(manager), isStyleNamed(request));
    trace.step("language, colours, menu");
    if (!delegate.registerOnSessionBus()) {
        if (const std::optional<int> code = handOver(request))
            return *code;
    }
    trace.step("session bus");
    // Before any request of others is heard.
    delegate.applicationDidFinishLaunching();
    trace.step("status item, applications of the rules");
    QTimer::singleShot(0, &delegate, [&delegate, &request, &trace] {
        trace.step("event loop");
        if (request.action == kestrelbay::actions::kRunRule)
            delegate.runRule(request.ruleId, qEnvironmentVariable("XDG_ACTIVATION_TOKEN"));
        else
            delegate.performAction(request.action);
    });
    return QApplication::exec();
}
