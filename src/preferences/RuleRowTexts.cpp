#include "preferences/RuleRowTexts.h"

#include <QStringList>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <array>

#include "keys/KeyCode.h"
#include "model/ShortcutRule.h"
#include "model/TrimmedText.h"
#include "platform/HotkeyHolders.h"
#include "platform/KeyboardLayout.h"
#include "settings/L.h"

namespace kestrelbay {

namespace {

constexpr int kShownEnd = 9;

// Those whose names are the same as of keys of the main block.
constexpr auto kKeypad = std::to_array<KeyCode>(
    {KeyCode{65}, KeyCode{67}, KeyCode{69}, KeyCode{75}, KeyCode{76}, KeyCode{78}, KeyCode{81},
     KeyCode{82}, KeyCode{83}, KeyCode{84}, KeyCode{85}, KeyCode{86}, KeyCode{87}, KeyCode{88},
     KeyCode{89}, KeyCode{91}, KeyCode{92}});

QStringList modifierWords(ModifierFlags flags) {
    QStringList words;
    QChar side;
    // "R⇧L⌘": a side belongs to the sign after it.
    for (const QChar sign : modifierDisplayString(flags)) {
        if (sign == u'L' || sign == u'R') {
            side = sign;
            continue;
        }
        const QString name = L::spokenKey(sign);
        words += side.isNull() ? name : side == u'L' ? L::leftKey(name) : L::rightKey(name);
        side = {};
    }
    return words;
}

}  // namespace

QString shownAppName(const ShortcutRule &rule) {
    return rule.appName.isEmpty() ? L::noAppSelected() : rule.appName;
}

QString abbreviatedPath(const QString &path, const QString &homeFolder) {
    if (homeFolder.size() < 2 || !path.startsWith(homeFolder))
        return path;
    const QString rest = path.sliced(homeFolder.size());
    return rest.isEmpty() || rest.startsWith(u'/') ? u'~' + rest : path;
}

QString argsBadgeText(const ShortcutRule &rule) {
    if (rule.argumentKind == ArgumentKind::None)
        return {};
    const QString text = trimmedSpacesAndTabs(rule.launchArguments);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    finder.toEnd();
    for (int shown = 0; shown < kShownEnd; ++shown)
        finder.toPreviousBoundary();
    // Before the beginning there is no position.
    return finder.position() > 0 ? u'…' + text.sliced(finder.position()) : text;
}

QString modifiersInWords(ModifierFlags flags) {
    return modifierWords(flags).join(L::keySeparator());
}

QString hotkeyInWords(KeyCode keyCode, ModifierFlags flags, const KeyboardLayout &layout) {
    QStringList words = modifierWords(flags);
    if (keyCode == KeyCode{} && words.isEmpty())
        return L::noHotkey();
    const bool isOnKeypad = std::ranges::find(kKeypad, keyCode) != kKeypad.end();
    const QString printed = isOnKeypad ? QString() : layout.printedOn(keyCode);
    const QString key = L::spokenKey(printed.isEmpty() ? keyName(keyCode) : printed);
    words += isOnKeypad ? L::keypadKey(key) : key;
    return words.join(L::keySeparator());
}

QStringList refusalInWords(const RefusedHotkey &refused, const HotkeyHolder &holder,
                           Language language) {
    if (refused.isUnassigned)
        return {L::hotkeyUnassigned.in(language)};
    const LText &unknown = refused.modifierKey ? L::hotkeyUnheard : L::hotkeyRefused;
    const LSentence &known = refused.modifierKey ? L::hotkeyUnheardBy : L::hotkeyRefusedBy;
    QStringList lines{holder.program.isEmpty() ? unknown.in(language)
                                               : known.in(language, holder.program)};
    if (!holder.action.isEmpty())
        lines += L::hotkeyAction.in(language, holder.action);
    if (!holder.remedy.isEmpty())
        lines += L::hotkeyRemedy.in(language, holder.remedy);
    return lines;
}

}  // namespace kestrelbay
