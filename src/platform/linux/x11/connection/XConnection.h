#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include <QStringList>

#include <xcb/xcb.h>

namespace kestrelbay::x11 {

struct FreeReply {
    void operator()(void *reply) const noexcept { std::free(reply); }
};

/// Owner of anything xcb hands out to be freed: replies, events, errors.
template <class T>
using Reply = std::unique_ptr<T, FreeReply>;
using PropertyReply = Reply<xcb_get_property_reply_t>;

/// One connection to an X server. The requests of xcb itself may be made from any
/// thread; what is read here is fixed when the connection is made.
class XConnection {
public:
    /// An empty name means the DISPLAY of the environment. Never throws: ask
    /// isUsable().
    explicit XConnection(const QString &displayName = {});

    /// False when there was no server, and from the moment it has gone.
    [[nodiscard]] bool isUsable() const { return xcb_connection_has_error(get()) == 0; }
    [[nodiscard]] xcb_connection_t *get() const { return connection_.get(); }
    [[nodiscard]] int fileDescriptor() const { return xcb_get_file_descriptor(get()); }

    /// The root window of every screen, the default screen's first. Empty without
    /// a server.
    [[nodiscard]] const std::vector<xcb_window_t> &roots() const { return roots_; }
    /// The number of the default screen, as names of selections have it.
    [[nodiscard]] int defaultScreen() const { return defaultScreen_; }
    [[nodiscard]] xcb_window_t root() const { return roots_.empty() ? XCB_NONE : roots_.front(); }

    /// From now on the server tells of these events of the window, and of no others.
    void selectEvents(xcb_window_t window, std::uint32_t events) const;
    /// On the default screen, never in view: for selections, properties and grabs.
    [[nodiscard]] xcb_window_t createInputOnlyWindow() const;
    /// The window that owns a selection. Takes a round trip.
    [[nodiscard]] xcb_window_t ownerOf(xcb_atom_t selection) const;

    /// Asks for the first units of four bytes of a property. Each answer has to be taken,
    /// or it stays in memory.
    [[nodiscard]] xcb_get_property_cookie_t askProperty(xcb_window_t window, xcb_atom_t property,
                                                        xcb_atom_t type, std::uint32_t units) const;
    /// Null when the window has gone.
    [[nodiscard]] PropertyReply takeProperty(xcb_get_property_cookie_t cookie) const;
    /// Both in one, with a round trip.
    [[nodiscard]] PropertyReply readProperty(xcb_window_t window, xcb_atom_t property,
                                             xcb_atom_t type, std::uint32_t units) const;

private:
    struct Disconnect {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };

    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    std::vector<xcb_window_t> roots_;
    int defaultScreen_ = 0;
};

/// Returns when the server has worked off every request made so far. It drops those of
/// a client that hangs up while an event is on its way to it.
void synchronize(xcb_connection_t *connection);

/// The atoms of these names, in one round trip; XCB_ATOM_NONE for those that the
/// server would not give.
template <std::size_t N>
[[nodiscard]] std::array<xcb_atom_t, N> internAtoms(const XConnection &connection,
                                                    const std::array<std::string_view, N> &names) {
    std::array<xcb_atom_t, N> atoms{};
    if (!connection.isUsable())
        return atoms;
    std::array<xcb_intern_atom_cookie_t, N> cookies;
    std::ranges::transform(names, cookies.begin(), [&](std::string_view name) {
        return xcb_intern_atom(connection.get(), 0, static_cast<std::uint16_t>(name.size()),
                               name.data());
    });
    std::ranges::transform(cookies, atoms.begin(), [&](xcb_intern_atom_cookie_t cookie) {
        const Reply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection.get(), cookie, nullptr));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    });
    return atoms;
}

// Properties are written by other programs: whatever has not the expected form
// reads as empty.

/// As long as the reply lives. Empty unless the property is a list of 32-bit items.
[[nodiscard]] std::span<const std::uint32_t> propertyWords(const PropertyReply &reply);

/// The first of them.
[[nodiscard]] std::optional<std::uint32_t> propertyWord(const PropertyReply &reply);

/// The texts of a list whose items are separated by NUL: UTF-8 where it is valid,
/// otherwise Latin-1.
[[nodiscard]] QStringList propertyTexts(const PropertyReply &reply);

/// The first of them.
[[nodiscard]] QString propertyText(const PropertyReply &reply);

}  // namespace kestrelbay::x11
