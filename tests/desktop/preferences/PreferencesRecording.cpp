#include "desktop/preferences/PreferencesScenes.h"

#include <csignal>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QScopeGuard>

#include "support/bus/PrivateSessionBus.h"

namespace kestrelbay::desktop {

namespace {

using places::RowPart;
using testing::xkey::kEscape;

void begin(PreferencesStage &stage) {
    stage.begin({markerRule(stage.desktop().home(), keys::kK),
                 ruleWithoutHotkey(QStringLiteral("Files"), QStringLiteral("thunar"))});
}

/// Starts to record in the second row, does something, and sees that everybody has
/// the keyboard again.
void endsRecording(PreferencesStage &stage, const QString &done, const std::function<void()> &act) {
    const QStringList before = stage.rules();
    stage.startRecording(1);
    stage.sees(
        done, QStringLiteral("the keyboard is free, nothing is recorded"), act,
        [&] { return !stage.isRecording(); },
        [&] { return stage.rules() == before ? QString() : QStringLiteral("a rule has changed"); });
    stage.passesToFront(QStringLiteral("pressed A"), plain(keys::kA));
    stage.startsMarker(QStringLiteral("pressed L⌘K"), leftCommand(keys::kK));
}

}  // namespace

void sceneWaysOutByKey(PreferencesStage &stage) {
    begin(stage);
    endsRecording(stage, QStringLiteral("pressed Escape"), [&] { stage.pressKey(kEscape); });
    stage.openPreferences();
    endsRecording(stage, QStringLiteral("pressed Delete"),
                  [&] { stage.pressKey(shellkeys::kDelete); });
    stage.openPreferences();
    endsRecording(stage, QStringLiteral("pressed A, which only shakes, then Escape"), [&] {
        stage.press(plain(keys::kA));
        stage.pressKey(kEscape);
    });
}

void sceneWaysOutInWindow(PreferencesStage &stage) {
    begin(stage);
    // Beside the first place: two clicks there within a moment are a double click.
    endsRecording(stage, QStringLiteral("clicked a second time"),
                  [&] { stage.click(places::inRow(1, RowPart::Recorder) + QPoint(30, 0)); });
    stage.openPreferences();
    endsRecording(stage, QStringLiteral("clicked the Advanced tab"),
                  [&] { stage.click(places::kAdvancedTab); });
    stage.openPreferences();
    stage.click(places::kRulesTab);
    stage.settle();
    stage.startRecording(1);
    stage.click(1, RowPart::Delete);
    (void)stage.waitForWindow(QStringLiteral("Delete Shortcut"));
    stage.seesRules(QStringLiteral("deleted the row while it recorded"),
                    {QStringLiteral("Marker 40 100008 launchArgs “--marker”")}, [&] {
                        stage.pressKey(shellkeys::kTab);
                        stage.pressKey(testing::xkey::kSpace);
                    });
    stage.passesToFront(QStringLiteral("pressed A"), plain(keys::kA));
    stage.startsMarker(QStringLiteral("pressed L⌘K"), leftCommand(keys::kK));
}

void sceneWaysOutOfWindow(PreferencesStage &stage) {
    begin(stage);
    endsRecording(stage, QStringLiteral("another window took the focus"),
                  [&] { stage.view().activate(stage.front().id()); });
    stage.openPreferences();
    endsRecording(stage, QStringLiteral("minimised the window"),
                  [&] { stage.view().minimise(stage.preferences()); });
    stage.openPreferences();
    endsRecording(stage, QStringLiteral("closed the window"),
                  [&] { stage.view().close(stage.preferences()); });
}

void sceneLockedWhileRecording(PreferencesStage &stage) {
    const testing::PrivateSessionBus systemBus;
    const QString variable = QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS");
    stage.setProgramVariable(variable, systemBus.address());
    QDBusConnection logind =
        QDBusConnection::connectToBus(systemBus.address(), QStringLiteral("logind"));
    const auto putBack = qScopeGuard([&] {
        stage.setProgramVariable(variable, {});
        QDBusConnection::disconnectFromBus(QStringLiteral("logind"));
    });
    if (!logind.registerService(QStringLiteral("org.freedesktop.login1")))
        throw NotPrepared(QStringLiteral("no logind"));
    begin(stage);
    endsRecording(stage, QStringLiteral("had the session locked"), [&] {
        logind.send(QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/login1/session/c1"),
                                               QStringLiteral("org.freedesktop.login1.Session"),
                                               QStringLiteral("Lock")));
    });
    stage.openPreferences();
    endsRecording(stage, QStringLiteral("sent the machine to sleep"), [&] {
        QDBusMessage signal = QDBusMessage::createSignal(
            QStringLiteral("/org/freedesktop/login1"),
            QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"));
        signal.setArguments({true});
        logind.send(signal);
    });
}

void sceneKilledWhileRecording(PreferencesStage &stage) {
    begin(stage);
    const QByteArray before = HomeFolder::read(stage.desktop().home().rulesPath());
    stage.startRecording(1);
    PtyProcess &program = stage.program();
    stage.story().step({
        .done = QStringLiteral("killed KestrelBay"),
        .expected = QStringLiteral("the keyboard is free"),
        .act = [&] { program.sendSignal(SIGKILL); },
        .seen = [&] { return !program.isRunning() && !stage.isRecording(); },
        .saw = [&] { return program.ending(); },
        .objection =
            [&] {
                return HomeFolder::read(stage.desktop().home().rulesPath()) == before
                           ? QString()
                           : QStringLiteral("the rules have changed");
            },
    });
    stage.bringFrontProgram();
    stage.story().step({
        .done = QStringLiteral("pressed A"),
        .expected = QStringLiteral("the program in front gets it"),
        .act = [&] { stage.press(plain(keys::kA)); },
        .seen = [&] { return stage.front().pressesOf(keys::kA.xKeycode) == 1; },
        .saw = [&] { return stage.frontInWords(); },
    });
}

}  // namespace kestrelbay::desktop
