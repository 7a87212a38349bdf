#include "platform/linux/x11/panels/WindowForward.h"

#include <array>

namespace kestrelbay::x11 {

void WindowForward::bring(xcb_window_t window) {
    watch(XCB_EVENT_MASK_NO_EVENT);
    window_ = window;
    end_ = std::chrono::steady_clock::now() + kLongestWait;
    watch(XCB_EVENT_MASK_PROPERTY_CHANGE);
    system_.askTime();
    system_.flush();
}

void WindowForward::handle(const xcb_generic_event_t &event) {
    if (window_ == XCB_NONE || (event.response_type & 0x7fU) != XCB_PROPERTY_NOTIFY)
        return;
    const auto &change = reinterpret_cast<const xcb_property_notify_event_t &>(event);
    const bool isClock = change.window == system_.clockWindow();
    const bool isState = change.window == window_ && change.atom == system_.atoms()["WM_STATE"];
    if (std::chrono::steady_clock::now() > end_) {
        watch(XCB_EVENT_MASK_NO_EVENT);
        window_ = XCB_NONE;
    } else if (isClock || isState) {
        // A window that is minimised later on was minimised by the user.
        activate(change.time, isClock);
    }
}

void WindowForward::activate(xcb_timestamp_t time, bool restores) {
    const WindowAddress address{
        .window = window_, .root = system_.connection().root(), .abilities = {}};
    const WindowState state = system_.readStates(std::array{address}).front();
    if (!state.managed || (state.minimized && !restores))
        return;
    // Some window managers go to the window's workspace by themselves; others refuse
    // to activate what is not in view.
    if (state.otherWorkspace)
        system_.showWorkspace(address, *state.otherWorkspace, time);
    if (state.minimized)
        system_.restore(address, time);
    system_.activate(address, time);
}

void WindowForward::watch(std::uint32_t events) const {
    if (window_ != XCB_NONE)
        system_.connection().selectEvents(window_, events);
}

}  // namespace kestrelbay::x11
