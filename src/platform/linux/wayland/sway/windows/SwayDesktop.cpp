#include "platform/linux/wayland/sway/windows/SwayDesktop.h"

#include <utility>

#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace kestrelbay::sway {

using wayland::DesktopWindow;
using wayland::kSameMoment;

namespace {

QByteArray criteria(std::int64_t window) {
    return "[con_id=" + QByteArray::number(window) + "] ";
}

QByteArray quoted(const QString &text) {
    QByteArray bytes = text.toUtf8();
    bytes.replace('\\', "\\\\").replace('"', "\\\"");
    return '"' + bytes + '"';
}

/// Between two looks ahead: what has this much time to change need not be known before.
constexpr std::chrono::milliseconds kBetweenLooks{20};

}  // namespace

SwayDesktop::SwayDesktop(std::shared_ptr<SwayEvents> events)
    : events_(std::move(events)), ipc_(std::in_place, events_->socketPath()) {}

void SwayDesktop::listen(News news) {
    news_.emplace(std::move(news));
    const auto inform = [this] {
        kept_.setInformed(events_->isListening());
        if (kept_.isLookDue())
            lookSoon();
    };
    QObject::connect(events_.get(), &SwayEvents::happened, &context_,
                     [this](const SwayIpc::Event &event) { takeIn(event); });
    QObject::connect(events_.get(), &SwayEvents::begun, &context_, inform);
    QObject::connect(events_.get(), &SwayEvents::ended, &context_, inform);
    static_cast<void>(events_->begin());
    inform();
}

void SwayDesktop::takeIn(const SwayIpc::Event &event) {
    if (event.type != MessageType::WindowEvent)
        return;
    kept_.takeIn(event.json.object());
    if (kept_.isLookDue())
        lookSoon();
}

void SwayDesktop::lookSoon() {
    isLookWanted_ = true;
    if (isLooking_.exchange(true))
        return;
    news_->loop.post([this] {
        isLookWanted_ = false;
        news_->windowsChanged();
        news_->loop.postAfter(kBetweenLooks.count(), [this] {
            isLooking_ = false;
            if (isLookWanted_)
                lookSoon();
        });
    });
}

std::optional<QJsonDocument> SwayDesktop::ask(MessageType type, const QByteArray &payload) {
    // Its answer would be taken for the one to come.
    if (std::exchange(askedAhead_, std::nullopt))
        static_cast<void>(ipc_->answer(MessageType::GetTree));
    // It is given up for a sway that was late.
    if (!ipc_->isOpen())
        ipc_.emplace(events_->socketPath());
    return ipc_->ask(type, payload);
}

std::vector<DesktopWindow> SwayDesktop::read() {
    const std::lock_guard lock(mutex_);
    const std::uint64_t moment = kept_.moment();
    return takeIn(ask(MessageType::GetTree, {}).value_or(QJsonDocument()), moment);
}

std::optional<std::vector<DesktopWindow>> SwayDesktop::known() {
    const auto windows = kept_.known();
    if (!windows)
        return std::nullopt;
    return std::vector<DesktopWindow>(windows->begin(), windows->end());
}

void SwayDesktop::askAhead() {
    if (kept_.areKnown())
        return;
    // Whoever has it asks just now.
    const std::unique_lock lock(mutex_, std::try_to_lock);
    const Question question{.time = Clock::now(), .moment = kept_.moment()};
    if (lock && !askedAhead_ && ipc_->send(MessageType::GetTree))
        askedAhead_ = question;
}

std::vector<DesktopWindow> SwayDesktop::readAsked() {
    const std::lock_guard lock(mutex_);
    if (const auto asked = std::exchange(askedAhead_, std::nullopt)) {
        const auto tree = ipc_->answer(MessageType::GetTree);
        if (tree && Clock::now() - asked->time <= kSameMoment)
            return takeIn(*tree, asked->moment);
    }
    const std::uint64_t moment = kept_.moment();
    return takeIn(ask(MessageType::GetTree, {}).value_or(QJsonDocument()), moment);
}

std::vector<DesktopWindow> SwayDesktop::takeIn(const QJsonDocument &tree, std::uint64_t moment) {
    const std::vector<SwayWindow> windows = kept_.takeIn(tree.object(), moment);
    windows_.clear();
    for (const SwayWindow &window : windows)
        windows_.emplace(window.id, window);
    // What somebody else has brought back is where they want it.
    std::erase_if(places_, [this](const auto &place) {
        const auto found = windows_.find(place.first);
        return found == windows_.end() || !found->second.isHidden;
    });
    // Something has happened meanwhile.
    if (!tree.isEmpty() && kept_.isLookDue())
        lookSoon();
    return {windows.begin(), windows.end()};
}

bool SwayDesktop::hide(std::span<const std::int64_t> windows) {
    const std::lock_guard lock(mutex_);
    QByteArray commands;
    for (const std::int64_t id : windows) {
        const auto found = windows_.find(id);
        if (found == windows_.end())
            continue;
        SwayWindow &window = found->second;
        if (std::exchange(window.isHidden, true))
            continue;
        places_[id] = {.workspace = window.workspace,
                       .isFloating = window.isFloating,
                       .isFullscreen = window.isFullscreen};
        if (window.isFullscreen)
            commands += criteria(id) + "fullscreen disable; ";
        commands += criteria(id) + "move scratchpad; ";
    }
    return run(commands);
}

bool SwayDesktop::bringForward(std::span<const std::int64_t> hidden, std::int64_t focused) {
    const std::lock_guard lock(mutex_);
    QByteArray commands;
    for (const std::int64_t window : hidden) {
        commands += commandsToShow(window);
        if (const auto found = windows_.find(window); found != windows_.end())
            found->second.isHidden = false;
    }
    return run(commands + criteria(focused) + "focus");
}

QByteArray SwayDesktop::commandsToShow(std::int64_t window) {
    const QByteArray it = criteria(window);
    const auto found = places_.find(window);
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
    if (commands.isEmpty())
        return true;
    kept_.willChange();
    const bool isAsked = ask(MessageType::RunCommand, commands).has_value();
    if (kept_.isLookDue())
        lookSoon();
    return isAsked;
}

}  // namespace kestrelbay::sway
