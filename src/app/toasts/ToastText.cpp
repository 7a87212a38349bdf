#include "app/toasts/ToastText.h"

#include <QFontMetrics>
#include <QList>
#include <QTextLayout>
#include <QTextOption>

#include <cmath>

namespace kestrelbay {

namespace {

struct Line {
    int start;
    int length;
};
struct Wrapped {
    QString text;
    QList<Line> lines;
    qreal height = 0;
};

Wrapped wrap(const QString &text, const QFont &font, int width) {
    Wrapped wrapped;
    wrapped.text = text;
    wrapped.text.replace(u'\n', QChar::LineSeparator);
    QTextLayout layout(wrapped.text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLeadingIncluded(true);
        line.setLineWidth(width);
        wrapped.lines.append({line.textStart(), line.textLength()});
        wrapped.height += line.height();
    }
    layout.endLayout();
    return wrapped;
}

QString upToSeparator(const QString &text) {
    return text.left(text.indexOf(QChar::LineSeparator));
}

}  // namespace

int wrappedTextHeight(const QString &text, const QFont &font, int width) {
    return static_cast<int>(std::ceil(wrap(text, font, width).height));
}

QString inTwoLines(const QString &text, const QFont &font, int width) {
    const Wrapped wrapped = wrap(text, font, width);
    if (wrapped.lines.size() < 2)
        return wrapped.text;
    const Line &first = wrapped.lines.at(0);
    const Line &second = wrapped.lines.at(1);
    QString lower = upToSeparator(wrapped.text.mid(second.start));
    // Also when the rest would stand on lines of its own.
    if (wrapped.lines.size() > 2 && lower.trimmed().size() <= second.length)
        lower = lower.trimmed() + QChar(0x2026);
    return upToSeparator(wrapped.text.mid(first.start, first.length)).trimmed() + u'\n' +
           QFontMetrics(font).elidedText(lower.trimmed(), Qt::ElideRight, width);
}

}  // namespace kestrelbay
