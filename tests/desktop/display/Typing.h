#pragma once

#include <cstdint>
#include <optional>

#include <QChar>

#include "desktop/display/XClient.h"

namespace kestrelbay::desktop {

/// Where a Latin-1 character is on the keyboard.
struct KeyPosition {
    std::uint8_t keycode;
    bool isShifted;
};

/// None when no key of the first group has it, with or without Shift.
[[nodiscard]] std::optional<KeyPosition> positionOf(XClient &client, QChar character);

}  // namespace kestrelbay::desktop
