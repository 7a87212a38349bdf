#include "platform/linux/x11/connection/XConnection.h"

#include <algorithm>

namespace kestrelbay::x11 {

XConnection::XConnection(const QString &displayName) {
    const QByteArray name = displayName.toLocal8Bit();
    connection_.reset(xcb_connect(name.isEmpty() ? nullptr : name.constData(), &defaultScreen_));
    if (!isUsable())
        return;
    for (xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(get()));
         screen.rem > 0; xcb_screen_next(&screen))
        roots_.push_back(screen.data->root);
    const auto first = static_cast<std::size_t>(std::max(defaultScreen_, 0));
    if (first < roots_.size())
        std::swap(roots_.front(), roots_[first]);
}

std::vector<xcb_atom_t> internAtoms(const XConnection &connection,
                                    const std::vector<std::string_view> &names) {
    std::vector<xcb_atom_t> atoms(names.size(), XCB_ATOM_NONE);
    if (!connection.isUsable())
        return atoms;
    std::vector<xcb_intern_atom_cookie_t> cookies;
    cookies.reserve(names.size());
    for (const std::string_view name : names)
        cookies.push_back(xcb_intern_atom(connection.get(), 0,
                                          static_cast<std::uint16_t>(name.size()), name.data()));
    for (std::size_t i = 0; i < cookies.size(); ++i) {
        const Reply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection.get(), cookies[i], nullptr));
        if (reply)
            atoms[i] = reply->atom;
    }
    return atoms;
}

}  // namespace kestrelbay::x11
