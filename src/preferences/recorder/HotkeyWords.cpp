#include "preferences/recorder/HotkeyWords.h"

#include <QStringList>

#include <algorithm>
#include <array>

#include "keys/KeyCode.h"
#include "settings/L.h"

namespace kestrelbay {

namespace {

// Those whose names are the same as of keys of the main block.
constexpr auto kKeypad = std::to_array<KeyCode>(
    {KeyCode{65}, KeyCode{67}, KeyCode{69}, KeyCode{75}, KeyCode{76}, KeyCode{78}, KeyCode{81},
     KeyCode{82}, KeyCode{83}, KeyCode{84}, KeyCode{85}, KeyCode{86}, KeyCode{87}, KeyCode{88},
     KeyCode{89}, KeyCode{91}, KeyCode{92}});

QStringList modifierWords(ModifierFlags flags) {
    QStringList words;
    QString side;
    // "R⇧L⌘": a side belongs to the sign after it.
    for (const QChar sign : modifierDisplayString(flags)) {
        if (sign == u'L' || sign == u'R') {
            side = sign;
            continue;
        }
        const QString name = L::spokenKey(sign);
        words += side.isEmpty() ? name : side[0] == u'L' ? L::leftKey(name) : L::rightKey(name);
        side.clear();
    }
    return words;
}

QString keyInWords(KeyCode keyCode) {
    const QString name = L::spokenKey(keyName(keyCode));
    return std::ranges::find(kKeypad, keyCode) == kKeypad.end() ? name : L::keypadKey(name);
}

}  // namespace

QString modifiersInWords(ModifierFlags flags) {
    return modifierWords(flags).join(L::keySeparator());
}

QString hotkeyInWords(KeyCode keyCode, ModifierFlags flags) {
    QStringList words = modifierWords(flags);
    if (keyCode == KeyCode{} && words.isEmpty())
        return L::noHotkey();
    words += keyInWords(keyCode);
    return words.join(L::keySeparator());
}

}  // namespace kestrelbay
