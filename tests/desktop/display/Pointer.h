#pragma once

#include <cstdint>

#include <QPoint>
#include <QString>

#include "desktop/display/XClient.h"

namespace kestrelbay::desktop {

/// Moves and clicks as a mouse would, by the XTEST extension. Every call has been
/// processed by the X server when it returns.
class Pointer {
public:
    enum class Button : std::uint8_t { Left = 1, Right = 3, WheelDown = 5 };

    explicit Pointer(const QString &displayName) : client_(displayName) {}

    void moveTo(const QPoint &place);
    /// Moves there first.
    void click(const QPoint &place, Button button = Button::Left);
    /// By this many notches, where the pointer is.
    void turnWheelDown(int notches);
    /// Moves there and holds the left button down from then on.
    void press(const QPoint &place);
    /// In a few steps, as a hand would.
    void dragTo(const QPoint &place);
    void release();

private:
    void send(std::uint8_t type, std::uint8_t detail, const QPoint &place);

    XClient client_;
    QPoint place_;
};

}  // namespace kestrelbay::desktop
