#pragma once

#include <cstdint>
#include <memory>

#include <QString>

#include "desktop/display/Keyboard.h"

struct wl_display;
struct wl_registry;
struct wl_seat;
struct xkb_state;
struct zwp_virtual_keyboard_manager_v1;
struct zwp_virtual_keyboard_v1;

namespace kestrelbay::desktop {

/// Plugged into a compositor that knows virtual-keyboard-v1.
class VirtualKeyboard : public Keyboard {
public:
    /// The compositor's socket, by its path. Throws std::runtime_error when it cannot be had.
    explicit VirtualKeyboard(const QString &socket);
    ~VirtualKeyboard() override;
    VirtualKeyboard(const VirtualKeyboard &) = delete;
    VirtualKeyboard &operator=(const VirtualKeyboard &) = delete;

    void press(std::uint8_t xKeycode) override;
    void release(std::uint8_t xKeycode) override;

private:
    struct Closer {
        void operator()(wl_display *display) const;
        void operator()(wl_registry *registry) const;
        void operator()(wl_seat *seat) const;
        void operator()(zwp_virtual_keyboard_manager_v1 *manager) const;
        void operator()(zwp_virtual_keyboard_v1 *keyboard) const;
        void operator()(xkb_state *state) const;
    };
    template <class Handle>
    using Owned = std::unique_ptr<Handle, Closer>;

    void plugIn();
    void send(std::uint8_t xKeycode, bool pressed);
    void waitForCompositor();

    Owned<wl_display> display_;
    Owned<wl_registry> registry_;
    Owned<wl_seat> seat_;
    Owned<zwp_virtual_keyboard_manager_v1> manager_;
    Owned<zwp_virtual_keyboard_v1> keyboard_;
    Owned<xkb_state> state_;
};

}  // namespace kestrelbay::desktop
