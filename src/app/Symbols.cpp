#include "app/Symbols.h"

#include <QFile>
#include <QIcon>
#include <QPainter>

namespace kestrelbay {

QPixmap symbolPixmap(const QString &name, QSize size, const QColor &color, qreal devicePixelRatio) {
    const QString path = QStringLiteral(":/symbols/%1.svg").arg(name);
    if (!QFile::exists(path))
        return {};
    QPixmap pixmap = QIcon(path).pixmap(size, devicePixelRatio);
    QPainter painter(&pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
    return pixmap;
}

}  // namespace kestrelbay
