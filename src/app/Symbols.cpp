#include "app/Symbols.h"

#include <QFile>
#include <QIcon>
#include <QPainter>
#include <QPixmapCache>

#include "platform/SystemSymbols.h"

namespace kestrelbay {

namespace {

const SystemSymbols *systemSymbols = nullptr;

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
    return QFile::exists(path) ? QIcon(path).pixmap(size, devicePixelRatio) : QPixmap();
}

}  // namespace

void setSystemSymbols(const SystemSymbols *symbols) {
    systemSymbols = symbols;
    QPixmapCache::clear();
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
