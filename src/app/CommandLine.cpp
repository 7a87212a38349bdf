#include "app/CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <cstdlib>
#include <iostream>

#include "app/instance/ApplicationService.h"
#include "model/RuleJson.h"

namespace kestrelbay {

namespace {

QString actionNames() {
    QStringList names;
    for (const QLatin1StringView name : actions::kAll)
        names.append(name);
    return names.join(QStringLiteral(", "));
}

/// What was typed, for a message: no longer than a line.
QString quoted(const QString &text) {
    constexpr qsizetype kMost = 60;
    return u'"' + (text.size() > kMost ? text.left(kMost) + u'…' : text) + u'"';
}

struct Options {
    QCommandLineOption action{
        QStringLiteral("action"),
        QStringLiteral("Have the running instance carry out <name>: %1.").arg(actionNames()),
        QStringLiteral("name")};
    QCommandLineOption rule{
        QStringLiteral("rule"),
        QStringLiteral("The rule that --action=run-rule is to carry out, as its hotkey would."),
        QStringLiteral("id")};
    QCommandLineOption listRules{
        QStringLiteral("list-rules"),
        QStringLiteral("Print the id, application and hotkey of each rule, and end.")};
    QCommandLineOption json{QStringLiteral("json"), QStringLiteral("Print the rules as JSON.")};
    QCommandLineOption exportFile{
        QStringLiteral("export"),
        QStringLiteral("Write all rules to <file>, for another machine, and end."),
        QStringLiteral("file")};
    QCommandLineOption importFile{
        QStringLiteral("import"),
        QStringLiteral("Show what the rules of <file> would add to those here, add them if you "
                       "say so, and end."),
        QStringLiteral("file")};
    QCommandLineOption yes{QStringLiteral("yes"),
                           QStringLiteral("Add what --import shows without asking.")};
    QCommandLineOption diagnose{
        QStringLiteral("diagnose"),
        QStringLiteral("Print what a report of a problem should say, and end.")};
    QCommandLineOption style{QStringLiteral("style"),
                             QStringLiteral("Use this style of Qt instead of the desktop's look."),
                             QStringLiteral("name")};
    QCommandLineOption platform{
        QStringLiteral("platform"),
        QStringLiteral("Show windows by this platform plugin of Qt instead of the one that suits "
                       "the session."),
        QStringLiteral("name")};
    QCommandLineOption traceStartup{
        QStringLiteral("trace-startup"),
        QStringLiteral("Write to standard error how long each step of the start takes.")};
    /// What a session manager starts programs with that were running at log-out.
    QCommandLineOption session{QStringLiteral("session"), {}, QStringLiteral("id")};
};

/// Empty when the options go together.
QString problemWith(const QCommandLineParser &parser, const Options &options) {
    const QString action = parser.value(options.action);
    if (parser.isSet(options.action) &&
        std::ranges::find(actions::kAll, action) == actions::kAll.end())
        return QStringLiteral("there is no action %1, only %2").arg(quoted(action), actionNames());
    const bool runsRule = action == actions::kRunRule;
    if (runsRule != parser.isSet(options.rule))
        return runsRule ? QStringLiteral("--action=run-rule needs --rule=ID")
                        : QStringLiteral("--rule goes with --action=run-rule only");
    if (const QString id = parser.value(options.rule); runsRule && !ruleIdFromText(id))
        return QStringLiteral("%1 is no id of a rule, as --list-rules prints them").arg(quoted(id));
    if (parser.isSet(options.json) && !parser.isSet(options.listRules))
        return QStringLiteral("--json goes with --list-rules only");
    if (parser.isSet(options.yes) && !parser.isSet(options.importFile))
        return QStringLiteral("--yes goes with --import only");
    if (parser.isSet(options.importFile) && parser.isSet(options.exportFile))
        return QStringLiteral("--import and --export do not go together");
    for (const QCommandLineOption &option : {options.importFile, options.exportFile}) {
        if (parser.isSet(option) && parser.value(option).isEmpty())
            return QStringLiteral("--%1 needs the name of a file").arg(option.names().first());
    }
    return {};
}

}  // namespace

Request readCommandLine(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Binds global keyboard shortcuts to applications."));
    parser.addHelpOption();
    parser.addVersionOption();
    Options options;
    options.session.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOptions({options.action, options.rule, options.listRules, options.json,
                       options.exportFile, options.importFile, options.yes, options.diagnose,
                       options.style, options.platform, options.traceStartup, options.session});
    parser.process(application);
    if (const QString problem = problemWith(parser, options); !problem.isEmpty())
        std::exit(fail(problem));
    Request request{.action = parser.value(options.action),
                    .ruleId = parser.value(options.rule),
                    .diagnose = parser.isSet(options.diagnose),
                    .isStyleNamed = parser.isSet(options.style),
                    .qtPlatform = parser.value(options.platform),
                    .tracesStartup = parser.isSet(options.traceStartup),
                    .listRules = std::nullopt,
                    .exportFile = parser.value(options.exportFile),
                    .importFile = parser.value(options.importFile),
                    .isImportConfirmed = parser.isSet(options.yes)};
    if (parser.isSet(options.listRules))
        request.listRules =
            parser.isSet(options.json) ? RuleListFormat::Json : RuleListFormat::Text;
    return request;
}

int fail(const QString &problem) {
    std::cerr << "KestrelBay: " << qPrintable(problem) << '\n';
    return EXIT_FAILURE;
}

}  // namespace kestrelbay
