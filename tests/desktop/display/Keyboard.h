#pragma once

#include <cstdint>

namespace kestrelbay::desktop {

/// A keyboard with a US layout in a Wayland session. Every call has been processed by the
/// compositor when it returns; it throws std::runtime_error when the compositor is gone.
class Keyboard {
public:
    virtual ~Keyboard() = default;

    /// A key by its number on X, which is that of the kernel plus 8.
    virtual void press(std::uint8_t xKeycode) = 0;
    virtual void release(std::uint8_t xKeycode) = 0;

protected:
    Keyboard() = default;
    Keyboard(const Keyboard &) = default;
    Keyboard &operator=(const Keyboard &) = default;
};

}  // namespace kestrelbay::desktop
