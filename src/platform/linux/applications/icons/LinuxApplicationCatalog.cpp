#include "platform/linux/applications/icons/LinuxApplicationCatalog.h"

#include <QFile>
#include <QFileInfo>

#include "platform/linux/applications/entries/ApplicationFolders.h"
#include "platform/linux/applications/icons/ListIconReader.h"
#include "platform/linux/glib/GObjectPtr.h"

namespace kestrelbay {

namespace {

/// Without anything in it when there is no such entry.
GKeyFilePtr readEntry(const QString &path) {
    GKeyFilePtr file(g_key_file_new());
    if (QFileInfo(path).isFile())
        g_key_file_load_from_file(file.get(), QFile::encodeName(path).constData(),
                                  G_KEY_FILE_KEEP_TRANSLATIONS, nullptr);
    return file;
}

QString valueOf(GKeyFile &file, const char *key) {
    const GCharPtr value(
        g_key_file_get_locale_string(&file, G_KEY_FILE_DESKTOP_GROUP, key, nullptr, nullptr));
    return QString::fromUtf8(value.get());
}

QString iconName(const QString &path) {
    return valueOf(*readEntry(path), G_KEY_FILE_DESKTOP_KEY_ICON);
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
    const GKeyFilePtr entry = readEntry(applicationPath);
    // A link or a folder has a name too.
    if (valueOf(*entry, G_KEY_FILE_DESKTOP_KEY_TYPE) !=
        QLatin1StringView(G_KEY_FILE_DESKTOP_TYPE_APPLICATION))
        return {};
    return valueOf(*entry, G_KEY_FILE_DESKTOP_KEY_NAME);
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
