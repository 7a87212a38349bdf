#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "desktop/scenario/Scenes.h"

namespace kestrelbay::desktop {

namespace {

constexpr Key kEnd{119, 115, u'⇲'}, kMenu{110, 135, u'☰'}, kEnter{36, 36, u'↩'},
    kDown{125, 116, u'↓'}, kF2{120, 68, u'2'};
/// No desktop has it bound.
constexpr Key kFree = keys::kY;

/// The last one of the rules on disk.
QJsonObject lastRule(WaylandStage &stage) {
    const QByteArray bytes = HomeFolder::read(stage.desktop().home().rulesPath());
    return QJsonDocument::fromJson(bytes).array().last().toObject();
}

QString hotkeyInWords(const QJsonObject &rule) {
    return QStringLiteral("key %1, modifiers %2")
        .arg(rule[QStringLiteral("keyCode")].toInteger())
        .arg(rule[QStringLiteral("modifierFlags")].toInteger(), 0, 16);
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

}  // namespace

void sceneWaylandPreferences(WaylandStage &stage) {
    stage.endProgram();
    stage.startProgram({QStringLiteral("--action=preferences")});
    const auto isInFront = [&] {
        const StageBase::Window active = stage.view().active();
        return stage.view().processId(active) == stage.program().processId() &&
               stage.view().hasFocus(active);
    };
    stage.prepare(
        QStringLiteral("the preferences are in front"), [] {}, isInFront);
    const StageBase::Window preferences = stage.view().active();
    const auto saw = [&] { return hotkeyInWords(lastRule(stage)); };

    // From the tabs to the list.
    stage.press(plain(keys::kTab));
    stage.press(plain(kEnd));
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

}  // namespace kestrelbay::desktop
