#include "platform/linux/x11/keyboard/GrabFocusFilter.h"

#include <cstdint>

#include <QCoreApplication>

#include <xcb/xcb.h>

namespace kestrelbay::x11 {

GrabFocusFilter::GrabFocusFilter() {
    QCoreApplication::instance()->installNativeEventFilter(this);
}

bool GrabFocusFilter::nativeEventFilter(const QByteArray &type, void *message,
                                        qintptr * /*result*/) {
    if (type != "xcb_generic_event_t")
        return false;
    const unsigned kind = static_cast<const xcb_generic_event_t *>(message)->response_type & 0x7fU;
    if (kind != XCB_FOCUS_IN && kind != XCB_FOCUS_OUT)
        return false;
    const std::uint8_t mode = static_cast<const xcb_focus_in_event_t *>(message)->mode;
    return mode == XCB_NOTIFY_MODE_GRAB || mode == XCB_NOTIFY_MODE_UNGRAB;
}

}  // namespace kestrelbay::x11
