#include "platform/linux/applications/entries/DesktopEntry.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include "platform/linux/glib/KeyFile.h"

namespace kestrelbay {

namespace {

constexpr qint64 kLargestEntry = 1 << 20;

/// Sorted, to be searched.
constexpr auto kWrappers = std::to_array<std::string_view>({
    "AppRun",
    "appimagelauncher",
    "bash",
    "bwrap",
    "cinnamon-launcher",
    "csh",
    "dash",
    "dbus-launch",
    "dbus-run-session",
    "dbus-send",
    "electron",
    "env",
    "exec",
    "exo-open",
    "firejail",
    "fish",
    "flatpak",
    "gapplication",
    "gio",
    "gjs",
    "gksu",
    "gtk-launch",
    "ionice",
    "java",
    "javaw",
    "kdesu",
    "kioclient",
    "kioclient5",
    "ksh",
    "kstart",
    "kstart5",
    "mono",
    "nice",
    "node",
    "nodejs",
    "nohup",
    "perl",
    "pkexec",
    "python",
    "qdbus",
    "ruby",
    "setsid",
    "sh",
    "snap",
    "su",
    "sudo",
    "systemd-run",
    "tclsh",
    "wine",
    "wine-preloader",
    "wine64",
    "wine64-preloader",
    "wish",
    "xdg-open",
    "zsh",
});
static_assert(std::is_sorted(kWrappers.begin(), kWrappers.end()));

QString baseName(const QString &program) {
    return program.section(u'/', -1);
}

void addName(QStringList &names, const QString &program) {
    const QString name = baseName(program);
    if (!name.isEmpty() && !isInterpreterOrWrapper(name) && !names.contains(name))
        names.append(name);
}

void locateExecutable(DesktopEntry &entry, const QString &program) {
    if (entry.executableNames.isEmpty() || program.isEmpty())
        return;
    const QString found = QStandardPaths::findExecutable(program);
    if (found.isEmpty())
        return;
    const QString real = QFileInfo(found).canonicalFilePath();
    if (isInterpreterOrWrapper(baseName(real)))
        return;
    entry.executablePath = real;
    addName(entry.executableNames, real);
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
           (entry.tryExec.isEmpty() || !QStandardPaths::findExecutable(entry.tryExec).isEmpty());
}

bool isInterpreterOrWrapper(const QString &programName) {
    // Versions are part of the name: python3.11, perl5.36, electron25.
    QString name = programName;
    while (!name.isEmpty() && (name.back().isDigit() || name.back() == u'.'))
        name.chop(1);
    const auto listed = [](const QString &candidate) {
        const QByteArray text = candidate.toUtf8();
        return std::binary_search(
            kWrappers.begin(), kWrappers.end(),
            std::string_view(text.constData(), static_cast<std::size_t>(text.size())));
    };
    return listed(programName) || listed(name);
}

QString programOfExec(const QString &exec) {
    int count = 0;
    char **raw = nullptr;
    if (!g_shell_parse_argv(exec.toUtf8().constData(), &count, &raw, nullptr))
        return {};
    const GStringList words(raw);
    int at = 0;
    if (baseName(QString::fromUtf8(raw[0])) == QLatin1String("env")) {
        // "env -u NAME program" can't be told from "env -i program" by its form.
        for (at = 1; at < count; ++at) {
            const QByteArrayView word(raw[at]);
            if (word == "-u" || word == "-C")
                ++at;
            else if (!word.startsWith('-') && !word.contains('='))
                break;
        }
    }
    return at < count ? QString::fromUtf8(raw[at]) : QString();
}

std::optional<DesktopEntry> parseDesktopEntry(const QByteArray &text, const QString &path,
                                              const QString &id) {
    const std::optional<KeyFile> file = KeyFile::parse(text);
    if (!file || !file->isApplication())
        return std::nullopt;

    DesktopEntry entry;
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
    entry.noDisplay = file->boolean(G_KEY_FILE_DESKTOP_KEY_NO_DISPLAY);
    entry.hidden = file->boolean(G_KEY_FILE_DESKTOP_KEY_HIDDEN);
    entry.executablePath = programOfExec(file->string(G_KEY_FILE_DESKTOP_KEY_EXEC));
    addName(entry.executableNames, entry.executablePath);
    addName(entry.executableNames, entry.tryExec);
    return entry;
}

std::optional<DesktopEntry> readDesktopEntry(const QString &path, const QString &id) {
    // A pipe of this name would never end.
    const QFileInfo info(path);
    if (!info.isFile() || info.size() > kLargestEntry)
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    std::optional<DesktopEntry> entry = parseDesktopEntry(file.read(kLargestEntry), path, id);
    if (entry)
        locateExecutable(*entry, std::exchange(entry->executablePath, QString()));
    return entry;
}

}  // namespace kestrelbay
