#pragma once

#include <QFont>
#include <QString>

class QPainter;

namespace kestrelbay {

// Lines are broken between words, and within one that is wider than a line.

/// The height of a text that is broken into lines of at most this width, rounded up.
[[nodiscard]] int wrappedTextHeight(const QString &text, const QFont &font, int width);

/// Draws all its lines from the origin downwards, in the painter's pen.
void drawWrappedText(QPainter &painter, const QString &text, const QFont &font, int width);

/// The text as at most two lines of this width with a line feed between; what does not
/// fit gives way to an ellipsis.
[[nodiscard]] QString inTwoLines(const QString &text, const QFont &font, int width);

}  // namespace kestrelbay
