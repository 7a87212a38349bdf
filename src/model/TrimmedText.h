#pragma once

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

}  // namespace kestrelbay
