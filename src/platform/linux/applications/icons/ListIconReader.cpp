#include "platform/linux/applications/icons/ListIconReader.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>

#include "platform/linux/applications/icons/IconNames.h"

namespace kestrelbay {

namespace {

// Far more than any icon, and no threat to memory.
constexpr qint64 kLargestIconFile = 16 << 20;

QImage emptySquare(int side) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

}  // namespace

ListIconReader::ListIconReader(const ListIcons &icons)
    : pixels_(icons.pixels), files_(icons.themes, icons.pixels) {}

QImage ListIconReader::read(const QString &name) {
    QImage image = readNamed(name);
    return image.isNull() ? generic() : image;
}

QImage ListIconReader::readNamed(const QString &name) {
    if (QDir::isAbsolutePath(name))
        return readFile(name);
    for (const QString &spelling : spellingsOfIconName(name)) {
        QImage image = readFile(files_.find(spelling));
        if (!image.isNull())
            return image;
    }
    for (const QString &file : unthemedIconFiles(name)) {
        QImage image = readFile(file);
        if (!image.isNull())
            return image;
    }
    return {};
}

QImage ListIconReader::readFile(const QString &path) const {
    const QFileInfo info(path);
    if (path.isEmpty() || !info.isFile() || info.size() > kLargestIconFile)
        return {};
    QImageReader reader(path);
    const QSize size = reader.size();
    // What the format itself does not scale, the reader does, smoothly.
    if (!size.isEmpty())
        reader.setScaledSize(
            size.scaled(pixels_, pixels_, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    const QImage image = reader.read();
    if (image.isNull())
        return {};
    QImage square = emptySquare(pixels_);
    QPainter painter(&square);
    QRect place({}, image.size().scaled(pixels_, pixels_, Qt::KeepAspectRatio));
    place.moveCenter(square.rect().center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, image);
    return square;
}

const QImage &ListIconReader::generic() {
    if (generic_.isNull())
        generic_ = readNamed(genericIconName());
    if (generic_.isNull()) {
        generic_ = emptySquare(pixels_);
        QPainter painter(&generic_);
        paintPlainApplication(&painter, generic_.rect());
    }
    return generic_;
}

}  // namespace kestrelbay
