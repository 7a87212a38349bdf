#pragma once

#include <vector>

#include <QImage>
#include <QString>
#include <QStringList>

namespace kestrelbay {

/// An application that the user can choose.
struct InstalledApplication {
    /// In the user's language; never empty.
    QString name;
    /// Last component of the path without its extension.
    QString fileName;
    QString path;
};

/// How the icons of a list are to be read.
struct ListIcons {
    /// Side of the square in pixels of the screen.
    int pixels = 0;
    /// Icon themes by name, the first that has an icon wins. Handed in, because Qt
    /// tells of its theme on the main thread only. Systems without themes ignore it.
    QStringList themes;
};

/// What is known of an installed application without running it. Any thread.
class ApplicationCatalog {
public:
    virtual ~ApplicationCatalog() = default;

    /// The icons of several applications, read already: a square for each path, in their
    /// order; the system's generic application icon for one that has none of its own.
    /// Reads every file afresh.
    [[nodiscard]] virtual std::vector<QImage> listIcons(const QStringList &applicationPaths,
                                                        const ListIcons &icons) const = 0;

    /// What to call the application whose file the user has chosen: its name in the user's
    /// language or, where people know applications by their files, that of the file without
    /// its extension. Empty when there is no application at this path.
    [[nodiscard]] virtual QString nameOfFile(const QString &applicationPath) const = 0;

    /// The folders in which applications are installed, those that win first.
    [[nodiscard]] virtual QStringList applicationDirectories() const = 0;

    /// What applications are called in a folder: a wildcard for file names.
    [[nodiscard]] virtual QString applicationFilePattern() const = 0;

    /// The applications that have a place in a menu, in the order in which they are
    /// found: the folders' order, names in each. Programs that work in the
    /// background and those that declare no icon are left out. May have to read
    /// every file first, and take its time; what cannot be read is skipped.
    [[nodiscard]] virtual std::vector<InstalledApplication> installedApplications() const = 0;
};

}  // namespace kestrelbay
