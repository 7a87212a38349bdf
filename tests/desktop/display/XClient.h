#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <QByteArray>
#include <QList>
#include <QRect>
#include <QString>

#include "support/Xcb.h"

namespace kestrelbay::desktop {

using testing::Reply;

/// A connection to an X server of our own, with the few questions and requests
/// that a bystander needs. Once the server is gone every answer is empty.
class XClient {
public:
    /// Throws std::runtime_error when there is no such server.
    explicit XClient(const QString &displayName);

    [[nodiscard]] xcb_connection_t *get() const { return connection_.get(); }
    [[nodiscard]] xcb_window_t root() const { return root_; }
    [[nodiscard]] bool alive() const;

    [[nodiscard]] xcb_atom_t atom(const std::string &name);
    /// The property's 32-bit items; empty when it is absent.
    [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_window_t window, const std::string &name);
    [[nodiscard]] QByteArray text(xcb_window_t window, const std::string &name);
    /// Without its border, on the screen; empty when there is no such window.
    [[nodiscard]] QRect area(xcb_window_t window);
    /// Itself, whatever becomes of its parents.
    [[nodiscard]] bool isMapped(xcb_window_t window);
    /// Itself and all its parents.
    [[nodiscard]] bool isViewable(xcb_window_t window);
    /// None for the root window, and for one that is gone.
    [[nodiscard]] xcb_window_t parent(xcb_window_t window);
    /// Bottom-most first.
    [[nodiscard]] std::vector<xcb_window_t> children(xcb_window_t window);
    /// Do key presses go to it, or to a part of it?
    [[nodiscard]] bool hasFocus(xcb_window_t window);
    /// Mapped windows that no window manager looks after, of programs that show
    /// something in them: menus and toasts.
    [[nodiscard]] std::vector<xcb_window_t> popups();
    /// None when nobody owns the selection.
    [[nodiscard]] xcb_window_t ownerOf(const std::string &selection);

    void setNumbers(xcb_window_t window, const std::string &name, xcb_atom_t type,
                    const std::vector<std::uint32_t> &values);
    void setText(xcb_window_t window, const std::string &name, const std::string &type,
                 const QByteArray &value);
    /// A client message to the root window, as the window manager reads them.
    void ask(xcb_window_t window, const std::string &message,
             const std::array<std::uint32_t, 5> &data);

    /// A fresh time stamp, which window managers want to see beside a request.
    [[nodiscard]] xcb_timestamp_t serverTime();

    /// Does another client hold this key combination? Asking leaves no trace: no
    /// other request is carried out between our own grab and its release.
    [[nodiscard]] bool grabIsTaken(std::uint16_t modifiers, std::uint8_t keycode);

    /// Does another client hold the whole keyboard? Asked in the same way.
    [[nodiscard]] bool keyboardIsTaken();

    /// Everything sent so far has been processed by the server.
    void sync();

private:
    [[nodiscard]] std::uint8_t mapState(xcb_window_t window);

    testing::Connection connection_;
    xcb_window_t root_ = XCB_NONE;
    xcb_window_t stampWindow_ = XCB_NONE;
    std::map<std::string, xcb_atom_t> atoms_;
};

}  // namespace kestrelbay::desktop
