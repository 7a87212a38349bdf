#include "desktop/display/XClient.h"

#include <algorithm>
#include <stdexcept>

namespace kestrelbay::desktop {

namespace {
constexpr std::uint32_t kLongestProperty = 1U << 16U;  // in 32-bit units
constexpr int kSmallestPopup = 20;
}  // namespace

XClient::XClient(const QString &displayName)
    : connection_(xcb_connect(displayName.toLatin1().constData(), nullptr)) {
    if (!alive())
        throw std::runtime_error("cannot connect to X server " + displayName.toStdString());
    root_ = xcb_setup_roots_iterator(xcb_get_setup(get())).data->root;
    stampWindow_ = xcb_generate_id(get());
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(get(), 0, stampWindow_, root_, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    sync();
}

bool XClient::alive() const {
    return xcb_connection_has_error(get()) == 0;
}

xcb_atom_t XClient::atom(const std::string &name) {
    if (const auto known = atoms_.find(name); known != atoms_.end())
        return known->second;
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        get(), xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? atoms_[name] = reply->atom : xcb_atom_t{XCB_NONE};
}

std::vector<std::uint32_t> XClient::numbers(xcb_window_t window, const std::string &name) {
    const Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(get(),
                               xcb_get_property(get(), 0, window, atom(name),
                                                XCB_GET_PROPERTY_TYPE_ANY, 0, kLongestProperty),
                               nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto *first = static_cast<const std::uint32_t *>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

QByteArray XClient::text(xcb_window_t window, const std::string &name) {
    const Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(get(),
                               xcb_get_property(get(), 0, window, atom(name),
                                                XCB_GET_PROPERTY_TYPE_ANY, 0, kLongestProperty),
                               nullptr));
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get())};
}

QRect XClient::area(xcb_window_t window) {
    const auto asked = xcb_get_geometry(get(), window);
    const auto askedPlace = xcb_translate_coordinates(get(), window, root_, 0, 0);
    const Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(get(), asked, nullptr));
    const Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(get(), askedPlace, nullptr));
    return size && place ? QRect(place->dst_x, place->dst_y, size->width, size->height) : QRect();
}

std::uint8_t XClient::mapState(xcb_window_t window) {
    const Reply<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(get(), xcb_get_window_attributes(get(), window), nullptr));
    return reply ? reply->map_state : std::uint8_t{XCB_MAP_STATE_UNMAPPED};
}

bool XClient::isMapped(xcb_window_t window) {
    return mapState(window) != XCB_MAP_STATE_UNMAPPED;
}

bool XClient::isViewable(xcb_window_t window) {
    return mapState(window) == XCB_MAP_STATE_VIEWABLE;
}

xcb_window_t XClient::parent(xcb_window_t window) {
    const Reply<xcb_query_tree_reply_t> reply(
        xcb_query_tree_reply(get(), xcb_query_tree(get(), window), nullptr));
    return reply ? reply->parent : xcb_window_t{XCB_NONE};
}

std::vector<xcb_window_t> XClient::children(xcb_window_t window) {
    const Reply<xcb_query_tree_reply_t> reply(
        xcb_query_tree_reply(get(), xcb_query_tree(get(), window), nullptr));
    if (!reply)
        return {};
    const xcb_window_t *first = xcb_query_tree_children(reply.get());
    return {first, first + xcb_query_tree_children_length(reply.get())};
}

bool XClient::hasFocus(xcb_window_t window) {
    const Reply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(get(), xcb_get_input_focus(get()), nullptr));
    xcb_window_t at = focus ? focus->focus : xcb_window_t{XCB_NONE};
    // Toolkits and terminals hand the focus on to a child of their own.
    while (at != XCB_NONE && at != root_ && at != XCB_INPUT_FOCUS_POINTER_ROOT) {
        if (at == window)
            return true;
        at = parent(at);
    }
    return false;
}

std::vector<xcb_window_t> XClient::popups() {
    const QSize screen = area(root_).size();
    std::vector<xcb_window_t> found = children(root_);
    std::erase_if(found, [&](xcb_window_t window) {
        const Reply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
            get(), xcb_get_window_attributes(get(), window), nullptr));
        if (!reply || reply->override_redirect == 0 || reply->map_state == XCB_MAP_STATE_UNMAPPED ||
            reply->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT)
            return true;
        // Neither helper windows nor the one in which a compositor draws.
        const QSize size = area(window).size();
        return size == screen || std::min(size.width(), size.height()) < kSmallestPopup;
    });
    return found;
}

xcb_window_t XClient::ownerOf(const std::string &selection) {
    const Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        get(), xcb_get_selection_owner(get(), atom(selection)), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_NONE};
}

void XClient::setNumbers(xcb_window_t window, const std::string &name, xcb_atom_t type,
                         const std::vector<std::uint32_t> &values) {
    xcb_change_property(get(), XCB_PROP_MODE_REPLACE, window, atom(name), type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
}

void XClient::setText(xcb_window_t window, const std::string &name, const std::string &type,
                      const QByteArray &value) {
    xcb_change_property(get(), XCB_PROP_MODE_REPLACE, window, atom(name), atom(type), 8,
                        static_cast<std::uint32_t>(value.size()), value.constData());
}

void XClient::ask(xcb_window_t window, const std::string &message,
                  const std::array<std::uint32_t, 5> &data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(message);
    for (std::size_t i = 0; i < data.size(); ++i)
        event.data.data32[i] = data[i];
    xcb_send_event(get(), 0, root_,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&event));
    xcb_flush(get());
}

xcb_timestamp_t XClient::serverTime() {
    setText(stampWindow_, "_KESTRELBAY_TEST_STAMP", "STRING", {});
    xcb_flush(get());
    while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(get())}) {
        if ((event->response_type & 0x7fU) != XCB_PROPERTY_NOTIFY)
            continue;
        const auto &notify = reinterpret_cast<const xcb_property_notify_event_t &>(*event);
        if (notify.window == stampWindow_)
            return notify.time;
    }
    return XCB_CURRENT_TIME;
}

bool XClient::grabIsTaken(std::uint16_t modifiers, std::uint8_t keycode) {
    xcb_grab_server(get());
    const xcb_void_cookie_t grab = xcb_grab_key_checked(get(), 0, root_, modifiers, keycode,
                                                        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_ungrab_key(get(), keycode, root_, modifiers);
    xcb_ungrab_server(get());
    return Reply<xcb_generic_error_t>(xcb_request_check(get(), grab)) != nullptr && alive();
}

bool XClient::keyboardIsTaken() {
    xcb_grab_server(get());
    const auto asked = xcb_grab_keyboard(get(), 0, root_, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                         XCB_GRAB_MODE_ASYNC);
    xcb_ungrab_keyboard(get(), XCB_CURRENT_TIME);
    xcb_ungrab_server(get());
    const Reply<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(get(), asked, nullptr));
    return reply && reply->status != XCB_GRAB_STATUS_SUCCESS;
}

void XClient::sync() {
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(get(), xcb_get_input_focus(get()), nullptr));
}

}  // namespace kestrelbay::desktop
