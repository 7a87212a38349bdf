#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <vector>

#include <QJsonObject>

#include "platform/linux/wayland/sway/windows/SwayTree.h"
#include "platform/linux/wayland/windows/LastUsed.h"

namespace kestrelbay::sway {

/// sway's windows as its tree has shown them, and as events have told since. Any thread; nobody
/// waits here.
///
/// Events tell of every window that gets the focus. They do not tell whole where a window is that
/// moves, and nothing of a focus that goes to no window, such as that of a panel or a split. So
/// known() holds for who has the focus only in that nobody else has it.
class KeptWindows {
public:
    /// From now on events tell of all that happens, or no longer.
    void setInformed(bool isInformed);
    /// An event of a window.
    void takeIn(const QJsonObject &event);
    /// sway is asked to change something, of which the events are still to come.
    void willChange();

    /// To be taken before the tree is asked for.
    [[nodiscard]] std::uint64_t moment() const;
    /// The tree as it was asked for at that moment. Gives its windows, the last used one first.
    std::vector<SwayWindow> takeIn(const QJsonObject &tree, std::uint64_t moment);

    /// All windows, the last used one first; none when the tree has to be read for that.
    [[nodiscard]] std::optional<std::vector<SwayWindow>> known() const;
    [[nodiscard]] bool areKnown() const;
    /// Would another look at the tree make them known?
    [[nodiscard]] bool isLookDue() const;

private:
    mutable std::mutex mutex_;
    bool isInformed_ = false;
    bool areKnown_ = false;
    /// Of the changes that a tree may show or not.
    std::uint64_t moment_ = 0;
    /// The last used one first.
    std::vector<SwayWindow> windows_;
    wayland::LastUsed used_;
};

}  // namespace kestrelbay::sway
