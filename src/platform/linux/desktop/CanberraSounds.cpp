#include "platform/linux/desktop/CanberraSounds.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include <canberra.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include "platform/linux/glib/GObjectPtr.h"

namespace kestrelbay {

namespace {

/// How long the end of the program may wait for a sound server that hangs.
constexpr std::chrono::milliseconds kPatience{200};

/// The endings of sound files, in the order they are tried.
QStringList soundFileSuffixes() {
    return {QStringLiteral(".oga"), QStringLiteral(".ogg"), QStringLiteral(".wav")};
}

using Context = std::unique_ptr<ca_context, ReleaseWith<ca_context_destroy>>;
using Properties = std::unique_ptr<ca_proplist, ReleaseWith<ca_proplist_destroy>>;

Context makeContext() {
    ca_context *context = nullptr;
    if (ca_context_create(&context) != CA_SUCCESS)
        return {};
    Context owned(context);
    ca_context_change_props(context, CA_PROP_APPLICATION_NAME, "KestrelBay", CA_PROP_APPLICATION_ID,
                            "kestrelbay", nullptr);
    return owned;
}

/// False when the server could not be reached or would not play.
bool playFile(ca_context *context, const QString &path) {
    ca_proplist *properties = nullptr;
    if (ca_proplist_create(&properties) != CA_SUCCESS)
        return false;
    const Properties owned(properties);
    ca_proplist_sets(properties, CA_PROP_MEDIA_FILENAME, QFile::encodeName(path).constData());
    ca_proplist_sets(properties, CA_PROP_MEDIA_ROLE, "event");
    return ca_context_play_full(context, 0, properties, nullptr, nullptr) == CA_SUCCESS;
}

}  // namespace

QStringList standardSoundDirectories() {
    // Not QCoreApplication's answer: the services are made before it may exist.
    const QString executable = QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget();
    const QDir executableFolder(QFileInfo(executable).path());
    QStringList directories{QDir::cleanPath(
        executableFolder.filePath(QStringLiteral(KESTRELBAY_DATA_FROM_BIN "/kestrelbay/sounds")))};
    const QStringList shared =
        QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    for (const QString &folder : shared)
        directories += folder + QStringLiteral("/sounds/freedesktop/stereo");
    return directories;
}

QString findSoundFile(const QStringList &directories, const QString &name) {
    if (name.isEmpty() || name.contains(QLatin1Char('/')) || name.contains(QChar(u'\0')))
        return {};
    const QStringList suffixes = soundFileSuffixes();
    for (const QString &directory : directories) {
        for (const QString &suffix : suffixes) {
            QString path = directory + QLatin1Char('/') + name + suffix;
            if (QFileInfo(path).isFile())
                return path;
        }
    }
    return {};
}

/// Shared by the owner and the thread, so that the thread can outlive the owner.
class CanberraSounds::Player {
public:
    explicit Player(QStringList directories) : directories_(std::move(directories)) {}

    /// Null when the system has no thread to spare.
    static std::shared_ptr<Player> start(const QStringList &directories) {
        auto player = std::make_shared<Player>(directories);
        try {
            // Detached, because there is no way to end a call into a hung server.
            std::thread([player] { player->run(); }).detach();
        } catch (const std::system_error &) {
            return nullptr;
        }
        return player;
    }

    void play(const QString &name) {
        const std::lock_guard lock(mutex_);
        next_ = name;
        changed_.notify_all();
    }

    void stop() {
        std::unique_lock lock(mutex_);
        stopping_ = true;
        changed_.notify_all();
        changed_.wait_for(lock, kPatience, [this] { return stopped_; });
    }

private:
    void run() {
        Context context;
        while (const auto name = takeNext()) {
            const QString path = findSoundFile(directories_, *name);
            if (path.isEmpty())
                continue;
            if (!context)
                context = makeContext();
            // A context whose server has gone stays broken: the next sound gets another.
            if (context && !playFile(context.get(), path))
                context.reset();
        }
        context.reset();
        const std::lock_guard lock(mutex_);
        stopped_ = true;
        changed_.notify_all();
    }

    std::optional<QString> takeNext() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return stopping_ || next_; });
        return stopping_ ? std::nullopt : std::exchange(next_, std::nullopt);
    }

    const QStringList directories_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::optional<QString> next_;
    bool stopping_ = false;
    bool stopped_ = false;
};

CanberraSounds::CanberraSounds(QStringList directories) : directories_(std::move(directories)) {}

CanberraSounds::~CanberraSounds() {
    if (player_)
        player_->stop();
}

QStringList CanberraSounds::directories() const {
    QStringList existing = directories_;
    existing.removeIf([](const QString &directory) { return !QFileInfo(directory).isDir(); });
    return existing;
}

QStringList CanberraSounds::suffixes() const {
    return soundFileSuffixes();
}

void CanberraSounds::play(const QString &name) {
    if (name.isEmpty())
        return;
    if (!player_)
        player_ = Player::start(directories_);
    if (player_)
        player_->play(name);
}

}  // namespace kestrelbay
