#pragma once

#include <vector>

#include <QString>
#include <QStringList>

#include "platform/linux/applications/entries/DesktopEntry.h"

namespace kestrelbay {

/// The folders that hold desktop entries, those that win first: XDG_DATA_HOME's,
/// then those of XDG_DATA_DIRS. They need not exist.
[[nodiscard]] QStringList applicationFolders();

/// These folders and all folders below them that exist.
[[nodiscard]] QStringList foldersWithSubfolders(const QStringList &folders);

/// The id that an entry has by its place: the path below its folder with '-' for
/// '/', or the plain file name outside of all of them.
[[nodiscard]] QString desktopFileId(const QString &path, const QStringList &folders);

/// Every readable entry of the folders in order of precedence, and the named ones
/// wherever they are.
[[nodiscard]] std::vector<DesktopEntry> readDesktopEntries(const QStringList &folders,
                                                           const QStringList &namedPaths);

}  // namespace kestrelbay
