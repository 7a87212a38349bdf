#include "platform/linux/applications/entries/DesktopEntry.h"

#include <utility>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include "platform/linux/applications/entries/CommandLine.h"
#include "platform/linux/applications/entries/Interpreters.h"
#include "platform/linux/glib/KeyFile.h"

namespace kestrelbay {

namespace {

constexpr qint64 kLargestEntry = 1 << 20;

void addName(QStringList &names, const QString &program) {
    const QString name = baseName(program);
    if (!name.isEmpty() && !isInterpreterOrWrapper(name) && !names.contains(name))
        names.append(name);
}

struct Parsed {
    DesktopEntry entry;
    CommandLine command;
};

void locateProgram(const CommandLine &command, DesktopEntry &entry) {
    const QString program = command.words.value(0);
    if (isInterpreterOrWrapper(baseName(program))) {
        entry.program = interpretedProgram(command);
        return;
    }
    const QString found =
        executable(program.contains(u'/') ? pathFrom(command.folder, program) : program);
    const QString real = found.isEmpty() ? found : QFileInfo(found).canonicalFilePath();
    if (program.isEmpty() || isInterpreterOrWrapper(baseName(real)))
        return;
    entry.program = real;
    addName(entry.executableNames, real);
}

std::optional<Parsed> parsed(const QByteArray &text, const QString &path, const QString &id) {
    const std::optional<KeyFile> file = KeyFile::parse(text);
    if (!file || !file->isApplication())
        return std::nullopt;

    std::optional<Parsed> result(std::in_place);
    DesktopEntry &entry = result->entry;
    entry.path = path;
    entry.id = id;
    entry.startupWmClass = file->string(G_KEY_FILE_DESKTOP_KEY_STARTUP_WM_CLASS);
    entry.flatpakId = file->string("X-Flatpak");
    entry.snapName = file->string("X-SnapInstanceName");
    entry.name = file->localized(G_KEY_FILE_DESKTOP_KEY_NAME);
    entry.icon = file->localized(G_KEY_FILE_DESKTOP_KEY_ICON);
    entry.tryExec = file->string(G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    entry.onlyShowIn = file->list(G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN);
    entry.notShowIn = file->list(G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN).value_or(QStringList());
    entry.runsInTerminal = file->boolean(G_KEY_FILE_DESKTOP_KEY_TERMINAL);
    entry.noDisplay = file->boolean(G_KEY_FILE_DESKTOP_KEY_NO_DISPLAY);
    entry.hidden = file->boolean(G_KEY_FILE_DESKTOP_KEY_HIDDEN);

    // Launched programs start in our own folder, which is that one.
    const QString folder = pathFrom(QDir::homePath(), file->string(G_KEY_FILE_DESKTOP_KEY_PATH));
    result->command = innermostCommand(
        {wordsOfExec(file->string(G_KEY_FILE_DESKTOP_KEY_EXEC)).value_or(QStringList()),
         folder.isEmpty() ? QDir::homePath() : folder});
    addName(entry.executableNames, result->command.words.value(0));
    addName(entry.executableNames, entry.tryExec);
    return result;
}

}  // namespace

bool isShownIn(const QStringList &currentDesktops, const std::optional<QStringList> &onlyShowIn,
               const QStringList &notShowIn) {
    for (const QString &desktop : currentDesktops) {
        if (onlyShowIn && onlyShowIn->contains(desktop))
            return true;
        if (notShowIn.contains(desktop))
            return false;
    }
    return !onlyShowIn;
}

bool belongsInMenus(const DesktopEntry &entry, const QStringList &currentDesktops) {
    return !entry.hidden && !entry.noDisplay &&
           isShownIn(currentDesktops, entry.onlyShowIn, entry.notShowIn) &&
           (entry.tryExec.isEmpty() || !executable(entry.tryExec).isEmpty());
}

std::optional<DesktopEntry> parseDesktopEntry(const QByteArray &text, const QString &path,
                                              const QString &id) {
    const std::optional<Parsed> result = parsed(text, path, id);
    return result ? std::optional(result->entry) : std::nullopt;
}

std::optional<DesktopEntry> readDesktopEntry(const QString &path, const QString &id) {
    // A pipe of this name would never end.
    const QFileInfo info(path);
    if (!info.isFile() || info.size() > kLargestEntry)
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    std::optional<Parsed> result = parsed(file.read(kLargestEntry), path, id);
    if (!result)
        return std::nullopt;
    locateProgram(result->command, result->entry);
    return std::move(result->entry);
}

}  // namespace kestrelbay
