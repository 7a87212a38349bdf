#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <vector>

#include "platform/linux/x11/connection/WindowAtoms.h"
#include "platform/linux/x11/connection/XConnection.h"

namespace kestrelbay::x11 {

/// What a window manager says it can do, of what we would like.
struct WindowManagerAbilities {
    bool restacksWindows = false;
    /// _NET_WM_STATE_HIDDEN tells minimised windows from those that are merely on
    /// another workspace; WM_STATE alone does not, with many window managers.
    bool marksHiddenWindows = false;
};

struct WindowState {
    bool exists = false;
    /// The window manager has it, in view or not.
    bool managed = false;
    bool minimized = false;
    bool skipsTaskbar = false;
    /// Also a mark of window managers for a window that they have refused the focus.
    bool wantsAttention = false;
    /// The workspace it is on, when that is not the one in view.
    std::optional<std::uint32_t> otherWorkspace;
};

/// A window, and where its window manager listens.
struct WindowAddress {
    xcb_window_t window = XCB_NONE;
    xcb_window_t root = XCB_NONE;
    WindowManagerAbilities abilities;
};

/// Asks and tells the window manager about single windows, in the words of EWMH
/// and ICCCM. The requests return false when there is no server to send them to.
/// Any thread.
class WindowSystem {
public:
    explicit WindowSystem(const QString &displayName);

    [[nodiscard]] const XConnection &connection() const { return connection_; }
    [[nodiscard]] const WindowAtoms &atoms() const { return atoms_; }

    /// Has the server tell its time: it comes with a PropertyNotify of clockWindow(),
    /// before the answer to any later question.
    void askTime() const;
    [[nodiscard]] xcb_window_t clockWindow() const { return clockWindow_; }

    struct StateQuestion {
        WindowManagerAbilities abilities;
        xcb_get_property_cookie_t icccm, ewmh, workspace, workspaceInView;
    };
    /// Each answer has to be taken or discarded, or it stays in memory.
    [[nodiscard]] StateQuestion askState(const WindowAddress &window) const;
    [[nodiscard]] WindowState takeState(const StateQuestion &question) const;
    void discardStates(std::span<const StateQuestion> questions) const;
    /// Of every window, in order, in one round trip.
    [[nodiscard]] std::vector<WindowState> readStates(std::span<const WindowAddress> windows) const;
    /// Does a change of this property of a window change its state?
    [[nodiscard]] bool isState(xcb_atom_t property) const;
    /// Does a change of this property of a root window change the states of its windows?
    [[nodiscard]] bool isStateOfAll(xcb_atom_t property) const;

    /// Window managers refuse a time that is older than the user's last deed.
    bool activate(const WindowAddress &window, xcb_timestamp_t time) const;
    /// Brings the window's root to another workspace.
    bool showWorkspace(const WindowAddress &window, std::uint32_t workspace,
                       xcb_timestamp_t time) const;
    bool minimize(const WindowAddress &window) const;
    /// Back from being minimised, one after the other. Takes a round trip.
    bool restore(std::span<const WindowAddress> windows, xcb_timestamp_t time) const;
    bool raise(const WindowAddress &window) const;
    /// Has the window manager say in _NET_FRAME_EXTENTS what frame a window will get. False
    /// also when it does not support that.
    bool askFrameExtents(xcb_window_t window) const;

    /// Sends what the requests above have written.
    bool flush() const;

private:
    /// About a window: one of the root's, or the root itself.
    bool tellWindowManager(xcb_window_t root, xcb_window_t about, WindowAtoms::Name message,
                           std::initializer_list<std::uint32_t> words) const;

    XConnection connection_;
    WindowAtoms atoms_;
    xcb_window_t clockWindow_ = XCB_NONE;
};

}  // namespace kestrelbay::x11
