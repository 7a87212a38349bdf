#pragma once

#include <QFont>
#include <QString>

namespace kestrelbay {

// Lines are broken between words, and within one that is wider than a line.

/// The height of a text that is broken into lines of at most this width, rounded up.
[[nodiscard]] int wrappedTextHeight(const QString &text, const QFont &font, int width);

/// The text with line feeds where its lines end. Each of its own lines is broken into no
/// more than it needs, of about the same width, so that no single word is left for the last.
[[nodiscard]] QString balancedLines(const QString &text, const QFont &font, int width);

/// The text as at most two lines of this width, balanced where all of it fits, with a line
/// feed between; what does not fit gives way to an ellipsis.
[[nodiscard]] QString inTwoLines(const QString &text, const QFont &font, int width);

}  // namespace kestrelbay
