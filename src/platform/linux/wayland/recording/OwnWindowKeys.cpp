#include "platform/linux/wayland/recording/OwnWindowKeys.h"

#include <array>
#include <optional>
#include <utility>
#include <vector>

#include <QCoreApplication>
#include <QKeyEvent>

#include "platform/linux/keycodes/KeyCodeTable.h"
#include "platform/linux/wayland/recording/QtDisplay.h"

namespace kestrelbay::wayland {

namespace {

constexpr std::array kLeftKeys{
    std::pair{Qt::ShiftModifier, key::kLeftShift},
    std::pair{Qt::ControlModifier, key::kLeftControl},
    std::pair{Qt::AltModifier, key::kLeftOption},
    std::pair{Qt::MetaModifier, key::kLeftCommand},
};

}  // namespace

OwnWindowKeys::OwnWindowKeys(Handler handler) : handler_(std::move(handler)) {
    QCoreApplication::instance()->installEventFilter(this);
}

void OwnWindowKeys::stop() {
    QCoreApplication::instance()->removeEventFilter(this);
    while (!held_.empty()) {
        const KeyCode key = *held_.begin();
        held_.erase(key);
        tell(EventType::FlagsChanged, key);
    }
}

bool OwnWindowKeys::eventFilter(QObject *watched, QEvent *event) {
    // No shortcut of the window's is to take a key.
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    const bool isPress = event->type() == QEvent::KeyPress;
    if (!watched->isWindowType() || (!isPress && event->type() != QEvent::KeyRelease))
        return false;
    const auto &keyEvent = static_cast<const QKeyEvent &>(*event);
    const quint32 code = keyEvent.nativeScanCode();
    const std::optional<KeyCode> key =
        code <= UINT8_MAX ? toKeyCode(static_cast<XKeycode>(code)) : std::nullopt;
    if (!key || keyEvent.isAutoRepeat())
        return key.has_value();
    if (isModifierKeyCode(*key)) {
        const bool isChanged = isPress ? held_.insert(*key).second : held_.erase(*key) > 0;
        return isChanged && tell(EventType::FlagsChanged, *key) == EventVerdict::Swallow;
    }
    return isPress && tellKey(*key, keyEvent.modifiers()) == EventVerdict::Swallow;
}

EventVerdict OwnWindowKeys::tellKey(KeyCode key, Qt::KeyboardModifiers modifiers) {
    std::vector<KeyCode> unseen;
    for (const auto &[modifier, left] : kLeftKeys) {
        const ModifierFlags kind = withoutSides(flagsOfModifierKey(left));
        if (!modifiers.testFlag(modifier) || buildDetailedFlags(held_).contains(kind))
            continue;
        unseen.push_back(left);
        held_.insert(left);
        tell(EventType::FlagsChanged, left);
    }
    const EventVerdict verdict = tell(EventType::KeyDown, key);
    for (const KeyCode left : unseen) {
        // Unless this was the end of it.
        if (held_.erase(left) > 0)
            tell(EventType::FlagsChanged, left);
    }
    return verdict;
}

EventVerdict OwnWindowKeys::tell(EventType type, KeyCode key) {
    // A copy: whoever is told may end this.
    const Handler handler = handler_;
    return handler ? handler(type, key, buildDetailedFlags(held_)) : EventVerdict::Pass;
}

bool OwnWindowKeysSwitch::set(bool isOn, const OwnWindowKeys::Handler &handler) {
    if (isOn == this->isOn())
        return false;
    keys_.reset(isOn ? new OwnWindowKeys(handler) : nullptr);
    if (isOn && kept_ == KeptKeys::AskedFor && !inhibitor_) {
        if (wl_display *const windows = qtDisplay())
            inhibitor_ = std::make_unique<ShortcutsInhibitor>(*windows);
    }
    if (inhibitor_ && isOn)
        inhibitor_->begin();
    else if (inhibitor_)
        inhibitor_->end();
    return true;
}

void OwnWindowKeysSwitch::EndLater::operator()(OwnWindowKeys *keys) const {
    keys->stop();
    // They may be what calls this.
    keys->deleteLater();
}

}  // namespace kestrelbay::wayland
