#include "ui/look/Symbols.h"

#include <QFile>
#include <QIcon>
#include <QPainter>
#include <QPixmapCache>

#include "platform/SystemSymbols.h"

namespace kestrelbay {

namespace {

const SystemSymbols *systemSymbols = nullptr;

/// Once: there are dozens of symbols, each in several sizes, and one cause.
void reportDrawingProblem() {
    static bool isReported = false;
    if (isReported)
        return;
    if (const QString problem = drawingProblem(); !problem.isEmpty()) {
        isReported = true;
        qWarning("Icons stay blank: %s", qUtf8Printable(problem));
    }
}

/// In any colour.
QPixmap findSymbol(const QString &name, QSize size, qreal devicePixelRatio) {
    if (systemSymbols) {
        QPixmap pixmap = QPixmap::fromImage(
            systemSymbols->image(name, (QSizeF(size) * devicePixelRatio).toSize()));
        if (!pixmap.isNull()) {
            pixmap.setDevicePixelRatio(devicePixelRatio);
            return pixmap;
        }
    }
    const QString path = QStringLiteral(":/symbols/%1.svg").arg(name);
    if (!QFile::exists(path))
        return {};
    QPixmap pixmap = QIcon(path).pixmap(size, devicePixelRatio);
    if (pixmap.isNull())
        reportDrawingProblem();
    return pixmap;
}

}  // namespace

void setSystemSymbols(const SystemSymbols *symbols) {
    systemSymbols = symbols;
    QPixmapCache::clear();
}

QString drawingProblem(const QList<QByteArray> &formats) {
    // Loaded at run time, so that nothing else notices when it is not installed.
    return formats.contains("svg")
               ? QString()
               : QStringLiteral(
                     "Qt's plugin for SVG is missing (Debian: qt6-svg-plugins or "
                     "libqt6svg6)");
}

QPixmap symbolPixmap(const QString &name, QSize size, const QColor &color, qreal devicePixelRatio) {
    const QString key = QStringLiteral("symbol %1 %2x%3 %4 %5")
                            .arg(name)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(color.rgba())
                            .arg(devicePixelRatio);
    QPixmap pixmap;
    // Reading a symbol takes longer than all else that a row of a list paints.
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    pixmap = findSymbol(name, size, devicePixelRatio);
    if (pixmap.isNull())
        return {};
    QPainter painter(&pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
    painter.end();
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

}  // namespace kestrelbay
