#include "platform/linux/wayland/sway/SwayEventTap.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>

#include "platform/linux/wayland/sway/OwnWindowRules.h"
#include "platform/linux/wayland/sway/UserConfiguration.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::sway {

SwayEventTap::SwayEventTap(std::shared_ptr<SwayEvents> events) : events_(std::move(events)) {}

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
    QObject::connect(events_.get(), &SwayEvents::happened, &context_,
                     [this](const SwayIpc::Event &event) { handle(event); });
    QObject::connect(events_.get(), &SwayEvents::ended, &context_, [this] { lose(); });
    prepareSway();
    updateBindings();
    return true;
}

TapProblem SwayEventTap::tryInstall() {
    const QString &socket = events_->socketPath();
    auto claim = wayland::HotkeysClaim::take(socket + u".kestrelbay"_s);
    if (!claim)
        return TapProblem::OtherInstance;
    session_ = std::make_unique<Session>(*std::move(claim), socket);
    if (!session_->ipc->isOpen() || !events_->begin())
        return TapProblem::NoDisplay;
    session_->guard.emplace(kUnbindAtEnd, QFile::encodeName(socket), session_->claim.descriptor());
    return TapProblem::None;
}

void SwayEventTap::remove() {
    if (!session_)
        return;
    events_->disconnect(&context_);
    const std::vector<Position> bound(session_->bound.begin(), session_->bound.end());
    run(unbindCommands(bound));
    session_.reset();
    handlers_ = {};
}

void SwayEventTap::handle(const SwayIpc::Event &event) {
    const QJsonObject json = event.json.object();
    if (event.type == MessageType::WorkspaceEvent) {
        // sway has forgotten all that its configuration does not say.
        if (json["change"_L1].toString() == "reload"_L1)
            bindAnew();
        return;
    }
    if (event.type != MessageType::BindingEvent)
        return;
    const auto pressed = pressed_.constFind(json["binding"_L1]["command"_L1].toString());
    if (pressed == pressed_.cend())
        return;
    // Copies: whoever is called may remove the tap.
    const Hotkey hotkey = *pressed;
    if (const auto handler = handlers_.hotkeyPressed)
        handler(hotkey);
}

void SwayEventTap::prepareSway() const {
    if (const auto configuration = readUserConfiguration(*session_->ipc))
        session_->taken = userBindings(*configuration);
    static_cast<void>(session_->ipc->ask(MessageType::RunCommand, floatOwnWindowsCommands()));
}

void SwayEventTap::bindAnew() {
    session_->bound.clear();
    session_->refused.clear();
    prepareSway();
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
        if (!session_->recording.isOn() && !session_->taken.contains(position))
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
    session_->guard->setKeys(unbindCommands(std::vector(next.begin(), next.end())));
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
        session_->ipc.emplace(events_->socketPath());
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
    if (session_->recording.set(recording, handlers_.event))
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
