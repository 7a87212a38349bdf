#include "platform/linux/desktop/AutostartLoginItem.h"

#include <algorithm>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include "files/DataFile.h"
#include "platform/linux/applications/entries/CommandLine.h"
#include "platform/linux/applications/entries/DesktopEntry.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr const char *kGnomeEnabled = "X-GNOME-Autostart-enabled";

/// Starts the program that follows, whatever it is called, and becomes it. A shell
/// would need a "$", which systemd's reading of autostart entries gets wrong.
constexpr QLatin1StringView kStarter{"nice -n 0 "};

QString quotedWord(const QString &text) {
    QString quoted = u"\""_s;
    for (const QChar character : text) {
        if (u"\"`$\\"_s.contains(character))
            quoted += u'\\';
        quoted += character;
        if (character == u'%')
            quoted += character;
    }
    return quoted + u'"';
}

bool isSameFile(const QString &first, const QString &second) {
    const QString real = QFileInfo(first).canonicalFilePath();
    return !real.isEmpty() && real == QFileInfo(second).canonicalFilePath();
}

enum class Copies : std::uint8_t { Count, DoNotCount };

/// Does the Exec line start this program, if maybe through a script? Not when what it
/// starts is not there.
bool leadsTo(const KeyFile &entry, const QString &executable, Copies copies) {
    const QString exec = entry.string(G_KEY_FILE_DESKTOP_KEY_EXEC);
    const QString line = exec.startsWith(kStarter) ? exec.sliced(kStarter.size()) : exec;
    const QString name = programOfExec(line).replace(u"%%"_s, u"%"_s);
    const QString program = name.isEmpty() ? QString() : QStandardPaths::findExecutable(name);
    if (program.isEmpty())
        return false;
    // A script or a package of an unknown form can only be told by what it names.
    const bool isToldByName =
        copies == Copies::Count || isInterpreterOrWrapper(QFileInfo(program).fileName());
    return isSameFile(program, executable) ||
           (isToldByName && exec.contains("kestrelbay"_L1, Qt::CaseInsensitive));
}

bool isForDesktop(const KeyFile &entry, const QStringList &desktops) {
    return isShownIn(desktops, entry.list(G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN),
                     entry.list(G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN).value_or(QStringList()));
}

bool isTryExecThere(const KeyFile &entry) {
    const QString program = entry.string(G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    return program.isEmpty() || !QStandardPaths::findExecutable(program).isEmpty();
}

/// What the format wants of every entry.
void setTypeAndName(KeyFile &entry) {
    if (!entry.isApplication())
        entry.set(G_KEY_FILE_DESKTOP_KEY_TYPE, QStringLiteral(G_KEY_FILE_DESKTOP_TYPE_APPLICATION));
    if (!entry.has(G_KEY_FILE_DESKTOP_KEY_NAME))
        entry.set(G_KEY_FILE_DESKTOP_KEY_NAME, u"KestrelBay"_s);
}

QString entryIn(const QString &folder) {
    return folder + u"/org.kestrelbay.KestrelBay.desktop"_s;
}

/// A link to a device, or into a folder of the system's, is a way to say no or yes
/// for good. What it leads to is not the user's to change.
bool isLinkOutOfReach(const QString &path) {
    const QFileInfo info(path);
    return info.isSymLink() && info.exists() && !(info.isFile() && info.isWritable());
}

QString thisExecutable() {
    QString executable = QCoreApplication::applicationFilePath();
    // So the system calls a running program whose file an update has replaced.
    constexpr QLatin1StringView kReplaced{" (deleted)"};
    if (executable.endsWith(kReplaced) && !QFileInfo::exists(executable))
        executable.chop(kReplaced.size());

    const QString image = qEnvironmentVariable("APPIMAGE");
    const QString unpacked = qEnvironmentVariable("APPDIR");
    // Programs that were started by another image inherit its variables.
    const bool isInImage = !unpacked.isEmpty() && executable.startsWith(unpacked + u'/');
    return isInImage && QFileInfo(image).isAbsolute() ? image : executable;
}

}  // namespace

QString autostart::execLine(const QString &executable) {
    const bool isPlainWord = std::ranges::none_of(executable, [](QChar character) {
        return character.isSpace() || u"\"'\\><~|&;$*?#()`%="_s.contains(character);
    });
    if (isPlainWord)
        return executable;
    // The format does not allow "=" in the name of a program, and GLib looks for the
    // program before it has resolved "%%".
    if (executable.contains(u'%') || executable.contains(u'='))
        return kStarter + quotedWord(executable);
    return quotedWord(executable);
}

