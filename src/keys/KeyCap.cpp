#include "keys/KeyCap.h"

#include <QList>

namespace kestrelbay {

namespace {

/// Of a text of one character; otherwise a control character.
char32_t only(const QString &text) {
    const QList<uint> characters = text.toUcs4();
    return characters.size() == 1 ? char32_t(characters.front()) : U'\0';
}

bool isDigit(char32_t character) {
    return character >= U'0' && character <= U'9';
}

}  // namespace

QString keyCap(const QString &plain, const QString &shifted) {
    const char32_t first = only(plain);
    const char32_t second = only(shifted);
    if (!QChar::isPrint(first) || QChar::isSpace(first))
        return {};
    const bool isCapital = QChar::isLower(first) && QChar::isUpper(second);
    return isDigit(second) || isCapital ? shifted : plain;
}

}  // namespace kestrelbay
