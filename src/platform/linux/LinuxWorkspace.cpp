#include "platform/linux/LinuxWorkspace.h"

#include <chrono>
#include <utility>

#include <QFileInfo>

#include <gio/gdesktopappinfo.h>

#include "files/StandardPath.h"

namespace kestrelbay {

namespace {

/// While a file is being opened: soon enough that a person does not notice.
constexpr unsigned kLookAgainMilliseconds = 25;

QString encoded(const QUrl &url) {
    return QString::fromLatin1(url.toEncoded());
}

/// The entry file of the application that opens this URL; empty when there is none.
QString defaultEntryPath(const QString &url) {
    GObjectPtr<GAppInfo> handler;
    const QString scheme = url.section(u':', 0, 0);
    if (scheme.isEmpty())
        return {};
    if (scheme.compare(QLatin1String("file"), Qt::CaseInsensitive) != 0)
        handler.reset(g_app_info_get_default_for_uri_scheme(scheme.toUtf8().constData()));
    if (!handler) {
        const GObjectPtr<GFile> file(g_file_new_for_uri(url.toUtf8().constData()));
        handler.reset(g_file_query_default_handler(file.get(), nullptr, nullptr));
    }
    if (!handler || !G_IS_DESKTOP_APP_INFO(handler.get()))
        return {};
    return QFile::decodeName(g_desktop_app_info_get_filename(G_DESKTOP_APP_INFO(handler.get())));
}

}  // namespace

LinuxWorkspace::LinuxWorkspace(std::unique_ptr<WindowSource> windows, const QString &displayName,
                               std::chrono::milliseconds openingTakes)
    : windows_(std::move(windows)),
      launcher_(displayName, [this] { return windows_->time(); }),
      openingTakes_(openingTakes),
      index_([this] {
          if (isStarted_)
              windows_->lookAhead();
      }) {
    index_.loop().post([this] { launcher_.connect(); });
    Launches &launches = launcher_.launches();
    windows_->start(
        {.loop = index_.loop(),
         .index = [this] { return index_.currentOrEmpty(); },
         .addLaunch = [this](std::int64_t pid, ProcessFacts &facts) { addLaunch(pid, facts); },
         .isWindowAwaited = [&launches] { return launches.isWindowAwaited(); },
         .windowAppeared =
             [&launches](std::int64_t pid, const QStringList &entryPaths) {
                 launches.windowAppeared(pid, entryPaths);
             }});
    isStarted_ = true;
}

void LinuxWorkspace::addLaunch(std::int64_t pid, ProcessFacts &facts) {
    const Launches &launches = launcher_.launches();
    if (const QString path = launches.entryOf(pid); !path.isEmpty())
        facts.launchedEntryPath = path;
    facts.sessionsEntryPath = launches.entryOfSession(pid);
}

std::vector<std::unique_ptr<RunningApplication>> LinuxWorkspace::runningApplications() {
    ++presses_;
    return windows_->runningApplications(index_.current());
}

std::vector<std::unique_ptr<RunningApplication>> LinuxWorkspace::inactiveApplications() {
    ++presses_;
    return windows_->inactiveApplications(index_.current());
}

std::vector<std::pair<QString, QString>> LinuxWorkspace::windowReport() {
    return windows_->report(index_.current());
}

QUrl LinuxWorkspace::standardized(const QUrl &file) const {
    return QUrl::fromLocalFile(standardPath(file.toLocalFile()));
}

bool LinuxWorkspace::open(const QUrl &file) {
    return openUrl(encoded(file));
}

bool LinuxWorkspace::openUrl(const QString &url) {
    const QString path = QUrl(url).toLocalFile();
    if (path.endsWith(QLatin1String(".desktop")) && QFileInfo(path).isFile())
        return launcher_.open(path).isEmpty();
    const QString entry = defaultEntryPath(url);
    return !entry.isEmpty() && launcher_.open(entry, {url}).isEmpty();
}

void LinuxWorkspace::openApplication(const QUrl &application, const QStringList &arguments,
                                     Completion completion) {
    ++presses_;
    const QString error = launcher_.startNew(application.toLocalFile(), arguments);
    if (completion)
        completion(error);
}

bool LinuxWorkspace::openFiles(const QList<QUrl> &files, const QUrl &application) {
    const std::uint64_t press = presses_;
    QStringList uris;
    for (const QUrl &file : files)
        uris.append(encoded(file));
    const QString path = standardPath(application.toLocalFile());
    std::shared_ptr<WindowSource::Opening> opened = windows_->opening(path, index_.current());
    if (!launcher_.open(path, uris).isEmpty())
        return false;
    if (opened->wasRunning())
        index_.loop().post([this, opened = std::move(opened), press,
                            end = std::chrono::steady_clock::now() + openingTakes_] {
            follow(opened, press, end);
        });
    return true;
}

void LinuxWorkspace::follow(const std::shared_ptr<WindowSource::Opening> &file, std::uint64_t press,
                            std::chrono::steady_clock::time_point end) {
    if (press != presses_)
        return;
    const bool isLastResort = std::chrono::steady_clock::now() >= end;
    if (!file->bringForward(index_.currentOrEmpty(), isLastResort))
        index_.loop().postAfter(kLookAgainMilliseconds,
                                [this, file, press, end] { follow(file, press, end); });
}

bool LinuxWorkspace::showFolder(const QString &path) {
    const QString folder = encoded(QUrl::fromLocalFile(path));
    return launcher_.showFolder(folder) || openUrl(folder);
}

QString LinuxWorkspace::fileManagerIdentifier() const {
    return index_.current()->fileManagerId();
}

void LinuxWorkspace::prepare(const QStringList &applicationPaths) {
    index_.setNamedPaths(applicationPaths);
}

}  // namespace kestrelbay
