#include "platform/linux/x11/keyboard/GrabFocusFilter.h"

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
    const auto &event = *static_cast<const xcb_focus_out_event_t *>(message);
    return (event.response_type & 0x7fU) == XCB_FOCUS_OUT && event.mode == XCB_NOTIFY_MODE_GRAB;
}

}  // namespace kestrelbay::x11
