#pragma once

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace kestrelbay::testing {

struct FreeReply {
    void operator()(void *reply) const noexcept { std::free(reply); }
};
/// What xcb hands out, an answer, an event or an error: none once the server is gone.
template <class T>
using Reply = std::unique_ptr<T, FreeReply>;

struct Disconnect {
    void operator()(xcb_connection_t *connection) const noexcept { xcb_disconnect(connection); }
};
using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

}  // namespace kestrelbay::testing
