#include "platform/linux/applications/icons/ApplicationIconEngine.h"

#include <QDir>
#include <QFileInfo>
#include <QPainter>

#include "platform/linux/applications/icons/IconNames.h"

namespace kestrelbay {

namespace {

QIcon iconOfFile(const QString &path) {
    if (!QFileInfo(path).isFile())
        return {};
    QIcon icon(path);
    // An icon remembers a name whether or not there is an image behind it.
    return icon.pixmap(16).isNull() ? QIcon() : icon;
}

QIcon iconOfName(const QString &name) {
    if (name.isEmpty())
        return {};
    if (QDir::isAbsolutePath(name))
        return iconOfFile(name);
    for (const QString &spelling : spellingsOfIconName(name)) {
        QIcon icon = QIcon::fromTheme(spelling);
        if (!icon.isNull())
            return icon;
    }
    for (const QString &file : unthemedIconFiles(name)) {
        QIcon icon = iconOfFile(file);
        if (!icon.isNull())
            return icon;
    }
    return {};
}

}  // namespace

const QIcon &ApplicationIconEngine::resolved() {
    if (!isResolved_ || theme_ != QIcon::themeName()) {
        theme_ = QIcon::themeName();
        icon_ = iconOfName(name_);
        if (icon_.isNull())
            icon_ = iconOfName(genericIconName());
        isResolved_ = true;
    }
    return icon_;
}

QPixmap ApplicationIconEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) {
    QPixmap own = resolved().pixmap(size, 1.0, mode, state);
    if (own.isNull()) {
        own = QPixmap(size);
        own.fill(Qt::transparent);
        QPainter painter(&own);
        paintPlainApplication(&painter, own.rect());
        return own;
    }
    // Themes often have nothing larger than 48 pixels.
    if (own.width() < size.width() && own.height() < size.height())
        return own.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return own;
}

void ApplicationIconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode,
                                  QIcon::State state) {
    const qreal ratio = painter->device()->devicePixelRatioF();
    const QPixmap image = pixmap(rect.size() * ratio, mode, state);
    QRectF target(QPointF(), QSizeF(image.size()) / ratio);
    target.moveCenter(QRectF(rect).center());
    painter->drawPixmap(target, image, QRectF(image.rect()));
}

}  // namespace kestrelbay
