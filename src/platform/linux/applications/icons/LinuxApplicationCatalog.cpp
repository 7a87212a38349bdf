#include "platform/linux/applications/icons/LinuxApplicationCatalog.h"

#include <optional>

#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>

#include "platform/linux/applications/entries/ApplicationFolders.h"
#include "platform/linux/applications/entries/ApplicationIndex.h"
#include "platform/linux/applications/icons/IconThemeFiles.h"
#include "platform/linux/glib/KeyFile.h"

namespace kestrelbay {

namespace {

// Far more than any icon, and no threat to memory.
constexpr qint64 kLargestIconFile = 16 << 20;

QImage emptySquare(int side) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

/// What a name in a desktop entry may be called in a theme: themes know names without
/// suffix, but not every entry does.
QStringList spellingsOfIconName(const QString &name) {
    QString bare = name;
    for (const char *suffix : {".png", ".svg", ".xpm"})
        if (bare.endsWith(QLatin1String(suffix)))
            bare.chop(4);
    return bare == name ? QStringList{name} : QStringList{name, bare};
}

/// The files of this name where icons lay before there were themes, and where some
/// still lie. They need not exist. None for a name with a '/'.
QStringList unthemedIconFiles(const QString &name) {
    QStringList files;
    if (name.contains(u'/'))
        return files;
    for (const QString &applications : applicationFolders()) {
        const QString folder = QFileInfo(applications).path() + QStringLiteral("/pixmaps/");
        for (const char *suffix : {"", ".png", ".svg", ".xpm"})
            files.append(folder + name + QLatin1String(suffix));
    }
    return files;
}

/// A generic application, for systems without any theme.
QImage plainApplication(int side) {
    QImage image = emptySquare(side);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const qreal margin = side / 8.0;
    const QRectF body = QRectF(image.rect()).adjusted(margin, margin, -margin, -margin);
    painter.setBrush(QColor(0x8a, 0x93, 0xa0));
    painter.drawRoundedRect(body, side / 6.0, side / 6.0);
    painter.setBrush(QColor(0xff, 0xff, 0xff, 0xd0));
    painter.drawEllipse(body.center(), side / 7.0, side / 7.0);
    return image;
}

/// Reads the icons that desktop entries name, on any one thread, for one list.
class ListIconReader {
public:
    explicit ListIconReader(const ListIcons &icons)
        : pixels_(icons.pixels), files_(icons.themes, icons.pixels) {}

    /// A square of the list's size: the icon that the entry names, in proportion; the
    /// generic one when it can't be found or read.
    [[nodiscard]] QImage read(const DesktopEntry &entry) {
        QImage image = readNamed(entry.icon);
        if (image.isNull())
            image = readBeside(entry);
        return image.isNull() ? generic() : image;
    }

private:
    [[nodiscard]] QImage readNamed(const QString &name) {
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

    /// Programs that are not installed but unpacked, AppImages above all, have their icon in
    /// the folder of the entry or of the program, or below.
    [[nodiscard]] QImage readBeside(const DesktopEntry &entry) const {
        if (entry.icon.isEmpty() || QDir::isAbsolutePath(entry.icon))
            return {};
        for (const QString &neighbour : {entry.path, entry.program})
            for (const char *suffix : {"", ".png", ".svg", ".xpm"}) {
                QImage image = neighbour.startsWith(u'/')
                                   ? readFile(QFileInfo(neighbour).path() + u'/' + entry.icon +
                                              QLatin1String(suffix))
                                   : QImage();
                if (!image.isNull())
                    return image;
            }
        return {};
    }

    [[nodiscard]] QImage readFile(const QString &path) const {
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

    /// The icon that stands for an application without one of its own.
    [[nodiscard]] const QImage &generic() {
        if (generic_.isNull())
            generic_ = readNamed(QStringLiteral("application-x-executable"));
        if (generic_.isNull())
            generic_ = plainApplication(pixels_);
        return generic_;
    }

    const int pixels_;
    IconThemeFiles files_;
    QImage generic_;
};

}  // namespace

std::vector<QImage> LinuxApplicationCatalog::listIcons(const QStringList &applicationPaths,
                                                       const ListIcons &icons) const {
    ListIconReader reader(icons);
    std::vector<QImage> images;
    images.reserve(static_cast<std::size_t>(applicationPaths.size()));
    for (const QString &path : applicationPaths)
        images.push_back(reader.read(readDesktopEntry(path, {}).value_or(DesktopEntry())));
    return images;
}

QString LinuxApplicationCatalog::nameOfFile(const QString &applicationPath) const {
    const std::optional<KeyFile> entry = KeyFile::read(applicationPath);
    // A link or a folder has a name too.
    if (!entry || !entry->isApplication())
        return {};
    const QString name = entry->localized(G_KEY_FILE_DESKTOP_KEY_NAME);
    return name.isEmpty() ? QFileInfo(applicationPath).completeBaseName() : name;
}

QStringList LinuxApplicationCatalog::applicationDirectories() const {
    return applicationFolders();
}

QString LinuxApplicationCatalog::applicationFilePattern() const {
    return QStringLiteral("*.desktop");
}

std::vector<InstalledApplication> LinuxApplicationCatalog::installedApplications() const {
    const QStringList desktops =
        qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
    const std::shared_ptr<const ApplicationIndex> index = index_();
    std::vector<InstalledApplication> applications;
    for (const DesktopEntry &entry : index->entries()) {
        if (!entry.installed || entry.shadowed || entry.icon.isEmpty() ||
            !belongsInMenus(entry, desktops))
            continue;
        const QString fileName = QFileInfo(entry.path).completeBaseName();
        applications.push_back({.name = entry.name.isEmpty() ? fileName : entry.name,
                                .fileName = fileName,
                                .path = entry.path});
    }
    return applications;
}

}  // namespace kestrelbay
