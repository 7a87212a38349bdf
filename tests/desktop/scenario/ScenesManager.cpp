#include "desktop/scenario/Scenes.h"

namespace kestrelbay::desktop {

namespace {

constexpr const char *kHeldName = "Held";
constexpr const char *kHeldArgument = "--held";

RuleSpec recorder(Stage &stage, const Key &key, const char *name, const char *argument) {
    return {.appName = QLatin1String(name),
            .appPath =
                stage.desktop().home().applicationPath(QStringLiteral("kestrel-arguments.desktop")),
            .key = key,
            .argumentKind = QStringLiteral("launchArgs"),
            .launchArguments = QLatin1String(argument)};
}

void managerKeepsKey(Stage &stage, const Chord &hotkey) {
    const auto started = [&] {
        return stage.desktop().processes().withArgument(QLatin1String(kHeldArgument)).size();
    };
    stage.bringFrontProgram();
    const int markers = stage.markers();
    stage.story().step({
        .done = Stage::told(hotkey) + QStringLiteral(", then the marker's key"),
        .expected = QStringLiteral("the window manager has it, KestrelBay only the second"),
        .act =
            [&] {
                stage.press(hotkey);
                // A switcher has the whole keyboard until the modifier is up.
                stage.prepare(
                    QStringLiteral("a free keyboard"), [] {},
                    [&] { return !stage.view().client().keyboardIsTaken(); });
                stage.press(leftCommand(scenario::kMarker));
            },
        .seen = [&] { return stage.markers() == markers + 1; },
        .saw =
            [&] {
                return QStringLiteral("%1 marker, %2 by the first key")
                    .arg(stage.markers() - markers)
                    .arg(started());
            },
        .objection =
            [&] { return started() == 0 ? QString() : QStringLiteral("both had the first"); },
    });
}

}  // namespace

void sceneManagersHotkey(Stage &stage) {
    const Key key = heldKey(stage.windowManager());
    const Chord hotkey = leftCommand(key);
    stage.useRules(
        {recorder(stage, key, kHeldName, kHeldArgument),
         recorder(stage, scenario::kMarker, scenario::kMarkerName, scenario::kMarkerArgument)});
    HomeFolder::write(stage.desktop().home().rulesPath(), stage.rulesBytes());
    stage.prepare(
        QStringLiteral("KestrelBay started with it"), [&] { stage.startProgram(); },
        [&] { return stage.isGrabbed(scenario::kMarker); });

    const QStringList warning{QStringLiteral("KestrelBay [WARN]"), hotkey.text,
                              QLatin1String(kHeldName)};
    stage.story().step({
        .done = QStringLiteral("the window manager holds %1").arg(hotkey.text),
        .expected = QStringLiteral("a warning names the hotkey and its application"),
        .act = [] {},
        .seen = [&] { return stage.program().line(warning).has_value(); },
        .saw =
            [&] { return stage.program().line(warning).value_or(QStringLiteral("no such line")); },
        .needs = Ability::RefusesHeldKeys,
    });
    const QString held = QStringLiteral("Hotkeys held by other programs: ") + hotkey.text;
    QString report;
    stage.story().step({
        .done = QStringLiteral("kestrelbay --diagnose"),
        .expected = u'“' + held + u'”',
        .act = [] {},
        .seen =
            [&] {
                report = stage.startAgain({QStringLiteral("--diagnose")}).output;
                return report.contains(held);
            },
        .saw =
            [&] {
                return report.contains(held) ? QStringLiteral("just that")
                                             : QStringLiteral("other lines");
            },
        .needs = Ability::RefusesHeldKeys,
    });

    // Which of two grabs the key goes to is nobody's promise.
    if (stage.can(Ability::RefusesHeldKeys))
        managerKeepsKey(stage, hotkey);
    stage.endProgram();
    stage.useRules(scenarioRules(stage.desktop().home(), stage.cast()));
}

}  // namespace kestrelbay::desktop
