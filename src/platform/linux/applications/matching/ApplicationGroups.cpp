#include "platform/linux/applications/matching/ApplicationGroups.h"

namespace kestrelbay {

template <typename Key>
void ApplicationGrouping::add(std::unordered_map<Key, std::size_t> &table, const Key &key,
                              const Member &member, std::optional<std::size_t> entry) {
    const auto [at, isNew] = table.try_emplace(key, groups_.size());
    if (isNew)
        groups_.push_back({.entry = entry, .pid = member.pid, .active = false, .windows = {}});
    ApplicationGroup &group = groups_[at->second];
    group.windows.push_back(member.window);
    group.active |= member.active;
}

void ApplicationGrouping::add(std::size_t window, const WindowFacts &facts,
                              const std::vector<ApplicationMatch> &matches, bool active) {
    const Member member{.window = window, .pid = facts.pid, .active = active};
    for (const ApplicationMatch &match : matches)
        add(byEntry_, match.entry, member, match.entry);
    if (!matches.empty() || facts.isAnonymous())
        return;
    if (facts.pid > 0)
        add(byPid_, facts.pid, member, std::nullopt);
    else
        add(byClass_, QString(facts.instance + QChar(u'\n') + facts.className), member,
            std::nullopt);
}

}  // namespace kestrelbay
