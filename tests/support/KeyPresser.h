#pragma once

#include <cstdint>
#include <initializer_list>

#include <QString>

#include "support/Xcb.h"

struct xcb_connection_t;

namespace kestrelbay::testing {

/// Evdev key codes plus 8: what X calls these positions on every PC keyboard.
namespace xkey {
inline constexpr std::uint8_t kEscape = 9, k1 = 10, kQ = 24, kW = 25, kE = 26, kR = 27, kT = 28,
                              kLeftControl = 37, kA = 38, kS = 39, kD = 40, kLeftShift = 50,
                              kRightShift = 62, kLeftAlt = 64, kSpace = 65, kCapsLock = 66,
                              kF5 = 71, kF6 = 72, kNumLock = 77, kRightControl = 105,
                              kRightAlt = 108, kLeftSuper = 133, kRightSuper = 134;
}

/// Presses keys as a keyboard would, by the XTEST extension. Every call has been
/// processed by the X server when it returns.
class KeyPresser {
public:
    explicit KeyPresser(const QString &displayName);
    ~KeyPresser();

    void press(std::uint8_t keycode);
    void release(std::uint8_t keycode);
    /// Presses the keys in order and lets them go in reverse order.
    void chord(std::initializer_list<std::uint8_t> keycodes);

private:
    void send(std::uint8_t type, std::uint8_t keycode);

    Connection connection_;
};

}  // namespace kestrelbay::testing
