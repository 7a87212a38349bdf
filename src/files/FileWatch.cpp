#include "files/FileWatch.h"

#include <filesystem>
#include <list>
#include <set>
#include <system_error>
#include <utility>

#include <QFile>
#include <QStringList>

namespace fs = std::filesystem;

namespace kestrelbay {

namespace {

/// The places whose changes may lead the path elsewhere, and the file at its end: for each
/// symbolic link on the way, and for the file, the folder that holds it; where the way breaks
/// off, the last folder that there is.
std::set<fs::path> placesOnTheWay(const fs::path &path) {
    constexpr int kMostLinks = 40;  // what Linux allows before ELOOP
    std::set<fs::path> places;
    // A folder that is moved away says so only in the one above it.
    const auto addFolder = [&places](const fs::path &folder) {
        places.insert(folder);
        places.insert(folder.parent_path());
    };
    std::list<fs::path> rest(path.begin(), path.end());
    fs::path at;
    int links = 0;
    while (!rest.empty()) {
        const fs::path part = std::move(rest.front());
        rest.pop_front();
        // What was walked holds no links, so that ".." is what its name says.
        if (part == "..") {
            at = at.parent_path();
            continue;
        }
        const fs::path next = at / part;
        std::error_code error;
        const fs::path target = fs::read_symlink(next, error);
        if (!error) {
            addFolder(at);
            if (++links > kMostLinks)
                return places;
            rest.insert(rest.begin(), target.begin(), target.end());
        } else if (fs::exists(next, error)) {
            at = next;
        } else {
            addFolder(at);
            return places;
        }
    }
    addFolder(at.parent_path());
    places.insert(at);
    return places;
}

}  // namespace

FileWatch::FileWatch(QString path, std::function<void()> changed)
    : path_(std::move(path)), changed_(std::move(changed)) {
    QObject::connect(&watcher_, &QFileSystemWatcher::fileChanged, &watcher_, [this] { note(); });
    QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &watcher_,
                     [this] { note(); });
    watchWay();
}

void FileWatch::note() {
    // First, so that what changes while the file is read is told as well.
    watchWay();
    changed_();
}

void FileWatch::watchWay() {
    // All anew: what bears the same name may be another one.
    const QStringList before = watcher_.files() + watcher_.directories();
    if (!before.isEmpty())
        watcher_.removePaths(before);
    QStringList places;
    for (const fs::path &place : placesOnTheWay(QFile::encodeName(path_).toStdString()))
        places += QFile::decodeName(QByteArray::fromStdString(place.string()));
    watcher_.addPaths(places);
}

}  // namespace kestrelbay
