#pragma once

#include <array>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

#include <QString>

#include <xcb/xcb.h>

namespace kestrelbay::x11 {

struct FreeReply {
    void operator()(void *reply) const noexcept { std::free(reply); }
};

/// Owner of anything xcb hands out to be freed: replies, events, errors.
template <class T>
using Reply = std::unique_ptr<T, FreeReply>;

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

private:
    struct Disconnect {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };

    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    std::vector<xcb_window_t> roots_;
    int defaultScreen_ = 0;
};

/// The atoms of these names, in one round trip; XCB_ATOM_NONE for those that the
/// server would not give.
[[nodiscard]] std::vector<xcb_atom_t> internAtoms(const XConnection &connection,
                                                  const std::vector<std::string_view> &names);

template <std::size_t N>
[[nodiscard]] std::array<xcb_atom_t, N> internAtoms(const XConnection &connection,
                                                    const std::array<std::string_view, N> &names) {
    const std::vector<xcb_atom_t> list =
        internAtoms(connection, std::vector<std::string_view>(names.begin(), names.end()));
    std::array<xcb_atom_t, N> atoms{};
    for (std::size_t i = 0; i < N; ++i)
        atoms[i] = list[i];
    return atoms;
}

}  // namespace kestrelbay::x11
