#include "desktop/display/FrontWindow.h"

#include <algorithm>

#include <unistd.h>

namespace kestrelbay::desktop {

FrontWindow::FrontWindow(const QString &displayName)
    : client_(displayName), window_(xcb_generate_id(client_.get())) {
    const std::uint32_t values[] = {0x305080, XCB_EVENT_MASK_KEY_PRESS |
                                                  XCB_EVENT_MASK_KEY_RELEASE |
                                                  XCB_EVENT_MASK_BUTTON_PRESS};
    xcb_create_window(client_.get(), XCB_COPY_FROM_PARENT, window_, client_.root(), 300, 200, 600,
                      400, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
    client_.setText(window_, "WM_CLASS", "STRING", QByteArray("kestrel-front\0KestrelFront\0", 27));
    client_.setText(window_, "_NET_WM_NAME", "UTF8_STRING", "the program in front");
    client_.setNumbers(window_, "_NET_WM_PID", XCB_ATOM_CARDINAL,
                       {static_cast<std::uint32_t>(::getpid())});
    // ICCCM WM_HINTS: the input hint is given, and is true.
    client_.setNumbers(window_, "WM_HINTS", XCB_ATOM_WM_HINTS, {1, 1, 0, 0, 0, 0, 0, 0, 0});
    xcb_map_window(client_.get(), window_);
    client_.sync();
}

void FrontWindow::readEvents() {
    client_.sync();
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(client_.get())}) {
        const auto type = event->response_type & 0x7fU;
        if (type == XCB_BUTTON_PRESS)
            ++clicks_;
        if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE)
            continue;
        const auto &key = reinterpret_cast<const xcb_key_press_event_t &>(*event);
        keys_.push_back({key.detail, key.state, type == XCB_KEY_PRESS});
    }
}

int FrontWindow::pressesOf(std::uint8_t keycode) {
    readEvents();
    return static_cast<int>(std::ranges::count_if(
        keys_, [&](const Key &key) { return key.pressed && key.keycode == keycode; }));
}

void FrontWindow::forget() {
    readEvents();
    keys_.clear();
    clicks_ = 0;
}

int FrontWindow::clicks() {
    readEvents();
    return clicks_;
}

void FrontWindow::setFullScreen(bool fullScreen) {
    constexpr std::uint32_t kApplication = 1;
    client_.ask(
        window_, "_NET_WM_STATE",
        {fullScreen ? 1U : 0U, client_.atom("_NET_WM_STATE_FULLSCREEN"), 0, kApplication, 0});
}

}  // namespace kestrelbay::desktop
