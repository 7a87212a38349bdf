#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace kestrelbay::wayland {

/// In which order windows had the focus, as events of it tell.
class LastUsed {
public:
    void note(std::int64_t window) {
        std::erase(windows_, window);
        windows_.insert(windows_.begin(), window);
    }

    /// Puts all windows there are, of a kind that has an id, in order: the last used one first,
    /// and those of which no use is known behind, as they stood.
    template <typename Window>
    void putInOrder(std::vector<Window> &windows) {
        std::ranges::stable_sort(windows, {}, [this](const Window &window) {
            return std::ranges::find(windows_, window.id) - windows_.begin();
        });
        windows_.clear();
        for (const Window &window : windows)
            windows_.push_back(window.id);
    }

private:
    /// The last used one first.
    std::vector<std::int64_t> windows_;
};

}  // namespace kestrelbay::wayland
