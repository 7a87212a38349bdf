#pragma once

#include <optional>

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace kestrelbay {

/// What has to be known of a desktop entry to recognise its windows and to list it.
struct DesktopEntry {
    /// Absolute and clean, but symbolic links are left as they are.
    QString path;
    /// Desktop file id, as "org.example.Editor.desktop".
    QString id;
    QString startupWmClass;
    QString flatpakId;
    QString snapName;
    /// What its process may be called: the names of its executable. Empty when
    /// that is an interpreter or a wrapper, which says nothing of the program.
    QStringList executableNames;
    /// What it runs: the path of the executable, or of what an interpreter runs, links
    /// resolved, or a name of that (see interpretedProgram()). Empty when not found, or when
    /// it cannot be told.
    QString program;
    /// In the language of the environment; may be empty, as all of the following.
    QString name;
    QString icon;
    /// The entry counts only if this program can be found.
    QString tryExec;
    /// Names of desktops, as in XDG_CURRENT_DESKTOP. `onlyShowIn` counts from the
    /// moment it is given, even without a name in it.
    std::optional<QStringList> onlyShowIn;
    QStringList notShowIn;
    /// Its program has no window of its own, but is to be run in a terminal's.
    bool runsInTerminal = false;
    /// Not meant for menus.
    bool noDisplay = false;
    /// Deleted by its owner, in the words of the desktop entry format.
    bool hidden = false;
    /// It lies in one of the folders of applications.
    bool installed = false;
    /// An entry of the same id in a folder that wins over this one's.
    bool shadowed = false;
    /// A rule names this very file.
    bool named = false;
};

/// Reads one entry; no value when the text isn't a desktop entry of an application.
/// Does not look for the program.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(const QByteArray &text,
                                                            const QString &path, const QString &id);

/// The same from a file; no value also when it cannot be read. The program is looked for
/// in PATH, or in the folder that the entry names, or else in the home folder.
[[nodiscard]] std::optional<DesktopEntry> readDesktopEntry(const QString &path, const QString &id);

/// Does the entry have a place in the menus of a desktop of these names, the most
/// particular first? Says nothing of shadowed entries. Looks for TryExec's program.
[[nodiscard]] bool belongsInMenus(const DesktopEntry &entry, const QStringList &currentDesktops);

/// Do these keys of an entry name the running desktop as one that it is for?
[[nodiscard]] bool isShownIn(const QStringList &currentDesktops,
                             const std::optional<QStringList> &onlyShowIn,
                             const QStringList &notShowIn);

}  // namespace kestrelbay
