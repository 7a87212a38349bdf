#include <algorithm>

#include <QStringView>
#include <QTextBoundaryFinder>

#include "launcher/AppLauncher.h"

namespace kestrelbay {

namespace {

/// A line break of two characters is white space; a space that carries a
/// combining mark is a visible character.
bool isWhitespace(QStringView character) {
    return std::ranges::all_of(character, [](QChar c) { return c.isSpace(); });
}

}  // namespace

QStringList AppLauncher::parseCommandLineArgs(const QString &text) {
    QStringList arguments;
    QString current;
    QStringView openQuote;
    bool isEscaped = false;

    const auto endArgument = [&] {
        if (!current.isEmpty())
            arguments.append(current);
        current.clear();
    };

    // Characters as the user sees them, so that a combining mark stays with its base.
    QTextBoundaryFinder boundaries(QTextBoundaryFinder::Grapheme, text);
    qsizetype start = 0;
    while (start < text.size()) {
        qsizetype end = boundaries.toNextBoundary();
        if (end <= start)
            end = text.size();
        const QStringView character = QStringView(text).sliced(start, end - start);
        start = end;

        if (isEscaped) {
            current += character;
            isEscaped = false;
        } else if (character == u'\\') {
            isEscaped = true;
        } else if (!openQuote.isEmpty()) {
            if (character == openQuote)
                openQuote = {};
            else
                current += character;
        } else if (character == u'"' || character == u'\'') {
            openQuote = character;
        } else if (isWhitespace(character)) {
            endArgument();
        } else {
            current += character;
        }
    }
    endArgument();
    return arguments;
}

}  // namespace kestrelbay
