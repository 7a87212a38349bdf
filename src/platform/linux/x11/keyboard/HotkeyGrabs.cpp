#include "platform/linux/x11/keyboard/HotkeyGrabs.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace kestrelbay::x11 {

bool areModifiersOf(const Hotkey &hotkey, ModifierFlags held) {
    const ModifierFlags different = hotkey.modifierFlags ^ held;
    return (different & modifier::kGenericMask).isEmpty() &&
           (!namesSide(hotkey.modifierFlags) || !namesSide(different));
}

HotkeyGrabs::HotkeyGrabs(std::chrono::milliseconds firstRetry,
                         std::chrono::milliseconds longestRetry, Hooks hooks)
    : firstRetry_(firstRetry), longestRetry_(longestRetry), hooks_(std::move(hooks)) {
    retryTimer_.setSingleShot(true);
    connect(&retryTimer_, &QTimer::timeout, this, &HotkeyGrabs::retryInTime);
}

void HotkeyGrabs::start(const XConnection &connection, const KeyboardModel &keyboard) {
    grabber_.emplace(connection);
    keyboard_ = keyboard;
    apply();
}

void HotkeyGrabs::stop() {
    retryTimer_.stop();
    grabber_.reset();
    refused_.clear();
}

void HotkeyGrabs::setWanted(const std::vector<Hotkey> &hotkeys) {
    wanted_ = hotkeys;
    apply();
}

void HotkeyGrabs::setKeyboard(const KeyboardModel &keyboard) {
    keyboard_ = keyboard;
    apply();
}

void HotkeyGrabs::retry() {
    if (!refused_.empty())
        apply();
}

void HotkeyGrabs::keyWentDown(KeyCode key, ModifierFlags held) {
    const bool isOnItsWay = std::ranges::any_of(refused_, [&](const Hotkey &hotkey) {
        return (isModifierKeyCode(key) || hotkey.keyCode == key) && areModifiersOf(hotkey, held);
    });
    if (isOnItsWay)
        apply();
}

void HotkeyGrabs::renew() {
    if (grabber_)
        grabber_->forget();
    apply();
}

void HotkeyGrabs::release() {
    if (grabber_)
        grabber_->apply({});
}

void HotkeyGrabs::retryInTime() {
    const std::vector<Hotkey> before = refused_;
    apply();
    const auto next = retryTimer_.intervalAsDuration() * 2;
    if (!refused_.empty() && refused_ == before && next <= longestRetry_)
        retryTimer_.start(next);
}

void HotkeyGrabs::apply() {
    if (!grabber_)
        return;
    std::map<Hotkey, std::set<KeyGrab>> grabs;
    std::set<KeyGrab> all;
    for (const Hotkey &hotkey : wanted_) {
        const auto &own = grabs.try_emplace(hotkey, grabsFor(hotkey, keyboard_)).first->second;
        all.insert(own.begin(), own.end());
    }
    grabber_->apply(all);
    hooks_.serverAsked();

    std::vector<Hotkey> refused;
    for (const auto &[hotkey, own] : grabs) {
        if (std::ranges::any_of(
                own, [this](const KeyGrab &g) { return grabber_->refused().contains(g); }))
            refused.push_back(hotkey);
    }
    if (refused == refused_)
        return;
    refused_ = std::move(refused);
    QMetaObject::invokeMethod(this, &HotkeyGrabs::noteRefusals, Qt::QueuedConnection);
}

void HotkeyGrabs::noteRefusals() {
    if (refused_.empty())
        retryTimer_.stop();
    else
        retryTimer_.start(firstRetry_);
    hooks_.refusalsChanged();
}

}  // namespace kestrelbay::x11
