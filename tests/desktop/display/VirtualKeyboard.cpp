#include "desktop/display/VirtualKeyboard.h"

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string_view>

#include <sys/mman.h>
#include <unistd.h>

#include <QFile>

#include <wayland-client.h>
#include <xkbcommon/xkbcommon.h>

#include "virtual-keyboard-unstable-v1.h"

#include "virtual-keyboard-unstable-v1-code.h"

namespace kestrelbay::desktop {

namespace {

constexpr std::uint32_t kSeatVersion = 1, kManagerVersion = 1;

struct Globals {
    wl_seat *seat = nullptr;
    zwp_virtual_keyboard_manager_v1 *manager = nullptr;
};

void onGlobal(void *data, wl_registry *registry, std::uint32_t name, const char *interface,
              std::uint32_t /*version*/) {
    auto &globals = *static_cast<Globals *>(data);
    const std::string_view wanted(interface);
    if (wanted == wl_seat_interface.name && globals.seat == nullptr)
        globals.seat = static_cast<wl_seat *>(
            wl_registry_bind(registry, name, &wl_seat_interface, kSeatVersion));
    else if (wanted == zwp_virtual_keyboard_manager_v1_interface.name && globals.manager == nullptr)
        globals.manager = static_cast<zwp_virtual_keyboard_manager_v1 *>(wl_registry_bind(
            registry, name, &zwp_virtual_keyboard_manager_v1_interface, kManagerVersion));
}

void onGlobalRemoved(void * /*data*/, wl_registry * /*registry*/, std::uint32_t /*name*/) {}

constexpr wl_registry_listener kListener{.global = &onGlobal, .global_remove = &onGlobalRemoved};

std::uint32_t milliseconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

struct XkbDeleter {
    void operator()(xkb_context *context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap *keymap) const { xkb_keymap_unref(keymap); }
    void operator()(char *text) const { std::free(text); }
};

}  // namespace

void VirtualKeyboard::Closer::operator()(wl_display *display) const {
    wl_display_disconnect(display);
}
void VirtualKeyboard::Closer::operator()(wl_registry *registry) const {
    wl_registry_destroy(registry);
}
void VirtualKeyboard::Closer::operator()(wl_seat *seat) const {
    wl_seat_destroy(seat);
}
void VirtualKeyboard::Closer::operator()(zwp_virtual_keyboard_manager_v1 *manager) const {
    zwp_virtual_keyboard_manager_v1_destroy(manager);
}
void VirtualKeyboard::Closer::operator()(zwp_virtual_keyboard_v1 *keyboard) const {
    zwp_virtual_keyboard_v1_destroy(keyboard);
}
void VirtualKeyboard::Closer::operator()(xkb_state *state) const {
    xkb_state_unref(state);
}

VirtualKeyboard::VirtualKeyboard(const QString &socket)
    : display_(wl_display_connect(QFile::encodeName(socket).constData())) {
    if (!display_)
        throw std::runtime_error("no compositor at " + socket.toStdString());
    registry_.reset(wl_display_get_registry(display_.get()));
    Globals globals;
    wl_registry_add_listener(registry_.get(), &kListener, &globals);
    waitForCompositor();
    seat_.reset(globals.seat);
    manager_.reset(globals.manager);
    if (!seat_ || !manager_)
        throw std::runtime_error("the compositor takes no virtual keyboard");
    plugIn();
}

VirtualKeyboard::~VirtualKeyboard() = default;

void VirtualKeyboard::plugIn() {
    const std::unique_ptr<xkb_context, XkbDeleter> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    const xkb_rule_names names{
        .rules = "evdev", .model = "pc105", .layout = "us", .variant = "", .options = ""};
    const std::unique_ptr<xkb_keymap, XkbDeleter> keymap(
        context ? xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS)
                : nullptr);
    if (!keymap)
        throw std::runtime_error("no US keyboard layout");
    const std::unique_ptr<char, XkbDeleter> text(
        xkb_keymap_get_as_string(keymap.get(), XKB_KEYMAP_FORMAT_TEXT_V1));
    const std::size_t size = std::strlen(text.get()) + 1;
    const int file = ::memfd_create("keymap", MFD_CLOEXEC);
    const bool written = file >= 0 && ::write(file, text.get(), size) == static_cast<ssize_t>(size);
    if (written) {
        keyboard_.reset(
            zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(manager_.get(), seat_.get()));
        zwp_virtual_keyboard_v1_keymap(keyboard_.get(), WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file,
                                       static_cast<std::uint32_t>(size));
    }
    ::close(file);
    if (!written)
        throw std::runtime_error("no memory for a keyboard layout");
    state_.reset(xkb_state_new(keymap.get()));
    waitForCompositor();
}

void VirtualKeyboard::waitForCompositor() {
    if (wl_display_roundtrip(display_.get()) < 0)
        throw std::runtime_error("the compositor is gone, or refuses the virtual keyboard");
}

void VirtualKeyboard::send(std::uint8_t xKeycode, bool pressed) {
    constexpr std::uint32_t kFirstOfX = 8;
    zwp_virtual_keyboard_v1_key(
        keyboard_.get(), milliseconds(), xKeycode - kFirstOfX,
        pressed ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
    xkb_state_update_key(state_.get(), xKeycode, pressed ? XKB_KEY_DOWN : XKB_KEY_UP);
    const auto modifiers = [this](xkb_state_component component) {
        return xkb_state_serialize_mods(state_.get(), component);
    };
    zwp_virtual_keyboard_v1_modifiers(
        keyboard_.get(), modifiers(XKB_STATE_MODS_DEPRESSED), modifiers(XKB_STATE_MODS_LATCHED),
        modifiers(XKB_STATE_MODS_LOCKED),
        xkb_state_serialize_layout(state_.get(), XKB_STATE_LAYOUT_EFFECTIVE));
    waitForCompositor();
}

void VirtualKeyboard::press(std::uint8_t xKeycode) {
    send(xKeycode, true);
}

void VirtualKeyboard::release(std::uint8_t xKeycode) {
    send(xKeycode, false);
}

}  // namespace kestrelbay::desktop
