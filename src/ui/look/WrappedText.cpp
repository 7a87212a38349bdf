#include "ui/look/WrappedText.h"

#include <cmath>

#include <QFontMetrics>
#include <QPainter>
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

void drawWrappedText(QPainter &painter, const QString &text, const QFont &font, int width) {
    QTextLayout layout(withSeparators(text), font, painter.device());
    breakIntoLines(layout, width);
    layout.draw(&painter, {});
}

QString inTwoLines(const QString &text, const QFont &font, int width) {
    QString separated = withSeparators(text);
    QTextLayout layout(separated, font);
    breakIntoLines(layout, width);
    if (layout.lineCount() < 2)
        return separated;
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
