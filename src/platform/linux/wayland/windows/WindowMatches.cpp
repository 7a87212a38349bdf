#include "platform/linux/wayland/windows/WindowMatches.h"

#include <tuple>
#include <utility>

#include "platform/linux/applications/matching/ProcessFacts.h"

namespace kestrelbay::wayland {

bool isToldAlike(const WindowFacts &one, const WindowFacts &other) {
    const auto all = [](const WindowFacts &facts) {
        return std::tie(facts.pid, facts.className, facts.instance, facts.role,
                        facts.gtkApplicationId, facts.type, facts.transientFor);
    };
    return all(one) == all(other);
}

Picture WindowMatches::picture(std::vector<DesktopWindow> windows,
                               std::shared_ptr<const ApplicationIndex> index) {
    const std::lock_guard lock(mutex_);
    std::map<std::int64_t, Record> records;
    Picture result{.index = std::move(index), .windows = {}};
    for (DesktopWindow &window : windows) {
        const std::int64_t id = window.id;
        Record record = recordOf(window, result.index);
        result.windows.push_back(
            {.window = std::move(window), .facts = record.facts, .matches = record.matches});
        records.emplace(id, std::move(record));
    }
    records_ = std::move(records);
    return result;
}

WindowMatches::Record WindowMatches::recordOf(
    const DesktopWindow &window, const std::shared_ptr<const ApplicationIndex> &index) const {
    const auto known = records_.find(window.id);
    const bool isKnown = known != records_.end() && isToldAlike(known->second.told, window.facts);
    if (isKnown && known->second.index == index)
        return known->second;
    Record record{.told = window.facts, .facts = {}, .matches = {}, .index = index};
    if (isKnown) {
        record.facts = known->second.facts;
    } else {
        WindowFacts facts = window.facts;
        if (facts.pid > 0) {
            facts.process = readProcessFacts(facts.pid);
            addLaunch_(facts.pid, facts.process);
        }
        record.facts = std::make_shared<const WindowFacts>(std::move(facts));
    }
    record.matches =
        std::make_shared<const std::vector<ApplicationMatch>>(matchWindow(*record.facts, *index));
    return record;
}

}  // namespace kestrelbay::wayland
