#pragma once

#include <memory>

#include "platform/linux/wayland/client/Connection.h"
#include "platform/linux/wayland/client/Globals.h"

struct wl_keyboard;
struct wl_seat;
struct wl_surface;
struct zwp_keyboard_shortcuts_inhibit_manager_v1;
struct zwp_keyboard_shortcuts_inhibitor_v1;

namespace kestrelbay::wayland {

/// Has the compositor send all keys to the window of this program that has the keyboard, those
/// that it has bound itself included, if it offers that and the user lets it. Main thread.
class ShortcutsInhibitor {
public:
    /// The connection that the windows are on; it outlives this. Waits for the compositor, as
    /// begin() does: a millisecond, and no longer than a connection's patience for each answer.
    explicit ShortcutsInhibitor(wl_display &windows);
    ~ShortcutsInhibitor();
    ShortcutsInhibitor(const ShortcutsInhibitor &) = delete;
    ShortcutsInhibitor &operator=(const ShortcutsInhibitor &) = delete;

    void begin();
    /// As long as it is so the compositor keeps no key for itself.
    [[nodiscard]] bool isActive();
    void end();

private:
    struct Listeners;
    struct Destroy {
        void operator()(zwp_keyboard_shortcuts_inhibit_manager_v1 *manager) const;
        void operator()(zwp_keyboard_shortcuts_inhibitor_v1 *inhibitor) const;
        void operator()(wl_seat *seat) const;
        void operator()(wl_keyboard *keyboard) const;
    };

    void inhibitFor(wl_surface *surface);
    void letGo();

    Connection connection_;
    const Globals globals_;
    // Null where they are not offered.
    const std::unique_ptr<zwp_keyboard_shortcuts_inhibit_manager_v1, Destroy> manager_;
    const std::unique_ptr<wl_seat, Destroy> seat_;
    bool hasKeyboard_ = false;
    /// It tells which window has the keyboard.
    std::unique_ptr<wl_keyboard, Destroy> keyboard_;
    std::unique_ptr<zwp_keyboard_shortcuts_inhibitor_v1, Destroy> inhibitor_;
    bool isActive_ = false;
};

}  // namespace kestrelbay::wayland
