#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "desktop/scenario/Scenes.h"

namespace kestrelbay::desktop {

namespace {

constexpr Key kEnd{119, 115, u'⇲'}, kMenu{110, 135, u'☰'}, kEnter{36, 36, u'↩'},
    kDown{125, 116, u'↓'}, kUp{126, 111, u'↑'}, kF2{120, 68, u'2'}, kDelete{51, 22, u'⌫'},
    kEscape{53, 9, u'⎋'};
/// No desktop has it bound.
constexpr Key kFree = keys::kY;

/// Does a window of Wayland's own get what the desktop has bound, as long as a field records?
bool getsAllKeys(const WaylandStage &stage) {
    // Plasma can be asked to bind nothing meanwhile; sway to send all keys to a window, if Qt tells
    // of its connection. GNOME would ask the user.
    return stage.windowManager() == u"kwin" ||
           (stage.windowManager() == u"sway" && QT_VERSION >= QT_VERSION_CHECK(6, 5, 0));
}

QString hotkeyInWords(const QJsonObject &rule) {
    return QStringLiteral("key %1, modifiers %2")
        .arg(rule[QStringLiteral("keyCode")].toInteger())
        .arg(rule[QStringLiteral("modifierFlags")].toInteger(), 0, 16);
}

/// On disk, of the rule with this place from the end, the last one being 1.
QString hotkeyOnDisk(WaylandStage &stage, qsizetype fromEnd = 1) {
    const QByteArray bytes = HomeFolder::read(stage.desktop().home().rulesPath());
    const QJsonArray rules = QJsonDocument::fromJson(bytes).array();
    return hotkeyInWords(rules[rules.size() - fromEnd].toObject());
}

QString wordsOf(const Key &key) {
    return hotkeyInWords({{QStringLiteral("keyCode"), key.ruleCode},
                          {QStringLiteral("modifierFlags"), qint64{flags::kCommand}}});
}

void fires(WaylandStage &stage, const Chord &chord) {
    const auto started = [&] {
        return stage.desktop()
            .processes()
            .withArgument(QLatin1String(WaylandStage::kOneSidedArgument))
            .size();
    };
    const auto before = started();
    stage.bringFrontProgram();
    stage.press(chord, {.expected = QStringLiteral("the rule fires"),
                        .seen = [&] { return started() == before + 1; },
                        .saw = [&] { return QStringLiteral("%1 new").arg(started() - before); }});
}

/// Returns when KestrelBay has worked off the keys so far.
void awaitKeys(WaylandStage &stage) {
    (void)stage.startAgain({QStringLiteral("--action=preferences")});
}

/// Those of a KestrelBay that was started for it, the keyboard in the last row.
StageBase::Window openPreferences(WaylandStage &stage) {
    stage.endProgram();
    stage.startProgram({QStringLiteral("--action=preferences")});
    const auto isInFront = [&] {
        const StageBase::Window active = stage.view().active();
        return stage.view().processId(active) == stage.program().processId() &&
               stage.view().hasFocus(active);
    };
    stage.prepare(
        QStringLiteral("the preferences are in front"), [] {}, isInFront);
    // A compositor may count a window as focused before the window has been told.
    awaitKeys(stage);
    // From the tabs to the list.
    stage.press(plain(keys::kTab));
    stage.press(plain(kEnd));
    return stage.view().active();
}

}  // namespace

void sceneWaylandPreferences(WaylandStage &stage) {
    const StageBase::Window preferences = openPreferences(stage);
    const auto saw = [&] { return hotkeyOnDisk(stage); };

    stage.press(plain(kMenu));
    stage.story().step({
        .done = QStringLiteral("chose the first entry in the menu of the rule for the right key"),
        .expected = QStringLiteral("it is for either side, on disk"),
        .act =
            [&] {
                stage.press(plain(kDown));
                stage.press(plain(kEnter));
            },
        .seen = [&] { return saw() == wordsOf(WaylandStage::kOneSidedKey); },
        .saw = saw,
    });
    fires(stage, leftCommand(WaylandStage::kOneSidedKey));
    fires(stage, rightCommand(WaylandStage::kOneSidedKey));

    stage.bringForward(preferences);
    stage.press(plain(kF2));
    stage.screenshot(QStringLiteral("preferences-recording"));
    stage.press(leftCommand(kFree),
                {.expected = QStringLiteral("it is recorded, without a side, on disk"),
                 .seen = [&] { return saw() == wordsOf(kFree); },
                 .saw = saw});
    stage.screenshot(QStringLiteral("preferences-recorded"));
    fires(stage, rightCommand(kFree));
    stage.view().close(preferences);
}

void sceneWaylandNativeWindow(WaylandStage &stage) {
    const QString platform = QStringLiteral("QT_QPA_PLATFORM");
    stage.setProgramVariable(platform, QStringLiteral("wayland"));
    // Qt's own part for it loses some objects at the end.
    const QString sanitizer = QStringLiteral("ASAN_OPTIONS");
    stage.setProgramVariable(sanitizer, QStringLiteral("detect_leaks=0"));
    const StageBase::Window preferences = openPreferences(stage);
    for (const QString &name : {platform, sanitizer})
        stage.setProgramVariable(name, QString());

    // The rule that wants the user's own key, too, is the last but one.
    const auto hotkey = [&] { return hotkeyOnDisk(stage, 2); };
    const QString none = hotkeyInWords({});
    stage.press(plain(kUp));
    stage.press(plain(kF2));
    stage.press(plain(kDelete), {.expected = QStringLiteral("the hotkey is cleared, on disk"),
                                 .seen = [&] { return hotkey() == none; },
                                 .saw = hotkey});
    stage.press(plain(kF2));
    awaitKeys(stage);
    stage.screenshot(QStringLiteral("native-recording"));

    const int before = stage.usersPresses();
    const auto usersRuns = [&] { return stage.usersPresses() - before; };
    const bool isRecorded = getsAllKeys(stage);
    const QString wanted = isRecorded ? wordsOf(WaylandStage::kUsersKey) : none;
    const int wantedRuns = isRecorded ? 0 : 1;
    stage.press(
        leftCommand(WaylandStage::kUsersKey),
        {.expected = isRecorded ? QStringLiteral("it is recorded, though the user has it")
                                : QStringLiteral("the user's own runs, nothing is recorded"),
         .seen = [&] { return hotkey() == wanted && usersRuns() == wantedRuns; },
         .saw =
             [&] {
                 return QStringLiteral("%1; %2 runs").arg(hotkey(), QString::number(usersRuns()));
             }});
    stage.screenshot(QStringLiteral("native-recorded"));
    if (!isRecorded)
        stage.press(plain(kEscape));
    stage.press(leftCommand(WaylandStage::kUsersKey),
                {.expected = QStringLiteral("the user's own runs"),
                 .seen = [&] { return usersRuns() == wantedRuns + 1; },
                 .saw = [&] { return QString::number(usersRuns()); }});
    stage.view().close(preferences);
    // As all other scenes have it.
    stage.endProgram();
    stage.desktop().write(stage.desktop().home().rulesPath(), stage.rulesBytes());
    stage.startProgram();
}

}  // namespace kestrelbay::desktop
