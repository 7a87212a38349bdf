// Presses keys by KWin's fake input, which is for programs that a desktop entry names. Reads lines
// as "+28" and "-28" (a key of the kernel's, down and up) and answers each with an empty one, once
// KWin has processed it.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>

#include <wayland-client.h>

#include "fake-input.h"
// The scanner's code is C++ as well, once the header has declared what it defines.
#include "fake-input-code.h"

namespace {

void onGlobal(void *data, wl_registry *registry, std::uint32_t name, const char *interface,
              std::uint32_t /*version*/) {
    constexpr std::uint32_t kWithKeys = 4;
    if (std::strcmp(interface, org_kde_kwin_fake_input_interface.name) == 0)
        *static_cast<void **>(data) =
            wl_registry_bind(registry, name, &org_kde_kwin_fake_input_interface, kWithKeys);
}

void onGlobalRemoved(void * /*data*/, wl_registry * /*registry*/, std::uint32_t /*name*/) {}

constexpr wl_registry_listener kListener{.global = &onGlobal, .global_remove = &onGlobalRemoved};

}  // namespace

int main() {
    wl_display *const display = wl_display_connect(nullptr);
    if (display == nullptr)
        return EXIT_FAILURE;
    void *bound = nullptr;
    wl_registry_add_listener(wl_display_get_registry(display), &kListener, &bound);
    wl_display_roundtrip(display);
    if (bound == nullptr)
        return EXIT_FAILURE;
    auto *const input = static_cast<org_kde_kwin_fake_input *>(bound);
    org_kde_kwin_fake_input_authenticate(input, "KestrelBay", "test");
    for (std::string line = "0"; !line.empty();) {
        if (wl_display_roundtrip(display) < 0)
            return EXIT_FAILURE;
        std::cout << std::endl;
        if (!std::getline(std::cin, line) || line.empty())
            return EXIT_SUCCESS;
        org_kde_kwin_fake_input_keyboard_key(
            input, static_cast<std::uint32_t>(std::stoul(line.substr(1))),
            line.front() == '+' ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
    }
}
