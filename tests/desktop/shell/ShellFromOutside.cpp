#include "desktop/shell/ShellScenes.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QUuid>

namespace kestrelbay::desktop {

namespace {

const QString &unknownId() {
    static const QString id = QStringLiteral("3F2A9C1E-6B7D-4E21-9A0C-5D8E7F1B2C3D");
    return id;
}

QString inWords(const ShellStage::Ending &ending) {
    return QStringLiteral("exit %1, “%2”").arg(ending.code).arg(ending.output.trimmed());
}

/// Of the first rule whose arguments are those.
QString idOf(const ShellStage &stage, const char *arguments) {
    for (const QJsonValue rule : QJsonDocument::fromJson(stage.rulesBytes()).array()) {
        if (rule[QStringLiteral("launchArguments")] == QLatin1String(arguments))
            return rule[QStringLiteral("id")].toString();
    }
    throw NotPrepared(QStringLiteral("no rule with ") + QLatin1String(arguments));
}

QStringList runRule(const QString &id) {
    return {QStringLiteral("--action=run-rule"), QStringLiteral("--rule=") + id};
}

int disabledRuns(ShellStage &stage) {
    return static_cast<int>(stage.desktop()
                                .processes()
                                .withArgument(QLatin1String(scenario::kDisabledArgument))
                                .size());
}

/// A start that ends by itself, with what is said of it.
void ends(ShellStage &stage, const QString &done, const QStringList &arguments,
          const QProcessEnvironment &environment, int code, const QString &words) {
    ShellStage::Ending ending;
    stage.story().step({
        .done = done,
        .expected = QStringLiteral("it ends with %1 and “%2”").arg(code).arg(words),
        .act = [&] { ending = stage.startAgain(arguments, environment); },
        .seen = [&] { return ending.code == code && ending.output.contains(words); },
        .saw = [&] { return inWords(ending); },
    });
}

/// The marker's rule, asked for in some way, has run once.
void runsMarker(ShellStage &stage, const QString &done, const std::function<int()> &ask) {
    const int before = stage.markers();
    int code = -1;
    stage.story().step({
        .done = done,
        .expected = QStringLiteral("the rule's process, and no window of ours"),
        .act = [&] { code = ask(); },
        .seen = [&] { return stage.markers() == before + 1; },
        .saw =
            [&] {
                return QStringLiteral("exit %1, %2 new, %3")
                    .arg(code)
                    .arg(stage.markers() - before)
                    .arg(stage.windowsInWords());
            },
        .objection =
            [&] {
                if (code != 0)
                    return QStringLiteral("the exit code is not 0");
                return stage.windowsInWords() == QStringLiteral("no window")
                           ? QString()
                           : QStringLiteral("a window opened");
            },
    });
}

QDBusMessage runOverBus(const QDBusConnection &bus, const QString &id) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.kestrelbay.KestrelBay"), QStringLiteral("/org/kestrelbay/KestrelBay"),
        QStringLiteral("org.freedesktop.Application"), QStringLiteral("ActivateAction"));
    call.setArguments({QStringLiteral("run-rule"), QVariantList{id}, QVariantMap()});
    return bus.call(call);
}

QProcessEnvironment without(QProcessEnvironment environment, const QStringList &names) {
    for (const QString &name : names)
        environment.remove(name);
    return environment;
}

}  // namespace

