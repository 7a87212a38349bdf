#include "app/Symbols.h"

#include <QFile>
#include <QIcon>
#include <QPainter>
#include <QPixmapCache>

namespace kestrelbay {

QPixmap symbolPixmap(const QString &name, QSize size, const QColor &color, qreal devicePixelRatio) {
    const QString path = QStringLiteral(":/symbols/%1.svg").arg(name);
    const QString key = QStringLiteral("%1 %2x%3 %4 %5")
                            .arg(path)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(color.rgba())
                            .arg(devicePixelRatio);
    QPixmap pixmap;
    // Reading a symbol takes longer than all else that a row of a list paints.
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    if (!QFile::exists(path))
        return {};
    pixmap = QIcon(path).pixmap(size, devicePixelRatio);
    QPainter painter(&pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
    painter.end();
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

}  // namespace kestrelbay
