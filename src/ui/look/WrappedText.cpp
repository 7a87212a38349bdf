#include "ui/look/WrappedText.h"

#include <cmath>

#include <QFontMetrics>
#include <QStringList>
#include <QTextLayout>
#include <QTextOption>

namespace kestrelbay {

namespace {

/// Gives back the height of all lines. The text may have line separators, but no line feeds.
qreal breakIntoLines(QTextLayout &layout, int width) {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    qreal height = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLeadingIncluded(true);
        line.setLineWidth(width);
        line.setPosition({0, height});
        height += line.height();
    }
    layout.endLayout();
    return height;
}

/// Into no more lines than that width makes it take, each as short as they can all be.
void breakEvenly(QTextLayout &layout, int width) {
    breakIntoLines(layout, width);
    const int count = layout.lineCount();
    int tooNarrow = 0;
    while (width - tooNarrow > 1) {
        const int middle = (tooNarrow + width) / 2;
        breakIntoLines(layout, middle);
        (layout.lineCount() > count ? tooNarrow : width) = middle;
    }
    breakIntoLines(layout, width);
}

QString withSeparators(QString text) {
    return text.replace(u'\n', QChar::LineSeparator);
}

QString upToSeparator(const QString &text) {
    return text.left(text.indexOf(QChar::LineSeparator));
}

}  // namespace

int wrappedTextHeight(const QString &text, const QFont &font, int width) {
    QTextLayout layout(withSeparators(text), font);
    return static_cast<int>(std::ceil(breakIntoLines(layout, width)));
}

QString balancedLines(const QString &text, const QFont &font, int width) {
    QStringList lines;
    for (const QString &paragraph : text.split(u'\n')) {
        QTextLayout layout(paragraph, font);
        breakEvenly(layout, width);
        for (int line = 0; line < layout.lineCount(); ++line) {
            const QTextLine place = layout.lineAt(line);
            lines.append(paragraph.mid(place.textStart(), place.textLength()).trimmed());
        }
    }
    return lines.join(u'\n');
}

QString inTwoLines(const QString &text, const QFont &font, int width) {
    QString separated = withSeparators(text);
    QTextLayout layout(separated, font);
    breakIntoLines(layout, width);
    if (layout.lineCount() < 2)
        return separated;
    if (layout.lineCount() == 2)
        breakEvenly(layout, width);
    const QTextLine first = layout.lineAt(0);
    const QTextLine second = layout.lineAt(1);
    QString lower = upToSeparator(separated.mid(second.textStart()));
    // Also when the rest would stand on lines of its own.
    if (layout.lineCount() > 2 && lower.trimmed().size() <= second.textLength())
        lower = lower.trimmed() + QChar(0x2026);
    return upToSeparator(separated.mid(first.textStart(), first.textLength())).trimmed() + u'\n' +
           QFontMetrics(font).elidedText(lower.trimmed(), Qt::ElideRight, width);
}

}  // namespace kestrelbay
