#include "platform/linux/desktop/JsonUserDefaults.h"

#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include <QFile>

#include <nlohmann/json.hpp>

#include "files/DataFile.h"

namespace kestrelbay {

namespace {

using Json = nlohmann::ordered_json;

/// What tells a file, and each of its states, from every other. No file is a state, too.
struct FileState {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    /// Of the content or of anything else about the file; nobody can set it.
    std::chrono::nanoseconds changed{};

    bool operator==(const FileState &) const = default;
};

FileState stateOf(const QByteArray &path) {
    struct stat facts {};
    if (::stat(path.constData(), &facts) != 0)
        return {};
    const timespec &changed = facts.st_ctim;
    return {facts.st_dev, facts.st_ino, facts.st_size,
            std::chrono::seconds(changed.tv_sec) + std::chrono::nanoseconds(changed.tv_nsec)};
}

/// Notes what is done to a file from now on, also what leaves no trace in its times. Nobody is
/// woken by it.
class FileAlarm {
public:
    explicit FileAlarm(const QByteArray &path)
        : queue_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)),
          isSet_(::inotify_add_watch(queue_, path.constData(),
                                     IN_MODIFY | IN_ATTRIB | IN_MOVE_SELF | IN_DELETE_SELF) >= 0) {}
    ~FileAlarm() { ::close(queue_); }
    FileAlarm(const FileAlarm &) = delete;
    FileAlarm &operator=(const FileAlarm &) = delete;

    /// Was nothing done? False also when the system could not watch.
    [[nodiscard]] bool isQuiet() const {
        int noted = 0;
        return isSet_ && ::ioctl(queue_, FIONREAD, &noted) == 0 && noted == 0;
    }

private:
    const int queue_;
    const bool isSet_;
};

/// Not an object when the text is not one.
Json parse(const QByteArray &text) {
    return Json::parse(text.begin(), text.end(), nullptr, false);
}

}  // namespace

/// The file, and what was in it when it was parsed last.
class JsonUserDefaults::File {
public:
    File(const QString &path, std::chrono::nanoseconds timeStep)
        : file_(path), path_(QFile::encodeName(path)), timeStep_(timeStep) {}

    /// Absent when there is no such member. Any thread.
    std::optional<Json> member(const QString &key) {
        const std::lock_guard lock(mutex_);
        bringUpToDate();
        const auto found = object_.is_object() ? object_.find(key.toStdString()) : object_.end();
        return found == object_.end() ? std::nullopt : std::optional<Json>(*found);
    }

    void setMember(const QString &key, const Json &value) const {
        const DataFile::Content content = file_.read();
        Json object = parse(content.bytes);
        DataFile::OldFile old = DataFile::OldFile::Replace;
        if (!object.is_object()) {
            object = Json::object();
            if (!content.isBlank())
                old = DataFile::OldFile::Keep;
        }
        object[key.toStdString()] = value;
        constexpr int kIndent = 4;
        // A failed write is lost, as every caller of a settings store expects.
        [[maybe_unused]] const bool written =
            file_.replace(QByteArray::fromStdString(object.dump(kIndent) + '\n'), old);
    }

private:
    void bringUpToDate() {
        // Asked before the file is read: what changes meanwhile is then seen the next time.
        const FileState now = stateOf(path_);
        const bool isPast =
            now.changed + timeStep_ < std::chrono::system_clock::now().time_since_epoch();
        const bool isSame = now == state_ && (isKnown_ || (alarm_ && alarm_->isQuiet()));
        isKnown_ = isPast;
        if (isPast)
            alarm_.reset();
        else if (!isSame)
            alarm_.emplace(path_);
        if (isSame)
            return;
        state_ = now;
        object_ = parse(file_.read().bytes);
    }

    const DataFile file_;
    const QByteArray path_;
    const std::chrono::nanoseconds timeStep_;
    std::mutex mutex_;
    FileState state_;
    // Could no other content of the file have this state?
    bool isKnown_ = false;
    // Until then.
    std::optional<FileAlarm> alarm_;
    Json object_;
};

JsonUserDefaults::JsonUserDefaults(const QString &path, std::chrono::nanoseconds timeStep)
    : file_(std::make_unique<File>(path, timeStep)) {}

JsonUserDefaults::~JsonUserDefaults() = default;

std::optional<QString> JsonUserDefaults::string(const QString &key) const {
    const std::optional<Json> value = file_->member(key);
    if (!value || !value->is_string())
        return std::nullopt;
    return QString::fromStdString(value->get_ref<const std::string &>());
}

std::optional<bool> JsonUserDefaults::boolean(const QString &key) const {
    const std::optional<Json> value = file_->member(key);
    return value && value->is_boolean() ? std::optional(value->get<bool>()) : std::nullopt;
}

void JsonUserDefaults::setString(const QString &key, const QString &value) {
    file_->setMember(key, value.toStdString());
}

void JsonUserDefaults::setBoolean(const QString &key, bool value) {
    file_->setMember(key, value);
}

}  // namespace kestrelbay
