#include "platform/linux/applications/icons/LinuxApplicationCatalog.h"

#include <optional>

#include <QFileInfo>

#include "platform/linux/applications/entries/ApplicationFolders.h"
#include "platform/linux/applications/icons/ListIconReader.h"
#include "platform/linux/glib/KeyFile.h"

namespace kestrelbay {

namespace {

QString iconName(const QString &path) {
    const std::optional<KeyFile> entry = KeyFile::read(path);
    return entry ? entry->localized(G_KEY_FILE_DESKTOP_KEY_ICON) : QString();
}

}  // namespace

std::vector<QImage> LinuxApplicationCatalog::listIcons(const QStringList &applicationPaths,
                                                       const ListIcons &icons) const {
    ListIconReader reader(icons);
    std::vector<QImage> images;
    images.reserve(static_cast<std::size_t>(applicationPaths.size()));
    for (const QString &path : applicationPaths)
        images.push_back(reader.read(iconName(path)));
    return images;
}

QString LinuxApplicationCatalog::displayName(const QString &applicationPath) const {
    const std::optional<KeyFile> entry = KeyFile::read(applicationPath);
    // A link or a folder has a name too.
    return entry && entry->isApplication() ? entry->localized(G_KEY_FILE_DESKTOP_KEY_NAME)
                                           : QString();
}

QStringList LinuxApplicationCatalog::applicationDirectories() const {
    return applicationFolders();
}

QString LinuxApplicationCatalog::applicationFilePattern() const {
    return QStringLiteral("*.desktop");
}

std::vector<InstalledApplication> LinuxApplicationCatalog::installedApplications(
    const ListIcons &icons) const {
    const QStringList desktops =
        qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
    ListIconReader reader(icons);
    std::vector<InstalledApplication> applications;
    for (const DesktopEntry &entry : readDesktopEntries(applicationFolders(), {})) {
        if (entry.shadowed || entry.icon.isEmpty() || !belongsInMenus(entry, desktops))
            continue;
        const QString fileName = QFileInfo(entry.path).completeBaseName();
        applications.push_back({.name = entry.name.isEmpty() ? fileName : entry.name,
                                .fileName = fileName,
                                .path = entry.path,
                                .icon = reader.read(entry.icon)});
    }
    return applications;
}

}  // namespace kestrelbay
