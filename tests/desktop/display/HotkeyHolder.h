#pragma once

#include <cstdint>

#include <QString>

#include "desktop/display/XClient.h"

namespace kestrelbay::desktop {

/// Another program that has a hotkey on the Command key, as desktops do.
class HotkeyHolder {
public:
    HotkeyHolder(const QString &displayName, std::uint8_t keycode)
        : client_(displayName), keycode_(keycode) {
        xcb_grab_key(client_.get(), 0, client_.root(), XCB_MOD_MASK_4, keycode_,
                     XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        client_.sync();
    }

    /// Presses that it got so far.
    [[nodiscard]] int presses() {
        client_.sync();
        while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(client_.get())}) {
            if ((event->response_type & 0x7fU) == XCB_KEY_PRESS)
                ++presses_;
        }
        return presses_;
    }

    void letGo() {
        xcb_ungrab_key(client_.get(), keycode_, client_.root(), XCB_MOD_MASK_4);
        client_.sync();
    }

private:
    XClient client_;
    std::uint8_t keycode_;
    int presses_ = 0;
};

}  // namespace kestrelbay::desktop
