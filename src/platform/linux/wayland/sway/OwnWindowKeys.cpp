#include "platform/linux/wayland/sway/OwnWindowKeys.h"

#include <optional>
#include <utility>

#include <QCoreApplication>
#include <QKeyEvent>

#include "platform/linux/keycodes/KeyCodeTable.h"

namespace kestrelbay::sway {

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
    return isPress && tell(EventType::KeyDown, *key) == EventVerdict::Swallow;
}

EventVerdict OwnWindowKeys::tell(EventType type, KeyCode key) {
    // A copy: whoever is told may end this.
    const Handler handler = handler_;
    return handler ? handler(type, key, buildDetailedFlags(held_)) : EventVerdict::Pass;
}

}  // namespace kestrelbay::sway
