#include "platform/linux/applications/entries/ApplicationFolders.h"

#include <optional>
#include <utility>

#include <QDir>
#include <QSet>
#include <QStandardPaths>

#include "files/StandardPath.h"

namespace kestrelbay {

namespace {

// Deep enough for every real folder, and an end for links that lead in a circle.
constexpr int kDeepestFolder = 4;

void collectFolders(const QString &folder, int depth, QStringList &result) {
    if (!QDir(folder).exists() || result.contains(folder))
        return;
    result.append(folder);
    if (depth == kDeepestFolder)
        return;
    QStringList names = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString &name : std::as_const(names))
        collectFolders(folder + u'/' + name, depth + 1, result);
}

}  // namespace

QStringList applicationFolders() {
    QStringList folders = QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
    // Qt 6.4 takes an XDG_DATA_HOME that is not absolute, and so does not count.
    if (QDir::isRelativePath(folders.first()))
        folders.first() = QDir::homePath() + QStringLiteral("/.local/share/applications");
    for (QString &folder : folders)
        folder = standardPath(folder);
    folders.removeDuplicates();
    return folders;
}

QStringList foldersWithSubfolders(const QStringList &folders) {
    QStringList result;
    for (const QString &folder : folders)
        collectFolders(folder, 0, result);
    return result;
}

QString desktopFileId(const QString &path, const QStringList &folders) {
    for (const QString &folder : folders)
        if (path.startsWith(folder + u'/'))
            return path.mid(folder.size() + 1).replace(u'/', u'-');
    return path.section(u'/', -1);
}

std::vector<DesktopEntry> readDesktopEntries(const QStringList &folders,
                                             const QStringList &namedPaths) {
    QStringList named;
    for (const QString &path : namedPaths)
        if (path.startsWith(u'/'))
            named.append(standardPath(path));

    std::vector<DesktopEntry> entries;
    QSet<QString> ids;
    QSet<QString> read;
    const auto add = [&](const QString &path, const QString &id, bool inFolder) {
        if (read.contains(path))
            return;
        std::optional<DesktopEntry> entry = readDesktopEntry(path, id);
        if (!entry)
            return;
        read.insert(path);
        entry->named = named.contains(path);
        entry->installed = inFolder;
        // Two files of one folder can have one id: a-b.desktop and a/b.desktop.
        entry->shadowed = inFolder && ids.contains(id);
        if (inFolder)
            ids.insert(id);
        entries.push_back(*std::move(entry));
    };
    for (const QString &folder : folders)
        for (const QString &place : foldersWithSubfolders({folder})) {
            const QStringList names =
                QDir(place).entryList({QStringLiteral("*.desktop")}, QDir::Files, QDir::Name);
            for (const QString &name : names) {
                const QString path = place + u'/' + name;
                add(path, desktopFileId(path, {folder}), true);
            }
        }
    for (const QString &path : std::as_const(named))
        add(path, desktopFileId(path, folders), false);
    return entries;
}

}  // namespace kestrelbay