std::optional<KeyFile> autostart::parse(const QByteArray &text) {
    std::optional<KeyFile> file = KeyFile::parse(text, KeyFile::Keep::Everything);
    if (file && !file->isDesktopEntry())
        file.reset();
    return file;
}

bool autostart::startsProgram(const KeyFile &entry, const Context &context) {
    return entry.isApplication() && !entry.boolean(G_KEY_FILE_DESKTOP_KEY_HIDDEN) &&
           entry.boolean(kGnomeEnabled, true) && isForDesktop(entry, context.desktops) &&
           isTryExecThere(entry) && leadsTo(entry, context.executable, Copies::Count);
}

void autostart::makeStartProgram(KeyFile &entry, const Context &context) {
    setTypeAndName(entry);
    if (!entry.has(G_KEY_FILE_DESKTOP_KEY_ICON))
        entry.set(G_KEY_FILE_DESKTOP_KEY_ICON, u"org.kestrelbay.KestrelBay"_s);
    if (!leadsTo(entry, context.executable, Copies::DoNotCount))
        entry.set(G_KEY_FILE_DESKTOP_KEY_EXEC, execLine(context.executable));
    entry.remove(G_KEY_FILE_DESKTOP_KEY_HIDDEN);
    if (!entry.boolean(kGnomeEnabled, true))
        entry.remove(kGnomeEnabled);
    if (!isTryExecThere(entry))
        entry.remove(G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    if (!isForDesktop(entry, context.desktops)) {
        entry.remove(G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN);
        entry.remove(G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN);
    }
}

void autostart::hide(KeyFile &entry) {
    setTypeAndName(entry);
    entry.set(G_KEY_FILE_DESKTOP_KEY_HIDDEN, u"true"_s);
}

AutostartLoginItem::Places AutostartLoginItem::placesOfThisProgram() {
    Places places;
    for (const QString &folder :
         QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation))
        places.systemFolders.append(folder + u"/autostart"_s);
    places.userFolder = places.systemFolders.takeFirst();
    places.context.executable = thisExecutable();
    places.context.desktops =
        qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
    return places;
}

bool AutostartLoginItem::isEnabled() const {
    return isStartedFrom(QStringList{places_.userFolder} + places_.systemFolders);
}

bool AutostartLoginItem::isStartedFrom(const QStringList &folders) const {
    for (const QString &folder : folders) {
        const QString path = entryIn(folder);
        // An entry rules over those of less important folders even if it is broken, or a
        // link to nowhere.
        if (!QFileInfo::exists(path) && !QFileInfo(path).isSymLink())
            continue;
        const std::optional<KeyFile> entry = autostart::parse(DataFile(path).read().bytes);
        return entry && autostart::startsProgram(*entry, places_.context);
    }
    return false;
}

std::optional<QString> AutostartLoginItem::setEnabled(bool enabled) {
    if (enabled == isEnabled())
        return std::nullopt;
    if (enabled && !QFileInfo(places_.context.executable).isExecutable())
        return u"%1 is not there any more"_s.arg(places_.context.executable);

    const QString path = entryIn(places_.userFolder);
    if (!enabled && !isStartedFrom(places_.systemFolders)) {
        QFile file(path);
        if (file.remove())
            return std::nullopt;
        return u"%1 cannot be deleted: %2"_s.arg(path, file.errorString());
    }

    const DataFile file(path);
    const DataFile::Content content = file.read();
    std::optional<KeyFile> entry = autostart::parse(content.bytes);
    DataFile::OldFile old = DataFile::OldFile::Replace;
    if (!entry) {
        entry.emplace();
        if (!content.isBlank())
            old = DataFile::OldFile::Keep;
    }
    if (enabled)
        autostart::makeStartProgram(*entry, places_.context);
    else
        autostart::hide(*entry);
    if (isLinkOutOfReach(path)) {
        QFile::remove(path);
        old = DataFile::OldFile::Replace;
    }
    if (file.replace(entry->text(), old))
        return std::nullopt;
    return u"%1 cannot be written"_s.arg(path);
}

}  // namespace kestrelbay
