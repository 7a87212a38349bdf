#include "preferences/rules/ApplicationIconCache.h"

#include <utility>

#include <QPointer>

#include "platform/ApplicationCatalog.h"
#include "preferences/PreferencesServices.h"
#include "tasks/DispatchQueue.h"
#include "ui/look/Screens.h"

namespace kestrelbay {

ApplicationIconCache::ApplicationIconCache(const PreferencesServices &services)
    : catalog_(services.catalog),
      mainQueue_(services.mainQueue),
      backgroundQueue_(services.backgroundQueue) {}

QImage ApplicationIconCache::icon(const QString &applicationPath) {
    if (applicationPath.isEmpty())
        return {};
    const bool isKnown = entries_.contains(applicationPath);
    Entry &entry = entries_[applicationPath];
    if (!isKnown || entry.state == State::Outdated) {
        entry.state = State::Wanted;
        wanted_.append(applicationPath);
        // The other rows of this turn come along.
        if (!std::exchange(isReading_, true))
            mainQueue_.async([cache = QPointer(this)] {
                if (cache)
                    cache->readWanted();
            });
    }
    return entry.image;
}

void ApplicationIconCache::refresh() {
    bool isAnyOutdated = false;
    for (Entry &entry : entries_) {
        if (entry.state != State::Read)
            continue;
        entry.state = State::Outdated;
        isAnyOutdated = true;
    }
    // Whoever shows one asks for it now.
    if (isAnyOutdated)
        Q_EMIT iconsArrived();
}

void ApplicationIconCache::forget() {
    entries_.clear();
    wanted_.clear();
}

void ApplicationIconCache::readWanted() {
    isReading_ = !wanted_.isEmpty();
    if (!isReading_)
        return;
    // The services outlive the work, this object may not: the main thread has the last word.
    backgroundQueue_.async([cache = QPointer(this), paths = std::exchange(wanted_, {}),
                            icons = listIconsForScreens(kIconSide), &catalog = catalog_,
                            &mainQueue = mainQueue_] {
        std::vector<bool> missing;
        for (const QString &path : paths)
            missing.push_back(catalog.nameOfFile(path).isEmpty());
        mainQueue.async(
            [cache, paths, images = catalog.listIcons(paths, icons), missing = std::move(missing)] {
                if (cache)
                    cache->take(paths, images, missing);
            });
    });
}

void ApplicationIconCache::take(const QStringList &paths, const std::vector<QImage> &images,
                                const std::vector<bool> &missing) {
    bool isAnyNew = false;
    for (qsizetype i = 0; i < paths.size(); ++i) {
        Entry &entry = entries_[paths[i]];
        const auto at = static_cast<std::size_t>(i);
        entry.state = State::Read;
        if (entry.image != images.at(at) || entry.isMissing != missing.at(at)) {
            entry.image = images.at(at);
            entry.isMissing = missing.at(at);
            isAnyNew = true;
        }
    }
    readWanted();
    if (isAnyNew)
        Q_EMIT iconsArrived();
}

}  // namespace kestrelbay
