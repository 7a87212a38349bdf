#include "platform/linux/wayland/sway/SwayEventTap.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonObject>

#include "platform/linux/wayland/sway/UserBindings.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::sway {

SwayEventTap::SwayEventTap(QString socketPath) : socketPath_(std::move(socketPath)) {}

SwayEventTap::~SwayEventTap() {
    remove();
}

bool SwayEventTap::install(Handlers handlers) {
    problem_ = tryInstall();
    if (problem_ != TapProblem::None) {
        session_.reset();
        return false;
    }
    handlers_ = std::move(handlers);
    // By the event loop, which need not be there yet.
    QMetaObject::invokeMethod(
        &context_, [this] { listen(); }, Qt::QueuedConnection);
    readUserBindings();
    updateBindings();
    return true;
}

TapProblem SwayEventTap::tryInstall() {
    std::optional<SwayClaim> claim = SwayClaim::take(socketPath_);
    if (!claim)
        return TapProblem::OtherInstance;
    session_ = std::make_unique<Session>(*std::move(claim), socketPath_);
    if (!session_->ipc->isOpen() || !session_->events.subscribe({u"binding"_s, u"workspace"_s}))
        return TapProblem::NoDisplay;
    session_->guard.emplace(socketPath_, session_->claim.descriptor());
    return TapProblem::None;
}

void SwayEventTap::remove() {
    if (!session_)
        return;
    const std::vector<Position> bound(session_->bound.begin(), session_->bound.end());
    run(unbindCommands(bound));
    session_.reset();
    handlers_ = {};
}

void SwayEventTap::listen() {
    // It may be gone again, or be another one that listens already.
    if (!session_ || session_->notifier || !session_->events.isOpen())
        return;
    session_->notifier.emplace(session_->events.descriptor(), QSocketNotifier::Read);
    QObject::connect(&*session_->notifier, &QSocketNotifier::activated, &context_,
                     [this] { takeEvents(); });
    // Some may have come with an answer.
    takeEvents();
}

void SwayEventTap::takeEvents() {
    while (session_) {
        const std::optional<SwayIpc::Event> event = session_->events.nextEvent();
        if (!event)
            break;
        // May remove the tap.
        handle(*event);
    }
    if (session_ && !session_->events.isOpen())
        lose();
}

void SwayEventTap::handle(const SwayIpc::Event &event) {
    const QJsonObject json = event.json.object();
    if (event.type == MessageType::WorkspaceEvent) {
        // sway has forgotten all that its configuration does not say.
        if (json["change"_L1].toString() == "reload"_L1)
            bindAnew();
        return;
    }
    const auto pressed = pressed_.constFind(json["binding"_L1]["command"_L1].toString());
    if (pressed == pressed_.cend())
        return;
    // Copies: whoever is called may remove the tap.
    const Hotkey hotkey = *pressed;
    if (const auto handler = handlers_.hotkeyPressed)
        handler(hotkey);
}

void SwayEventTap::readUserBindings() const {
    const auto version = session_->ipc->ask(MessageType::GetVersion);
    const auto configuration = session_->ipc->ask(MessageType::GetConfig);
    if (!version || !configuration)
        return;
    session_->taken =
        positionsOf(readConfiguration(configuration->object()["config"_L1].toString().toUtf8(),
                                      version->object()["loaded_config_file_name"_L1].toString()));
}

void SwayEventTap::bindAnew() {
    session_->bound.clear();
    session_->refused.clear();
    readUserBindings();
    updateBindings();
    if (handlers_.refusalsChanged)
        handlers_.refusalsChanged();
}

void SwayEventTap::setWantedHotkeys(const std::vector<Hotkey> &hotkeys) {
    wanted_.clear();
    pressed_.clear();
    for (const Hotkey &hotkey : hotkeys) {
        const std::optional<Position> position = positionOf(hotkey);
        if (!position)
            continue;
        wanted_.emplace(*position, hotkey);
        pressed_.insert(QString::fromLatin1(commandOf(*position)), hotkey);
    }
    if (session_)
        updateBindings();
}

void SwayEventTap::updateBindings() {
    std::set<Position> next;
    for (const auto &[position, hotkey] : wanted_) {
        if (!session_->recording && !session_->taken.contains(position))
            next.insert(position);
    }
    std::vector<Position> fresh;
    std::vector<Position> stale;
    std::ranges::set_difference(next, session_->bound, std::back_inserter(fresh));
    std::ranges::set_difference(session_->bound, next, std::back_inserter(stale));
    session_->refused.clear();
    session_->bound = next;

    // Should the program die in between, one that is not bound is no harm.
    std::ranges::copy(stale, std::inserter(next, next.end()));
    session_->guard->setCommands(unbindCommands(std::vector(next.begin(), next.end())));
    run(unbindCommands(stale));
    const std::vector<bool> isDone = run(bindCommands(fresh));
    for (std::size_t i = 0; i < fresh.size(); ++i) {
        if (i < isDone.size() && isDone[i])
            continue;
        session_->bound.erase(fresh[i]);
        session_->refused.insert(fresh[i]);
    }
}

std::vector<bool> SwayEventTap::run(const QByteArray &commands) const {
    if (commands.isEmpty())
        return {};
    // It is given up for a sway that was late.
    if (!session_->ipc->isOpen())
        session_->ipc.emplace(socketPath_);
    const auto state = session_->ipc->ask(MessageType::GetBindingState);
    if (!state)
        return {};
    const QByteArray mode = state->object()["name"_L1].toString().toUtf8();
    const auto reply = session_->ipc->ask(MessageType::RunCommand, inDefaultMode(commands, mode));
    if (!reply)
        return {};
    std::vector<bool> isDone;
    for (const auto &result : reply->array())
        isDone.push_back(result["success"_L1].toBool());
    // Of the change of modes before.
    if (mode != kDefaultMode && !isDone.empty())
        isDone.erase(isDone.begin());
    return isDone;
}

bool SwayEventTap::setRecording(bool recording) {
    if (!session_ || QCoreApplication::instance() == nullptr)
        return false;
    if (recording == (session_->recording != nullptr))
        return true;
    if (recording) {
        session_->recording = std::make_unique<OwnWindowKeys>(handlers_.event);
    } else if (OwnWindowKeys *const ended = session_->recording.release()) {
        ended->stop();
        // It may be what calls this.
        ended->deleteLater();
    }
    updateBindings();
    return true;
}

std::vector<RefusedHotkey> SwayEventTap::refusedHotkeys() const {
    std::vector<RefusedHotkey> refused;
    for (const auto &[position, hotkey] : wanted_) {
        if (session_ &&
            (session_->taken.contains(position) || session_->refused.contains(position)))
            refused.push_back({hotkey});
    }
    return refused;
}

void SwayEventTap::lose() {
    problem_ = TapProblem::NoDisplay;
    const std::function<void()> lost = std::move(handlers_.lost);
    remove();
    if (lost)
        lost();
}

}  // namespace kestrelbay::sway
