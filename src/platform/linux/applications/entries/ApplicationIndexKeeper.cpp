#include "platform/linux/applications/entries/ApplicationIndexKeeper.h"

#include <chrono>
#include <utility>

#include <QFile>
#include <QFileInfo>

#include <gio/gdesktopappinfo.h>

#include "files/StandardPath.h"
#include "platform/linux/applications/entries/ApplicationFolders.h"

namespace kestrelbay {

namespace {

/// Installing a package changes many files at once.
constexpr unsigned kQuietMilliseconds = 200;
/// A key press is worth no more waiting than this, whatever the disk does.
constexpr std::chrono::seconds kLongestBuild{5};

QString fileManagerIdentifier() {
    const GObjectPtr<GAppInfo> handler(g_app_info_get_default_for_type("inode/directory", FALSE));
    const char *id = handler ? g_app_info_get_id(handler.get()) : nullptr;
    return QString::fromUtf8(id);
}

/// The folder itself, or the nearest one above it that exists: GLib polls for
/// what doesn't exist, and an idle program must not wake up.
QString watchableFolder(QString folder) {
    while (!QFileInfo(folder).isDir() && folder.size() > 1)
        folder = QFileInfo(folder).path();
    return folder;
}

}  // namespace

/// A GLib object with a signal "changed", after which the keeper builds again.
struct ApplicationIndexKeeper::Watch {
    Watch(gpointer object, ApplicationIndexKeeper *keeper)
        : object_(G_OBJECT(object)),
          handler_(g_signal_connect_swapped(object, "changed", G_CALLBACK(&Watch::tell), keeper)) {}
    ~Watch() { g_signal_handler_disconnect(object_.get(), handler_); }

private:
    /// What else the signal says is not asked for.
    static void tell(ApplicationIndexKeeper *keeper) { keeper->scheduleBuild(); }

    GObjectPtr<GObject> object_;
    gulong handler_;
};

ApplicationIndexKeeper::ApplicationIndexKeeper(std::function<void()> rebuilt)
    : rebuilt_(std::move(rebuilt)), folders_(applicationFolders()) {
    request();
}

ApplicationIndexKeeper::~ApplicationIndexKeeper() {
    // Watches are tied to the loop's context and have to go on its thread.
    loop_.post([this] {
        watches_.clear();
        defaultsWatch_.reset();
        buildScheduled_ = true;
    });
}

void ApplicationIndexKeeper::request() {
    {
        const std::lock_guard lock(mutex_);
        ++requested_;
    }
    loop_.post([this] { build(); });
}

void ApplicationIndexKeeper::setNamedPaths(const QStringList &paths) {
    {
        const std::lock_guard lock(mutex_);
        if (namedPaths_ == paths)
            return;
        namedPaths_ = paths;
    }
    request();
}

std::shared_ptr<const ApplicationIndex> ApplicationIndexKeeper::current() const {
    {
        std::unique_lock lock(mutex_);
        const std::uint64_t needed = requested_;
        built_.wait_for(lock, kLongestBuild, [&] { return done_ >= needed; });
    }
    return currentOrEmpty();
}

std::shared_ptr<const ApplicationIndex> ApplicationIndexKeeper::currentOrEmpty() const {
    static const auto kEmpty =
        std::make_shared<const ApplicationIndex>(std::vector<DesktopEntry>());
    const std::lock_guard lock(mutex_);
    return index_ ? index_ : kEmpty;
}

void ApplicationIndexKeeper::build() {
    QStringList named;
    std::uint64_t answers = 0;
    {
        const std::lock_guard lock(mutex_);
        named = namedPaths_;
        answers = requested_;
    }
    // Watching starts before reading, so that no change falls in between.
    QStringList watched = foldersWithSubfolders(folders_);
    for (const QString &folder : folders_)
        watched.append(watchableFolder(folder));
    for (const QString &path : std::as_const(named))
        if (path.startsWith(u'/'))
            watched.append(watchableFolder(QFileInfo(standardPath(path)).path()));
    watched.removeDuplicates();
    watch(watched);

    auto index = std::make_shared<const ApplicationIndex>(readDesktopEntries(folders_, named),
                                                          fileManagerIdentifier());
    {
        const std::lock_guard lock(mutex_);
        index_ = std::move(index);
        done_ = answers;
    }
    built_.notify_all();
    if (rebuilt_)
        rebuilt_();
}

void ApplicationIndexKeeper::watch(const QStringList &folders) {
    if (!defaultsWatch_)
        defaultsWatch_ = std::make_unique<Watch>(g_app_info_monitor_get(), this);
    watches_.clear();
    for (const QString &folder : folders) {
        const GObjectPtr<GFile> file(g_file_new_for_path(QFile::encodeName(folder).constData()));
        GFileMonitor *monitor =
            g_file_monitor_directory(file.get(), G_FILE_MONITOR_NONE, nullptr, nullptr);
        if (monitor)
            watches_.push_back(std::make_unique<Watch>(monitor, this));
    }
}

void ApplicationIndexKeeper::scheduleBuild() {
    if (std::exchange(buildScheduled_, true))
        return;
    loop_.postAfter(kQuietMilliseconds, [this] {
        buildScheduled_ = false;
        build();
    });
}

}  // namespace kestrelbay
