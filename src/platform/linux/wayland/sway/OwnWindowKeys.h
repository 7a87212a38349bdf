#pragma once

#include <functional>
#include <set>

#include <QObject>

#include "platform/EventTap.h"

namespace kestrelbay::sway {

/// The keys that reach the windows of this program, told of as a tap tells of all: what recording
/// can have where no program sees the keys of others. What the compositor has bound never arrives.
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
    EventVerdict tell(EventType type, KeyCode key);

    const Handler handler_;
    std::set<KeyCode> held_;
};

}  // namespace kestrelbay::sway
