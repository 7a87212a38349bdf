#include "platform/linux/applications/matching/ApplicationLook.h"

#include <algorithm>

namespace kestrelbay {

namespace {

const WindowLook *find(const ApplicationLook &look, std::int64_t window) {
    const auto found = std::ranges::find(look.windows, window, &WindowLook::window);
    return found == look.windows.end() ? nullptr : &*found;
}

}  // namespace

std::optional<std::int64_t> changedWindow(const ApplicationLook &before,
                                          const ApplicationLook &now) {
    if (now.active != before.active && find(now, now.active) != nullptr)
        return now.active;
    for (const WindowLook &look : now.windows) {
        const WindowLook *const old = find(before, look.window);
        if (old == nullptr || look.title != old->title ||
            (look.wantsAttention && !old->wantsAttention))
            return look.window;
    }
    return std::nullopt;
}

bool isElsewhere(const ApplicationLook &before, const ApplicationLook &now) {
    // Between two windows there may be a moment without an active one.
    return now.active != 0 && now.active != before.active && find(now, now.active) == nullptr;
}

}  // namespace kestrelbay
