#pragma once

#include <algorithm>

#include <QString>
#include <QStringView>

namespace kestrelbay {

template <typename IsBlank>
[[nodiscard]] QString trimmed(QStringView text, IsBlank isBlank) {
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text.toString();
}

/// Without the spaces and tabs at both ends; line breaks and the other spaces of
/// Unicode are part of the text. What the user enters is read and kept so.
[[nodiscard]] inline QString trimmedSpacesAndTabs(QStringView text) {
    return trimmed(text, [](QChar c) { return c == u' ' || c == u'\t'; });
}

/// Without the spaces of any width and the tabs at both ends; line breaks are part of
/// the text. What a launch makes of it.
[[nodiscard]] inline QString trimmedHorizontalSpace(QStringView text) {
    return trimmed(text,
                   [](QChar c) { return c == u'\t' || c.category() == QChar::Separator_Space; });
}

/// With a space for each character that would begin a line, speak to a terminal or turn the
/// direction of what follows, so that a text of others cannot pass for anything else.
[[nodiscard]] inline QString onOneLine(QString text) {
    std::ranges::replace_if(
        text,
        [](QChar c) {
            const bool turnsDirection =
                (c >= u'\u202a' && c <= u'\u202e') || (c >= u'\u2066' && c <= u'\u2069');
            return turnsDirection || c.category() == QChar::Other_Control ||
                   c.category() == QChar::Separator_Line ||
                   c.category() == QChar::Separator_Paragraph;
        },
        QChar(u' '));
    return text;
}

}  // namespace kestrelbay
