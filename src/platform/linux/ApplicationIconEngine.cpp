#include "platform/linux/ApplicationIconEngine.h"

#include <algorithm>
#include <utility>

#include <QDir>
#include <QFileInfo>
#include <QPainter>

#include "platform/linux/ApplicationFolders.h"

namespace kestrelbay {

namespace {

constexpr auto kGenericIcon = "application-x-executable";

QIcon iconOfFile(const QString &path) {
    if (!QFileInfo(path).isFile())
        return {};
    QIcon icon(path);
    // An icon remembers a name whether or not there is an image behind it.
    return icon.pixmap(16).isNull() ? QIcon() : icon;
}

/// Where icons lay before there were themes, and where some still lie.
QIcon iconOfPixmaps(const QString &name) {
    for (const QString &applications : applicationFolders()) {
        const QString folder = QFileInfo(applications).path() + QStringLiteral("/pixmaps/");
        for (const char *suffix : {"", ".png", ".svg", ".xpm"}) {
            QIcon icon = iconOfFile(folder + name + QLatin1String(suffix));
            if (!icon.isNull())
                return icon;
        }
    }
    return {};
}

QIcon iconOfName(const QString &name) {
    if (name.isEmpty())
        return {};
    if (QDir::isAbsolutePath(name))
        return iconOfFile(name);
    // Themes know names without suffix, but not every entry does.
    QString bare = name;
    for (const char *suffix : {".png", ".svg", ".xpm"})
        if (bare.endsWith(QLatin1String(suffix)))
            bare.chop(4);
    for (const QString &spelling : {name, bare}) {
        QIcon icon = QIcon::fromTheme(spelling);
        if (!icon.isNull())
            return icon;
    }
    return name.contains(u'/') ? QIcon() : iconOfPixmaps(name);
}

/// For systems without any theme.
void paintPlainApplication(QPainter *painter, const QRect &rect) {
    const qreal side = std::min(rect.width(), rect.height());
    const qreal margin = side / 8;
    QRectF body(0, 0, side - 2 * margin, side - 2 * margin);
    body.moveCenter(QRectF(rect).center());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(0x8a, 0x93, 0xa0));
    painter->drawRoundedRect(body, side / 6, side / 6);
    painter->setBrush(QColor(0xff, 0xff, 0xff, 0xd0));
    painter->drawEllipse(body.center(), side / 7, side / 7);
    painter->restore();
}

}  // namespace

const QIcon &ApplicationIconEngine::resolved() {
    if (!isResolved_ || theme_ != QIcon::themeName()) {
        theme_ = QIcon::themeName();
        icon_ = iconOfName(name_);
        if (icon_.isNull())
            icon_ = iconOfName(QLatin1String(kGenericIcon));
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
