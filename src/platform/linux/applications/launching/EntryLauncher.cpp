#include "platform/linux/applications/launching/EntryLauncher.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <iterator>
#include <optional>
#include <utility>

#include <gio/gdesktopappinfo.h>
#include <unistd.h>

#include <QFile>
#include <QStandardPaths>
#include <QSysInfo>

#include "files/StandardPath.h"
#include "platform/linux/applications/entries/ApplicationFolders.h"
#include "platform/linux/applications/entries/CommandLine.h"
#include "platform/linux/applications/launching/ExecLine.h"
#include "platform/linux/applications/matching/Terminals.h"
#include "platform/linux/glib/KeyFile.h"

namespace kestrelbay {

namespace {

/// Meant for this process, or for the way it was started.
constexpr auto kOwnVariables = std::to_array<const char *>(
    {"DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN", "GIO_LAUNCHED_DESKTOP_FILE",
     "GIO_LAUNCHED_DESKTOP_FILE_PID", "QT_QPA_PLATFORM", "INVOCATION_ID", "JOURNAL_STREAM",
     "NOTIFY_SOCKET", "LISTEN_FDS", "LISTEN_PID", "LISTEN_FDNAMES", "WATCHDOG_PID", "WATCHDOG_USEC",
     "MANAGERPID", "SYSTEMD_EXEC_PID"});

/// The id of the application, which is that of its entry without ".desktop".
QString applicationId(const QString &entryPath) {
    const QString id = desktopFileId(entryPath, applicationFolders());
    const QLatin1String suffix(".desktop");
    return id.endsWith(suffix) ? id.chopped(suffix.size()) : id;
}

/// Runs in the child, where only calls are allowed that are safe after a fork of a
/// program with threads.
void prepareChild(gpointer) {
    setsid();
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    // All of them: shells cannot hear what was ignored when they were started. Those that
    // cannot be set stay as they are.
    for (int signal = 1; signal < NSIG; ++signal)
        static_cast<void>(std::signal(signal, SIG_DFL));
}

std::optional<KeyFile> loadEntry(const QString &path) {
    std::optional<KeyFile> entry = KeyFile::read(path);
    if (entry && !entry->isApplication())
        entry.reset();
    return entry;
}

/// Has the Exec line run its program in a terminal. False when there is no such program; without
/// a terminal that we know it is left to GIO.
bool putIntoTerminal(KeyFile &entry, const QString &path) {
    const QString line = entry.string(G_KEY_FILE_DESKTOP_KEY_EXEC);
    if (QStandardPaths::findExecutable(programOfExec(line)).isEmpty())
        return false;
    const std::optional<QStringList> prefix = terminalPrefix(path);
    if (!prefix)
        return true;
    QStringList words;
    std::ranges::transform(*prefix, std::back_inserter(words), quotedForExec);
    entry.set(G_KEY_FILE_DESKTOP_KEY_EXEC, (words << line).join(u' '));
    entry.remove(G_KEY_FILE_DESKTOP_KEY_TERMINAL);
    return true;
}

/// The application of the entry, to be started by its Exec line, which is rewritten.
GObjectPtr<GAppInfo> rewrittenApplication(KeyFile &entry, const QString &path, FileCodes fileCodes,
                                          const QStringList &arguments) {
    const std::optional<QString> line =
        rewrittenExec(entry.string(G_KEY_FILE_DESKTOP_KEY_EXEC),
                      {.localizedName = entry.localized(G_KEY_FILE_DESKTOP_KEY_NAME),
                       .icon = entry.localized(G_KEY_FILE_DESKTOP_KEY_ICON),
                       .entryPath = path},
                      fileCodes, arguments);
    if (!line)
        return nullptr;
    entry.set(G_KEY_FILE_DESKTOP_KEY_EXEC, *line);
    if (entry.boolean(G_KEY_FILE_DESKTOP_KEY_TERMINAL) && !putIntoTerminal(entry, path))
        return nullptr;
    entry.remove(G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE);
    GDesktopAppInfo *application = g_desktop_app_info_new_from_keyfile(entry.get());
    return GObjectPtr<GAppInfo>(application ? G_APP_INFO(application) : nullptr);
}

QString unreadable(const QString &path) {
    return QStringLiteral("%1 is not a desktop entry of an application").arg(path);
}

QString notInstalled(const QString &path) {
    return QStringLiteral("the program that %1 starts is not installed").arg(path);
}

}  // namespace

QString EntryLauncher::newStartupId() const {
    static std::atomic<unsigned> count{0};
    return QStringLiteral("kestrelbay-%1-%2-%3_TIME%4")
        .arg(getpid())
        .arg(QSysInfo::machineHostName())
        .arg(++count)
        .arg(serverTime_());
}

void EntryLauncher::setActivationToken(const QString &token) {
    const std::lock_guard lock(tokenMutex_);
    activationToken_ = token;
}

QString EntryLauncher::takeActivationToken() {
    const std::lock_guard lock(tokenMutex_);
    return std::exchange(activationToken_, {});
}

QString EntryLauncher::open(const QString &entryPath, const QStringList &uris) {
    const Launches::Launch launch{newStartupId(), standardPath(entryPath), uris};
    if (!launches_.begin(launch, Launches::Repeat::UnlessUnderWay))
        return {};
    QString error = openNow(launch);
    if (!error.isEmpty())
        launches_.failed(launch.startupId);
    return error;
}

QString EntryLauncher::openNow(const Launches::Launch &launch) {
    const QString &path = launch.entryPath;
    std::optional<KeyFile> entry = loadEntry(path);
    if (!entry)
        return unreadable(path);

    const QString token = takeActivationToken();
    GObjectPtr<GAppInfo> application;
    const bool isOnBus = entry->boolean(G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE);
    if (isOnBus) {
        // A slow service has been told; starting a second one would be worse.
        if (bus_.activate(applicationId(path), launch.uris, {launch.startupId, token}) !=
            BusAnswer::Failed)
            return {};
    }
    if (isOnBus || entry->boolean(G_KEY_FILE_DESKTOP_KEY_TERMINAL)) {
        application = rewrittenApplication(*entry, path, FileCodes::Keep, {});
    } else if (GDesktopAppInfo *info =
                   g_desktop_app_info_new_from_filename(QFile::encodeName(path).constData())) {
        application.reset(G_APP_INFO(info));
    }
    return application ? spawn(application.get(), launch, token) : notInstalled(path);
}

QString EntryLauncher::startNew(const QString &entryPath, const QStringList &arguments) {
    const QString path = standardPath(entryPath);
    std::optional<KeyFile> entry = loadEntry(path);
    if (!entry)
        return unreadable(path);
    const GObjectPtr<GAppInfo> application =
        rewrittenApplication(*entry, path, FileCodes::Drop, arguments);
    if (!application)
        return notInstalled(path);
    const Launches::Launch launch{newStartupId(), path, {}};
    static_cast<void>(launches_.begin(launch, Launches::Repeat::Always));
    QString error = spawn(application.get(), launch, takeActivationToken());
    if (!error.isEmpty())
        launches_.failed(launch.startupId);
    return error;
}

bool EntryLauncher::showFolder(const QString &uri) {
    return bus_.showFolder(uri, newStartupId()) == BusAnswer::Done;
}

QString EntryLauncher::spawn(GAppInfo *application, const Launches::Launch &launch,
                             const QString &activationToken) {
    connect();
    const GObjectPtr<GAppLaunchContext> context(g_app_launch_context_new());
    for (const char *name : kOwnVariables)
        g_app_launch_context_unsetenv(context.get(), name);
    g_app_launch_context_setenv(context.get(), "DESKTOP_STARTUP_ID",
                                launch.startupId.toUtf8().constData());
    if (!activationToken.isEmpty())
        g_app_launch_context_setenv(context.get(), "XDG_ACTIVATION_TOKEN",
                                    activationToken.toUtf8().constData());
    g_app_launch_context_setenv(context.get(), "GIO_LAUNCHED_DESKTOP_FILE",
                                QFile::encodeName(launch.entryPath).constData());
    if (!displayName_.isEmpty())
        g_app_launch_context_setenv(context.get(), "DISPLAY",
                                    displayName_.toLocal8Bit().constData());

    GList *list = nullptr;
    for (const QString &uri : launch.uris)
        list = g_list_append(list, g_strdup(uri.toUtf8().constData()));

    struct Child {
        EntryLauncher *launcher;
        const Launches::Launch &launch;
    } child{this, launch};
    const auto onStarted = [](GDesktopAppInfo *, GPid pid, gpointer data) {
        const auto &[launcher, launched] = *static_cast<const Child *>(data);
        launcher->launches_.started(launched.startupId, pid);
        launcher->bus_.moveToScope(applicationId(launched.entryPath), pid);
    };
    GError *raw = nullptr;
    const auto flags = static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL |
                                                G_SPAWN_STDERR_TO_DEV_NULL);
    const bool launched = g_desktop_app_info_launch_uris_as_manager(
        G_DESKTOP_APP_INFO(application), list, context.get(), flags, prepareChild, nullptr,
        onStarted, &child, &raw);
    g_list_free_full(list, g_free);
    const GErrorPtr error(raw);
    if (launched)
        return {};
    return error ? QString::fromUtf8(error->message)
                 : QStringLiteral("%1 could not be started").arg(launch.entryPath);
}

}  // namespace kestrelbay
