#pragma once

#include <cstdint>

#include "desktop/display/WindowsView.h"

namespace kestrelbay::desktop {

/// A plain program with one window, which stands for whatever the user is working with.
class FrontProgram {
public:
    virtual ~FrontProgram() = default;

    [[nodiscard]] virtual WindowsView::Window id() = 0;
    /// Presses of this key, as X numbers it, that reached the window since forget().
    [[nodiscard]] virtual int pressesOf(std::uint8_t keycode) = 0;
    virtual void forget() = 0;

protected:
    FrontProgram() = default;
    FrontProgram(const FrontProgram &) = default;
    FrontProgram &operator=(const FrontProgram &) = default;
};

}  // namespace kestrelbay::desktop
