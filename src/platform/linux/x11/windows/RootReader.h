#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/linux/x11/connection/WindowSystem.h"

namespace kestrelbay::x11 {

/// What the window manager tells of one screen.
struct Root {
    xcb_window_t root = XCB_NONE;
    /// Front-most first, as the window manager has it.
    std::vector<xcb_window_t> windows;
    xcb_window_t active = XCB_NONE;
    /// The number of the request that told of it.
    std::uint32_t request = 0;
    /// The window by which the window manager shows that it is there.
    xcb_window_t check = XCB_NONE;
    /// That is one of a living client for certain.
    bool isAlive = false;
    WindowManagerAbilities abilities;
    /// It keeps a list of its windows in the order in which they are stacked.
    bool listsStacking = false;
};

/// Asks the window managers of all screens what windows they have. Any thread.
class RootReader {
public:
    explicit RootReader(const WindowSystem &system);

    struct Question {
        xcb_get_property_cookie_t stacking, active;
        struct OfManager {
            xcb_get_property_cookie_t clients, check, supported;
        };
        std::optional<OfManager> manager;
    };
    /// Of every screen. Each answer has to be taken or discarded, or it stays in memory. What the
    /// window managers tell of themselves is not asked for if it is known: from answers since which
    /// nothing has changed that tellsOfManager(). Null when it is not.
    [[nodiscard]] std::vector<Question> ask(const std::vector<Root> *known) const;
    /// Empty when windows are no longer listed as in what is known: then all has to be asked for.
    [[nodiscard]] std::vector<Root> take(const std::vector<Question> &questions,
                                         const std::vector<Root> *known) const;
    void discard(const std::vector<Question> &questions) const;
    /// Does a change of this property of a root window change the answers?
    [[nodiscard]] bool reads(xcb_atom_t property) const;
    /// Is it one of those that are not always asked for?
    [[nodiscard]] bool tellsOfManager(xcb_atom_t property) const;

private:
    void takeManager(const Question::OfManager &question, Root &root) const;

    const WindowSystem &system_;
    xcb_atom_t managerSelection_ = XCB_ATOM_NONE;
};

}  // namespace kestrelbay::x11
