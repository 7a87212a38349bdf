#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>

#include <QObject>

#include "platform/EventTap.h"
#include "platform/linux/wayland/recording/ShortcutsInhibitor.h"

namespace kestrelbay::wayland {

/// The keys that reach the windows of this program, told of as a tap tells of all: what recording
/// can have where no program sees the keys of others.
class OwnWindowKeys final : public QObject {
public:
    using Handler = std::function<EventVerdict(EventType, KeyCode, ModifierFlags)>;

    /// From now on, before any window of the application gets them.
    explicit OwnWindowKeys(Handler handler);
    ~OwnWindowKeys() override { stop(); }

    /// No more. Modifier keys that are still down are told of as up.
    void stop();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// A modifier whose press the compositor has kept to itself, as GNOME does with the Super key,
    /// still counts for the key.
    EventVerdict tellKey(KeyCode key, Qt::KeyboardModifiers modifiers);
    EventVerdict tell(EventType type, KeyCode key);

    const Handler handler_;
    std::set<KeyCode> held_;
};

/// What becomes of the keys that the compositor has bound.
enum class KeptKeys : std::uint8_t {
    AskedFor,  ///< it is asked to send them, too, where our windows are its own
    Left,      ///< as where it would ask the user, by a dialogue that takes the keyboard
};

/// Whether they are told of just now. Has to be gone before the application object is.
class OwnWindowKeysSwitch {
public:
    explicit OwnWindowKeysSwitch(KeptKeys kept = KeptKeys::AskedFor) : kept_(kept) {}

    [[nodiscard]] bool isOn() const { return keys_ != nullptr; }
    /// The handler is for what begins now; it may be what calls this. True when that is a change.
    bool set(bool isOn, const OwnWindowKeys::Handler &handler);
    /// Those that the compositor has bound as well, just now?
    [[nodiscard]] bool tellsAllKeys() const { return inhibitor_ && inhibitor_->isActive(); }

private:
    struct EndLater {
        void operator()(OwnWindowKeys *keys) const;
    };
    const KeptKeys kept_;
    std::unique_ptr<OwnWindowKeys, EndLater> keys_;
    /// From the first time on, where our windows are the compositor's own.
    std::unique_ptr<ShortcutsInhibitor> inhibitor_;
};

}  // namespace kestrelbay::wayland
