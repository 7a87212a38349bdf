#pragma once

#include <QString>
#include <QStringView>

namespace kestrelbay {

/// Without the spaces, of any width, and tabs at both ends. Line breaks are part of the
/// text.
[[nodiscard]] inline QString trimmedText(QStringView text) {
    const auto isBlank = [](QChar c) {
        return c == u'\t' || c.category() == QChar::Separator_Space;
    };
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text.toString();
}

}  // namespace kestrelbay
