#include "platform/linux/wayland/portal/PortalEventTap.h"

#include <algorithm>
#include <utility>

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace kestrelbay::portal {

namespace {

QString idOf(const Hotkey &hotkey) {
    return u"hotkey-%1-%2"_s.arg(toNumber(hotkey.keyCode)).arg(hotkey.modifierFlags.bits());
}

}  // namespace

PortalEventTap::PortalEventTap(std::function<SymbolNames()> symbolNames,
                               wayland::KeptKeys whileRecording)
    : symbolNames_(std::move(symbolNames)), whileRecording_(whileRecording) {}

PortalEventTap::~PortalEventTap() {
    remove();
}

bool PortalEventTap::install(Handlers handlers) {
    handlers_ = std::move(handlers);
    recording_.emplace(whileRecording_);
    // By the event loop, which need not be there yet.
    QMetaObject::invokeMethod(
        &context_, [this] { start(); }, Qt::QueuedConnection);
    return true;
}

void PortalEventTap::start() {
    // It may be gone again, or be another one that has started already.
    if (!handlers_ || session_)
        return;
    session_ = std::make_unique<ShortcutsSession>(
        ShortcutsSession::Handlers{.pressed = [this](const QString &id) { pressed(id); },
                                   .triggersTold = [this] { triggersTold(); }});
    updateShortcuts();
}

void PortalEventTap::remove() {
    setRecording(false);
    recording_.reset();
    session_.reset();
    handlers_.reset();
}

void PortalEventTap::setWantedHotkeys(const std::vector<Hotkey> &hotkeys) {
    wanted_ = hotkeys;
    if (session_)
        updateShortcuts();
}

void PortalEventTap::updateShortcuts() {
    const SymbolNames names = symbolNames_();
    std::vector<ShortcutsSession::Shortcut> shortcuts;
    for (const Hotkey &hotkey : wanted_)
        shortcuts.push_back(
            {.id = idOf(hotkey),
             .description = handlers_->purposeOf ? handlers_->purposeOf(hotkey) : QString(),
             .preferredTrigger = preferredTrigger(hotkey, names)});
    session_->setShortcuts(std::move(shortcuts));
}

void PortalEventTap::pressed(const QString &id) const {
    const auto hotkey = std::ranges::find(wanted_, id, idOf);
    if (hotkey == wanted_.end())
        return;
    // Copies: whoever is called may remove the tap.
    const Hotkey told = *hotkey;
    const Handlers handlers = *handlers_;
    if (recording_->isOn() && handlers.event)
        handlers.event(EventType::KeyDown, told.keyCode, told.modifierFlags);
    else if (!recording_->isOn() && handlers.hotkeyPressed)
        handlers.hotkeyPressed(told);
}

void PortalEventTap::triggersTold() const {
    const Handlers handlers = *handlers_;
    if (handlers.refusalsChanged)
        handlers.refusalsChanged();
    if (handlers.triggersChanged)
        handlers.triggersChanged();
}

bool PortalEventTap::setRecording(bool recording) {
    if (!handlers_ || QCoreApplication::instance() == nullptr)
        return false;
    static_cast<void>(recording_->set(recording, handlers_->event));
    return true;
}

std::vector<RefusedHotkey> PortalEventTap::refusedHotkeys() const {
    std::vector<RefusedHotkey> refused;
    for (const Hotkey &hotkey : wanted_) {
        if (session_ && session_->isAnswered() && triggerText(hotkey).isEmpty())
            refused.push_back({.hotkey = hotkey, .isUnassigned = true});
    }
    return refused;
}

QString PortalEventTap::triggerText(const Hotkey &hotkey) const {
    if (!session_)
        return {};
    const auto found = session_->triggers().find(idOf(hotkey));
    return found == session_->triggers().end() ? QString() : found->second;
}

}  // namespace kestrelbay::portal
