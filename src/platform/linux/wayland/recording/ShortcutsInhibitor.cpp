#include "platform/linux/wayland/recording/ShortcutsInhibitor.h"

#include <unistd.h>

#include <cstdint>

#include <wayland-client.h>

#include "platform/linux/wayland/client/IgnoreEvent.h"

#include "keyboard-shortcuts-inhibit-unstable-v1.h"

#include "keyboard-shortcuts-inhibit-unstable-v1-code.h"

namespace kestrelbay::wayland {

namespace {

constexpr std::uint32_t kManagerVersion = 1;
/// The first with which a seat can be given back; its events are all known here.
constexpr std::uint32_t kSeatVersion = 5;

}  // namespace

/// What the compositor calls.
struct ShortcutsInhibitor::Listeners {
    static ShortcutsInhibitor &of(void *data) { return *static_cast<ShortcutsInhibitor *>(data); }

    static void capabilities(void *data, wl_seat * /*seat*/, std::uint32_t all) {
        of(data).hasKeyboard_ = (all & WL_SEAT_CAPABILITY_KEYBOARD) != 0;
    }
    static void keymap(void * /*data*/, wl_keyboard * /*keyboard*/, std::uint32_t /*format*/,
                       std::int32_t file, std::uint32_t /*size*/) {
        ::close(file);
    }
    static void enter(void *data, wl_keyboard * /*keyboard*/, std::uint32_t /*serial*/,
                      wl_surface *surface, wl_array * /*keys*/) {
        of(data).inhibitFor(surface);
    }
    static void leave(void *data, wl_keyboard * /*keyboard*/, std::uint32_t /*serial*/,
                      wl_surface * /*surface*/) {
        of(data).letGo();
    }
    static void active(void *data, zwp_keyboard_shortcuts_inhibitor_v1 * /*inhibitor*/) {
        of(data).isActive_ = true;
    }
    static void inactive(void *data, zwp_keyboard_shortcuts_inhibitor_v1 * /*inhibitor*/) {
        of(data).isActive_ = false;
    }

    static constexpr wl_seat_listener kSeat{.capabilities = &capabilities, .name = &ignoreEvent};
    static constexpr wl_keyboard_listener kKeyboard{.keymap = &keymap,
                                                    .enter = &enter,
                                                    .leave = &leave,
                                                    .key = &ignoreEvent,
                                                    .modifiers = &ignoreEvent,
                                                    .repeat_info = &ignoreEvent};
    static constexpr zwp_keyboard_shortcuts_inhibitor_v1_listener kInhibitor{.active = &active,
                                                                             .inactive = &inactive};
};

void ShortcutsInhibitor::Destroy::operator()(
    zwp_keyboard_shortcuts_inhibit_manager_v1 *manager) const {
    zwp_keyboard_shortcuts_inhibit_manager_v1_destroy(manager);
}

void ShortcutsInhibitor::Destroy::operator()(zwp_keyboard_shortcuts_inhibitor_v1 *inhibitor) const {
    zwp_keyboard_shortcuts_inhibitor_v1_destroy(inhibitor);
}

void ShortcutsInhibitor::Destroy::operator()(wl_seat *seat) const {
    if (wl_seat_get_version(seat) >= WL_SEAT_RELEASE_SINCE_VERSION)
        wl_seat_release(seat);
    else
        wl_seat_destroy(seat);
}

void ShortcutsInhibitor::Destroy::operator()(wl_keyboard *keyboard) const {
    if (wl_keyboard_get_version(keyboard) >= WL_KEYBOARD_RELEASE_SINCE_VERSION)
        wl_keyboard_release(keyboard);
    else
        wl_keyboard_destroy(keyboard);
}

ShortcutsInhibitor::ShortcutsInhibitor(wl_display &windows)
    : connection_(windows),
      globals_(connection_),
      manager_(globals_.bind<zwp_keyboard_shortcuts_inhibit_manager_v1>(
          zwp_keyboard_shortcuts_inhibit_manager_v1_interface, kManagerVersion)),
      seat_(manager_ ? globals_.bind<wl_seat>(wl_seat_interface, kSeatVersion) : nullptr) {
    if (!seat_)
        return;
    wl_seat_add_listener(seat_.get(), &Listeners::kSeat, this);
    connection_.roundTrip();
}

ShortcutsInhibitor::~ShortcutsInhibitor() {
    end();
}

void ShortcutsInhibitor::begin() {
    connection_.takeInEvents();
    // To ask a seat for a keyboard that it never had would end the connection.
    if (!hasKeyboard_ || keyboard_)
        return;
    keyboard_.reset(wl_seat_get_keyboard(seat_.get()));
    wl_keyboard_add_listener(keyboard_.get(), &Listeners::kKeyboard, this);
    // Which window has it, and what becomes of the request for that window.
    for (int i = 0; i < 2; ++i)
        connection_.roundTrip();
}

bool ShortcutsInhibitor::isActive() {
    // The user may have been asked meanwhile.
    connection_.takeInEvents();
    return isActive_;
}

void ShortcutsInhibitor::end() {
    letGo();
    keyboard_.reset();
    connection_.flush();
}

void ShortcutsInhibitor::inhibitFor(wl_surface *surface) {
    letGo();
    // Null when the window has gone meanwhile.
    if (!surface)
        return;
    inhibitor_.reset(zwp_keyboard_shortcuts_inhibit_manager_v1_inhibit_shortcuts(
        manager_.get(), surface, seat_.get()));
    zwp_keyboard_shortcuts_inhibitor_v1_add_listener(inhibitor_.get(), &Listeners::kInhibitor,
                                                     this);
}

void ShortcutsInhibitor::letGo() {
    inhibitor_.reset();
    isActive_ = false;
}

}  // namespace kestrelbay::wayland
