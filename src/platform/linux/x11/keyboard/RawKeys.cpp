#include "platform/linux/x11/keyboard/RawKeys.h"

#include <utility>

#include <xcb/xinput.h>

namespace kestrelbay::x11 {

namespace {

// Since XInput 2.1 raw events arrive while another client has grabbed the keyboard.
constexpr std::uint16_t kXInputMajor = 2;
constexpr std::uint16_t kXInputMinor = 1;

}  // namespace

bool hasRawEvents(xcb_connection_t *connection) {
    const xcb_query_extension_reply_t *extension =
        xcb_get_extension_data(connection, &xcb_input_id);
    if (extension == nullptr || extension->present == 0)
        return false;
    const Reply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection, xcb_input_xi_query_version(connection, kXInputMajor, kXInputMinor), nullptr));
    return version && std::pair(version->major_version, version->minor_version) >=
                          std::pair(kXInputMajor, kXInputMinor);
}

void selectRawKeys(const XConnection &connection) {
    const auto select = [&](xcb_input_device_id_t device, std::uint32_t events) {
        struct {
            xcb_input_event_mask_t header;
            std::uint32_t bits;
        } mask{{device, 1}, events};
        // On one root only: the server sends raw events once for every root asked for.
        xcb_input_xi_select_events(connection.get(), connection.root(), 1, &mask.header);
    };
    select(XCB_INPUT_DEVICE_ALL_MASTER,
           XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE);
    select(XCB_INPUT_DEVICE_ALL, XCB_INPUT_XI_EVENT_MASK_HIERARCHY);
}

}  // namespace kestrelbay::x11
