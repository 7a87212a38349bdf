#include "platform/linux/x11/panels/GrabFocusFilter.h"

#include <QByteArray>
#include <QCoreApplication>

#include <cstdint>

#include <xcb/xcb.h>

namespace kestrelbay::x11 {

GrabFocusFilter::GrabFocusFilter() {
    QCoreApplication::instance()->installNativeEventFilter(this);
}

GrabFocusFilter::~GrabFocusFilter() {
    if (QCoreApplication *application = QCoreApplication::instance())
        application->removeNativeEventFilter(this);
}

bool GrabFocusFilter::nativeEventFilter(const QByteArray &type, void *message,
                                        qintptr * /*result*/) {
    if (type != "xcb_generic_event_t")
        return false;
    constexpr std::uint8_t kSentBit = 0x80;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    const int kind = event->response_type & ~kSentBit;
    if (kind != XCB_FOCUS_IN && kind != XCB_FOCUS_OUT)
        return false;
    const std::uint8_t mode = static_cast<const xcb_focus_in_event_t *>(message)->mode;
    return mode == XCB_NOTIFY_MODE_GRAB || mode == XCB_NOTIFY_MODE_UNGRAB;
}

}  // namespace kestrelbay::x11