void sceneRunRule(ShellStage &stage) {
    stage.restartProgram({});
    stage.bringFrontProgram();
    const QString marker = idOf(stage, scenario::kMarkerArgument);
    const QProcessEnvironment environment = stage.desktop().environment();
    const auto ask = [&](const QProcessEnvironment &caller) {
        return [&stage, marker, caller] { return stage.startAgain(runRule(marker), caller).code; };
    };
    runsMarker(stage, QStringLiteral("--action=run-rule of the marker"), ask(environment));
    runsMarker(stage, QStringLiteral("the same with its id in lower case"),
               [&] { return stage.startAgain(runRule(marker.toLower())).code; });
    runsMarker(stage, QStringLiteral("the same from where there is no display"),
               ask(without(environment, {QStringLiteral("DISPLAY")})));

    const QString name = QStringLiteral("run-rule");
    const QDBusConnection bus = QDBusConnection::connectToBus(stage.busAddress(), name);
    runsMarker(stage, QStringLiteral("ActivateAction over the session bus"), [&] {
        return runOverBus(bus, marker).type() == QDBusMessage::ReplyMessage ? 0 : 1;
    });
    for (const QString &id : {unknownId(), QString(10'000'000, u'A'), QString()}) {
        QDBusMessage answer;
        stage.story().step({
            .done = QStringLiteral("the same with the id “%1”, %2 characters long")
                        .arg(id.left(40))
                        .arg(id.size()),
            .expected = QStringLiteral("an error"),
            .act = [&] { answer = runOverBus(bus, id); },
            .seen = [&] { return answer.errorName().endsWith(QStringLiteral(".NoSuchRule")); },
            .saw = [&] { return answer.errorName() + u' ' + answer.errorMessage().left(80); },
        });
    }
    QDBusConnection::disconnectFromBus(name);

    stage.story().step({
        .done = QStringLiteral("--action=run-rule of the terminal"),
        .expected = QStringLiteral("it comes to the front"),
        .act =
            [&] {
                const QJsonArray rules = QJsonDocument::fromJson(stage.rulesBytes()).array();
                static_cast<void>(
                    stage.startAgain(runRule(rules.at(0)[QStringLiteral("id")].toString())));
            },
        .seen = [&] { return stage.isInFront(scenario::kTerminalClass); },
        .saw = [&] { return stage.frontInWords(); },
    });
    stage.closeAll(scenario::kTerminalClass);

    const int disabledBefore = disabledRuns(stage);
    ends(stage, QStringLiteral("--action=run-rule of a disabled rule"),
         runRule(idOf(stage, scenario::kDisabledArgument)), environment, 0, {});
    stage.askFor(QStringLiteral("toggle-all-shortcuts"));
    const int before = stage.markers();
    ends(stage, QStringLiteral("the marker's while all shortcuts are off"), runRule(marker),
         environment, 0, {});
    stage.askFor(QStringLiteral("toggle-all-shortcuts"));
    stage.story().step({
        .done = QStringLiteral("the marker's when they are on again"),
        .expected = QStringLiteral("that one process and nothing of what was asked for before"),
        .act = [&] { static_cast<void>(stage.startAgain(runRule(marker))); },
        .seen = [&] { return stage.markers() > before; },
        .saw =
            [&] {
                return QStringLiteral("%1 markers, %2 of the disabled rule")
                    .arg(stage.markers() - before)
                    .arg(disabledRuns(stage) - disabledBefore);
            },
        .objection =
            [&] {
                return stage.markers() == before + 1 && disabledRuns(stage) == disabledBefore
                           ? QString()
                           : QStringLiteral("more than that ran");
            },
    });

    ends(stage, QStringLiteral("--action=run-rule of no rule"), runRule(unknownId()), environment,
         1, QStringLiteral("there is no rule with the id ") + unknownId());
    for (const QString &id :
         {QStringLiteral("{%1}").arg(marker), marker + u'x', QString(), QString(100'000, u'9')})
        ends(stage, QStringLiteral("--action=run-rule --rule=") + id.left(50), runRule(id),
             environment, 1, QStringLiteral("is no id of a rule"));
    ends(stage, QStringLiteral("--action=run-rule alone"), {QStringLiteral("--action=run-rule")},
         environment, 1, QStringLiteral("needs --rule"));
    ends(stage, QStringLiteral("--rule alone"), {QStringLiteral("--rule=") + marker}, environment,
         1, QStringLiteral("goes with --action=run-rule only"));
    stage.endProgram();
    stage.keepLog(QStringLiteral("kestrelbay-run-rule"));
}

void sceneRunRuleAlone(ShellStage &stage) {
    stage.restartProgram({});
    stage.endProgram();
    const QString marker = idOf(stage, scenario::kMarkerArgument);
    const QProcessEnvironment environment = stage.desktop().environment();
    ends(stage, QStringLiteral("--action=run-rule of no rule, and no instance runs"),
         runRule(unknownId()), environment, 1,
         QStringLiteral("there is no rule with the id ") + unknownId());
    ends(stage, QStringLiteral("the marker's where there is no session bus"), runRule(marker),
         without(environment, {QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                               QStringLiteral("XDG_RUNTIME_DIR"), QStringLiteral("DISPLAY")}),
         1, QStringLiteral("there is none"));
    runsMarker(stage, QStringLiteral("the marker's, and no instance runs"), [&] {
        stage.startProgram(runRule(marker));
        return 0;
    });
    stage.story().step({
        .done = QStringLiteral("waited"),
        .expected = QStringLiteral("that instance has stayed, with its hotkeys"),
        .act = [] {},
        .seen =
            [&] {
                return stage.program().isRunning() && stage.grabbedCount() == stage.ruleCount();
            },
        .saw = [&] { return QStringLiteral("%1 keys grabbed").arg(stage.grabbedCount()); },
    });
    stage.endProgram();

    stage.setProgramVariable(QStringLiteral("XDG_SESSION_TYPE"), QStringLiteral("wayland"));
    stage.startProgram();
    stage.prepare(
        QStringLiteral("an instance that runs"), [] {},
        [&] {
            return stage.startAgain({QStringLiteral("--diagnose")})
                .output.contains(QStringLiteral("Running: yes"));
        });
    runsMarker(stage, QStringLiteral("the marker's in a Wayland session, where there is no tap"),
               [&] { return stage.startAgain(runRule(marker)).code; });
    stage.setProgramVariable(QStringLiteral("XDG_SESSION_TYPE"), {});
    stage.endProgram();
}

void sceneListRules(ShellStage &stage) {
    stage.restartProgram({});
    stage.endProgram();
    const QString marker = idOf(stage, scenario::kMarkerArgument);
    const QProcessEnvironment bare =
        without(stage.desktop().environment(),
                {QStringLiteral("DISPLAY"), QStringLiteral("DBUS_SESSION_BUS_ADDRESS")});
    const QStringList list{QStringLiteral("--list-rules")};
    ends(stage, QStringLiteral("--list-rules without a display and a session bus"), list, bare, 0,
         marker + QStringLiteral("\tMarker\tL⌘K\n"));
    ShellStage::Ending json;
    QJsonArray rules;
    stage.story().step({
        .done = QStringLiteral("--list-rules --json"),
        .expected = QStringLiteral("all rules, under the ids of the file"),
        .act =
            [&] {
                json = stage.startAgain({list.front(), QStringLiteral("--json")}, bare);
                rules = QJsonDocument::fromJson(json.output.toUtf8()).array();
            },
        .seen =
            [&] {
                const QJsonArray file = QJsonDocument::fromJson(stage.rulesBytes()).array();
                bool areEqual = rules.size() == file.size();
                for (qsizetype i = 0; areEqual && i < file.size(); ++i)
                    areEqual =
                        rules.at(i)[QStringLiteral("id")] == file.at(i)[QStringLiteral("id")];
                return json.code == 0 && areEqual;
            },
        .saw = [&] { return QStringLiteral("exit %1, %2 rules").arg(json.code).arg(rules.size()); },
    });
    ends(stage, QStringLiteral("--json alone"), {QStringLiteral("--json")}, bare, 1,
         QStringLiteral("goes with --list-rules only"));
    HomeFolder::write(stage.desktop().home().rulesPath(), "[{]");
    ends(stage, QStringLiteral("--list-rules of a broken file"), list, bare, 1,
         QStringLiteral("rules.json cannot be used: "));
    ends(stage, QStringLiteral("--action=run-rule with it"), runRule(marker),
         stage.desktop().environment(), 1, QStringLiteral("rules.json cannot be used: "));

    const QStringList places{QStringLiteral("HOME"), QStringLiteral("XDG_CONFIG_HOME")};
    ends(stage, QStringLiteral("a start where there is no home folder"), {},
         without(stage.desktop().environment(), places), 1,
         QStringLiteral("there is no folder for application data"));
    ends(stage, QStringLiteral("--diagnose there"), {QStringLiteral("--diagnose")},
         without(stage.desktop().environment(), places), 0,
         QStringLiteral("Rule file: no, there is no folder for it"));
}

}  // namespace kestrelbay::desktop
