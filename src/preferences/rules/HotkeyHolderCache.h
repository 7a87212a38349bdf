#pragma once

#include <map>
#include <set>

#include <QObject>

#include "platform/HotkeyHolders.h"

namespace kestrelbay {

class DispatchQueue;
struct PreferencesServices;

/// Who holds the hotkeys in the rules list, asked on the background queue where a row
/// first shows such a hotkey, and anew after each change of what is held. Main thread.
class HotkeyHolderCache final : public QObject {
    Q_OBJECT

public:
    /// The services have to outlive the cache, and work that it has begun.
    explicit HotkeyHolderCache(const PreferencesServices &services);

    /// Nothing is known until it was asked for, which this call sets going.
    [[nodiscard]] HotkeyHolder holder(const RefusedHotkey &refused);

Q_SIGNALS:
    /// holder() has become another one for some hotkey.
    void holdersArrived();

private:
    void ask(const RefusedHotkey &refused);
    void take(const RefusedHotkey &refused, const HotkeyHolder &holder);

    HotkeyHolders &holders_;
    DispatchQueue &mainQueue_;
    DispatchQueue &backgroundQueue_;
    std::map<RefusedHotkey, HotkeyHolder> known_;
    /// Those that need not be asked for again.
    std::set<RefusedHotkey> asked_;
};

}  // namespace kestrelbay
