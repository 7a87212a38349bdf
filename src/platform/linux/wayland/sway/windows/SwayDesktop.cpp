#include "platform/linux/wayland/sway/windows/SwayDesktop.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

#include <QJsonObject>

#include "platform/linux/applications/matching/ProcessFacts.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::sway {

namespace {

/// An answer to what was asked so long ago is still of this moment.
constexpr std::chrono::milliseconds kSameMoment{50};

QByteArray criteria(std::int64_t window) {
    return "[con_id=" + QByteArray::number(window) + "] ";
}

QByteArray quoted(const QString &text) {
    QByteArray bytes = text.toUtf8();
    bytes.replace('\\', "\\\\").replace('"', "\\\"");
    return '"' + bytes + '"';
}

bool isToldAlike(const WindowFacts &one, const WindowFacts &other) {
    const auto all = [](const WindowFacts &facts) {
        return std::tie(facts.pid, facts.className, facts.instance, facts.role, facts.type,
                        facts.transientFor);
    };
    return all(one) == all(other);
}

}  // namespace

SwayDesktop::SwayDesktop(QString socketPath, AddLaunch addLaunch)
    : socketPath_(std::move(socketPath)),
      addLaunch_(std::move(addLaunch)),
      ipc_(std::in_place, socketPath_),
      events_(socketPath_) {
    static_cast<void>(events_.subscribe({u"window"_s}));
}

std::optional<QJsonDocument> SwayDesktop::ask(MessageType type, const QByteArray &payload) {
    // Its answer would be taken for the one to come.
    if (std::exchange(askedAhead_, std::nullopt))
        static_cast<void>(ipc_->answer(MessageType::GetTree));
    // It is given up for a sway that was late.
    if (!ipc_->isOpen())
        ipc_.emplace(socketPath_);
    return ipc_->ask(type, payload);
}

SwayPicture SwayDesktop::read(std::shared_ptr<const ApplicationIndex> index) {
    const std::lock_guard lock(mutex_);
    const std::optional<QJsonDocument> tree = ask(MessageType::GetTree, {});
    return picture(tree.value_or(QJsonDocument()), std::move(index));
}

void SwayDesktop::askAhead() {
    // Whoever has it asks just now.
    const std::unique_lock lock(mutex_, std::try_to_lock);
    if (lock && !askedAhead_ && ipc_->send(MessageType::GetTree))
        askedAhead_ = Clock::now();
}

SwayPicture SwayDesktop::readAsked(std::shared_ptr<const ApplicationIndex> index) {
    const std::lock_guard lock(mutex_);
    const auto asked = std::exchange(askedAhead_, std::nullopt);
    std::optional<QJsonDocument> tree;
    if (asked)
        tree = ipc_->answer(MessageType::GetTree);
    if (!tree || Clock::now() - *asked > kSameMoment)
        tree = ask(MessageType::GetTree, {});
    return picture(tree.value_or(QJsonDocument()), std::move(index));
}

SwayPicture SwayDesktop::picture(const QJsonDocument &tree,
                                 std::shared_ptr<const ApplicationIndex> index) {
    std::vector<SwayWindow> windows = windowsOf(tree.object());
    putInOrderOfUse(windows);
    std::map<std::int64_t, Record> records;
    std::map<std::int64_t, Place> places;
    SwayPicture result{.index = std::move(index), .windows = {}};
    for (SwayWindow &window : windows) {
        Record record = recordOf(window, result.index);
        if (const auto place = places_.find(window.id); place != places_.end() && window.isHidden)
            places.insert(*place);
        result.windows.push_back(
            {.window = window, .facts = record.facts, .matches = record.matches});
        records.emplace(window.id, std::move(record));
    }
    records_ = std::move(records);
    // What somebody else has brought back is where they want it.
    places_ = std::move(places);
    return result;
}

SwayDesktop::Record SwayDesktop::recordOf(
    const SwayWindow &window, const std::shared_ptr<const ApplicationIndex> &index) const {
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

void SwayDesktop::putInOrderOfUse(std::vector<SwayWindow> &windows) {
    takeInEventsLocked();
    for (const SwayWindow &window : windows) {
        if (window.isFocused)
            noteUse(window.id);
    }
    std::ranges::stable_sort(windows, {}, [this](const SwayWindow &window) {
        return std::ranges::find(used_, window.id) - used_.begin();
    });
    used_.clear();
    std::ranges::transform(windows, std::back_inserter(used_), &SwayWindow::id);
}

void SwayDesktop::noteUse(std::int64_t window) {
    std::erase(used_, window);
    used_.insert(used_.begin(), window);
}

void SwayDesktop::takeInEvents() {
    const std::lock_guard lock(mutex_);
    takeInEventsLocked();
}

void SwayDesktop::takeInEventsLocked() {
    while (const std::optional<SwayIpc::Event> event = events_.nextEvent()) {
        const QJsonObject json = event->json.object();
        if (json["change"_L1].toString() == "focus"_L1)
            noteUse(json["container"_L1]["id"_L1].toInteger());
    }
}

bool SwayDesktop::hide(std::span<const SwayWindow> windows) {
    const std::lock_guard lock(mutex_);
    QByteArray commands;
    for (const SwayWindow &window : windows) {
        if (window.isHidden)
            continue;
        places_[window.id] = {.workspace = window.workspace,
                              .isFloating = window.isFloating,
                              .isFullscreen = window.isFullscreen};
        if (window.isFullscreen)
            commands += criteria(window.id) + "fullscreen disable; ";
        commands += criteria(window.id) + "move scratchpad; ";
    }
    return run(commands);
}

bool SwayDesktop::bringForward(std::span<const SwayWindow> hidden, std::int64_t focused) {
    const std::lock_guard lock(mutex_);
    QByteArray commands;
    for (const SwayWindow &window : hidden)
        commands += commandsToShow(window);
    return run(commands + criteria(focused) + "focus");
}

QByteArray SwayDesktop::commandsToShow(const SwayWindow &window) {
    const QByteArray it = criteria(window.id);
    const auto found = places_.find(window.id);
    // Whoever has hidden it; sway shows it on the workspace in view.
    if (found == places_.end())
        return it + "scratchpad show; ";
    const Place place = found->second;
    places_.erase(found);
    QByteArray commands = it + "move --no-auto-back-and-forth container to workspace " +
                          quoted(place.workspace) + "; ";
    if (!place.isFloating)
        commands += it + "floating disable; ";
    if (place.isFullscreen)
        commands += it + "fullscreen enable; ";
    return commands;
}

bool SwayDesktop::run(const QByteArray &commands) {
    return commands.isEmpty() || ask(MessageType::RunCommand, commands).has_value();
}

}  // namespace kestrelbay::sway
