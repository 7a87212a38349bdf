#include "preferences/rules/HotkeyHolderCache.h"

#include <QPointer>

#include "preferences/PreferencesServices.h"
#include "settings/Notifications.h"
#include "tasks/DispatchQueue.h"

namespace kestrelbay {

HotkeyHolderCache::HotkeyHolderCache(const PreferencesServices &services)
    : holders_(services.hotkeyHolders),
      mainQueue_(services.mainQueue),
      backgroundQueue_(services.backgroundQueue) {
    connect(&services.notifications, &Notifications::refusedHotkeysDidChange, this,
            [this] { asked_.clear(); });
}

HotkeyHolder HotkeyHolderCache::holder(const RefusedHotkey &refused) {
    if (asked_.insert(refused).second)
        ask(refused);
    const auto known = known_.find(refused);
    return known == known_.end() ? HotkeyHolder() : known->second;
}

void HotkeyHolderCache::ask(const RefusedHotkey &refused) {
    // The services outlive the work, this object may not: the main thread has the last word.
    backgroundQueue_.async(
        [cache = QPointer(this), refused, &holders = holders_, &mainQueue = mainQueue_] {
            mainQueue.async([cache, refused, holder = holders.holderOf(refused)] {
                if (cache)
                    cache->take(refused, holder);
            });
        });
}

void HotkeyHolderCache::take(const RefusedHotkey &refused, const HotkeyHolder &holder) {
    HotkeyHolder &known = known_[refused];
    if (known == holder)
        return;
    known = holder;
    Q_EMIT holdersArrived();
}

}  // namespace kestrelbay
