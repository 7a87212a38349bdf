#include "desktop/stage/ScenarioRules.h"

namespace kestrelbay::desktop {

namespace {

QString systemEntry(const char *name) {
    return QStringLiteral("/usr/share/applications/%1.desktop").arg(QLatin1String(name));
}

}  // namespace

std::vector<RuleSpec> scenarioRules(const HomeFolder &home, const Cast &cast) {
    const QString recorder = home.applicationPath(QStringLiteral("kestrel-arguments.desktop"));
    const RuleSpec terminal{.appName = QStringLiteral("Terminal"),
                            .appPath = systemEntry(cast.terminal.entry)};
    const RuleSpec otherTerminal{.appName = QStringLiteral("Other terminal"),
                                 .appPath = systemEntry(cast.otherTerminal.entry)};
    const RuleSpec editor{.appName = QStringLiteral("Editor"),
                          .appPath = systemEntry(cast.editor.entry)};
    const RuleSpec files{.appName = QStringLiteral("Files"),
                         .appPath = systemEntry(cast.files.entry)};
    std::vector<RuleSpec> rules;
    const auto add = [&](RuleSpec rule, const Key &key) -> RuleSpec & {
        rule.key = key;
        rule.modifierFlags = cast.modifierFlags;
        return rules.emplace_back(std::move(rule));
    };
    const auto argument = [](RuleSpec &rule, const char *kind, const QString &text) {
        rule.argumentKind = QLatin1String(kind);
        rule.launchArguments = text;
    };

    add(terminal, scenario::kTerminal);
    add(otherTerminal, scenario::kOtherTerminal);
    add(terminal, scenario::kTerminalEitherSide).modifierFlags = flags::kCommand;
    add(terminal, scenario::kTerminalCycle).repeatAction = QStringLiteral("cycleWindows");
    argument(add(terminal, scenario::kTerminalArguments), "launchArgs",
             QLatin1String(cast.terminalArguments));

    add(editor, scenario::kEditorToggle).repeatAction = QStringLiteral("toggleVisibility");
    add(editor, scenario::kEditorCycle).repeatAction = QStringLiteral("cycleWindows");
    argument(add(editor, scenario::kEditorFile), "filePath",
             QStringLiteral("~/notes/") + QLatin1String(scenario::kFileName));
    argument(add(editor, scenario::kUrl), "urlScheme", QLatin1String(scenario::kUrlText));

    add(files, scenario::kFiles);
    argument(add(files, scenario::kFilesFolder), "filePath",
             QStringLiteral("~/") + QLatin1String(scenario::kFolderName));

    argument(
        add({.appName = QStringLiteral("Recorder"), .appPath = recorder}, scenario::kArguments),
        "launchArgs", QStringLiteral(R"(--user-data-dir="/tmp/a b" -v 'it\'s' "x")"));
    argument(add({.appName = QLatin1String(scenario::kMarkerName), .appPath = recorder},
                 scenario::kMarker),
             "launchArgs", QLatin1String(scenario::kMarkerArgument));
    RuleSpec &disabled =
        add({.appName = QStringLiteral("Disabled"), .appPath = recorder}, scenario::kDisabled);
    argument(disabled, "launchArgs", QLatin1String(scenario::kDisabledArgument));
    disabled.isEnabled = false;
    return rules;
}

}  // namespace kestrelbay::desktop
