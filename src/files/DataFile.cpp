#include "files/DataFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

#include <QFile>
#include <QTemporaryFile>

namespace fs = std::filesystem;

namespace kestrelbay {

namespace {

fs::path toFsPath(const QString &path) {
    return QFile::encodeName(path).toStdString();
}
QString fromFsPath(const fs::path &path) {
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

/// Follows links to the place of a real file, which need not exist. The paths are
/// not simplified: only the system knows what ".." means behind a link.
std::optional<fs::path> resolveLinks(fs::path path) {
    constexpr int kMostLinks = 40;  // what Linux allows before ELOOP
    for (int links = 0; links <= kMostLinks; ++links) {
        std::error_code error;
        const fs::path target = fs::read_symlink(path, error);
        if (error)
            return path;
        path = path.parent_path() / target;
    }
    return std::nullopt;
}

/// Those that are made are for the user only.
bool makeFolders(const fs::path &folder) {
    std::error_code error;
    if (fs::is_directory(folder, error))
        return true;
    const fs::path above = folder.parent_path();
    if (!above.empty() && (above == folder || !makeFolders(above)))
        return false;
    return ::mkdir(folder.c_str(), S_IRWXU) == 0 || fs::is_directory(folder, error);
}

/// Gives a new file what the old one of that name lets others do. What the user may not
/// pass on, as the owner, stays as it is.
void takeOverAccess(int newFile, const fs::path &oldFile) {
    struct stat old {};
    if (::stat(oldFile.c_str(), &old) != 0 || !S_ISREG(old.st_mode))
        return;
    if (::fchown(newFile, old.st_uid, old.st_gid) != 0) {
        constexpr auto kSameOwner = static_cast<uid_t>(-1);
        [[maybe_unused]] const int sameGroup = ::fchown(newFile, kSameOwner, old.st_gid);
    }
    // A file that its owner may not read would be of no use.
    [[maybe_unused]] const int sameMode = ::fchmod(newFile, (old.st_mode & ALLPERMS) | S_IRUSR);
}

/// Waits until the disk has it. False when it could not take it, as some find out only now.
bool isOnDisk(int file) {
    // Not every file system knows how to wait.
    return ::fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP;
}

/// Without this a crash of the machine may undo a renaming.
void syncFolder(const fs::path &folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

/// A name that no other file bears; somebody may take it before it is used, so
/// every use must refuse to overwrite.
fs::path nameForKeeping(const fs::path &file, int attempt) {
    fs::path name = file;
    name += ".unreadable";
    if (attempt > 1)
        name += "." + std::to_string(attempt);
    return name;
}

enum class Kept : std::uint8_t {
    No,
    AsLink,  ///< under both names
    AsCopy,
    Moved,  ///< under the new name only
    NameTaken,
};

Kept keepAs(const fs::path &file, const fs::path &name) {
    std::error_code error;
    fs::create_hard_link(file, name, error);
    if (!error)
        return Kept::AsLink;
    if (error == std::errc::file_exists)
        return Kept::NameTaken;

    // Some file systems know no hard links, and some systems forbid them on files
    // of other users; those may not even be readable. They can still be renamed.
    const QString from = fromFsPath(file);
    const QString to = fromFsPath(name);
    if (QFile::copy(from, to))
        return Kept::AsCopy;
    if (fs::exists(fs::symlink_status(name, error)))
        return Kept::NameTaken;
    return QFile::rename(from, to) ? Kept::Moved : Kept::No;
}

struct KeptFile {
    Kept how = Kept::No;
    fs::path name;
};

KeptFile keepOldFile(const fs::path &file) {
    constexpr int kMostAttempts = 1000;
    for (int attempt = 1; attempt <= kMostAttempts; ++attempt) {
        const fs::path name = nameForKeeping(file, attempt);
        const Kept how = keepAs(file, name);
        if (how != Kept::NameTaken)
            return {how, name};
    }
    return {};
}

/// The old file is at its place again, under no other name.
void restore(const KeptFile &kept, const fs::path &file) {
    std::error_code ignored;
    if (kept.how == Kept::Moved)
        fs::rename(kept.name, file, ignored);
    else if (kept.how != Kept::No)
        fs::remove(kept.name, ignored);
}

}  // namespace

DataFile::Content DataFile::read() const {
    const auto unusable = [](const QString &problem) {
        return Content{Status::Unusable, {}, problem};
    };
    std::error_code error;
    const fs::file_status status = fs::status(toFsPath(path_), error);
    if (status.type() == fs::file_type::not_found)
        return {};
    if (error)
        return unusable(QString::fromLocal8Bit(error.message()));
    // Opening a pipe would wait for its writer.
    if (status.type() != fs::file_type::regular)
        return unusable(QStringLiteral("it is not a file"));

    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly))
        return unusable(file.errorString());
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return unusable(file.errorString());
    return {Status::Ok, bytes, {}};
}

bool DataFile::makeFolder() const {
    const std::optional<fs::path> target = resolveLinks(toFsPath(path_));
    return target && makeFolders(target->parent_path());
}

bool DataFile::replace(const QByteArray &bytes, OldFile old) const {
    const std::optional<fs::path> target = resolveLinks(toFsPath(path_));
    std::error_code error;
    if (!target || !makeFolders(target->parent_path()) || fs::is_directory(*target, error))
        return false;

    // Not QSaveFile: it refuses to replace a file that is write-protected, which is how some
    // keep their configuration. The new file is on disk before the old one is touched: a full
    // disk then leaves no trace.
    QTemporaryFile file(fromFsPath(*target) + QStringLiteral(".XXXXXX"));
    if (!file.open() || file.write(bytes) != bytes.size() || !file.flush())
        return false;
    takeOverAccess(file.handle(), *target);
    if (!isOnDisk(file.handle()))
        return false;

    KeptFile kept;
    if (old == OldFile::Keep && fs::status(*target, error).type() != fs::file_type::not_found) {
        kept = keepOldFile(*target);
        if (kept.how == Kept::No)
            return false;
    }
    fs::rename(toFsPath(file.fileName()), *target, error);
    if (error) {
        restore(kept, *target);
        return false;
    }
    file.setAutoRemove(false);
    syncFolder(target->parent_path());
    return true;
}

}  // namespace kestrelbay
