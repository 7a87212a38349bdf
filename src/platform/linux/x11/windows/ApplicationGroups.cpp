#include "platform/linux/x11/windows/ApplicationGroups.h"

#include <unordered_map>

#include <QString>

namespace kestrelbay::x11 {

std::vector<ApplicationGroup> groupApplications(const DesktopPicture &picture) {
    std::vector<ApplicationGroup> groups;
    std::unordered_map<std::size_t, std::size_t> byEntry;
    std::unordered_map<std::int64_t, std::size_t> byPid;
    std::unordered_map<QString, std::size_t> byClass;

    const auto add = [&](auto &table, const auto &key, std::size_t window,
                         std::optional<std::size_t> entry) {
        const ManagedWindow &managed = picture.windows[window];
        const auto [at, isNew] = table.try_emplace(key, groups.size());
        if (isNew)
            groups.push_back(
                {.entry = entry, .pid = managed.facts->pid, .active = false, .windows = {}});
        ApplicationGroup &group = groups[at->second];
        group.windows.push_back(window);
        group.active |= managed.active;
    };

    for (std::size_t i = 0; i < picture.windows.size(); ++i) {
        const ManagedWindow &window = picture.windows[i];
        for (const ApplicationMatch &match : *window.matches)
            add(byEntry, match.entry, i, match.entry);
        if (!window.matches->empty() || window.facts->isAnonymous())
            continue;
        if (window.facts->pid > 0)
            add(byPid, window.facts->pid, i, std::nullopt);
        else
            add(byClass, window.facts->instance + QChar(u'\n') + window.facts->className, i,
                std::nullopt);
    }
    return groups;
}

}  // namespace kestrelbay::x11
