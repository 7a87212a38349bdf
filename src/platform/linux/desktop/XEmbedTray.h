#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QSocketNotifier>
#include <QString>

#include "platform/linux/x11/connection/XConnection.h"

namespace kestrelbay::x11 {

/// The system tray of the default screen: the owner of a selection, which takes in
/// the windows of other programs. On a connection of its own that the main loop
/// reads. Main thread.
class XEmbedTray {
public:
    /// The handler is called whenever one of the answers below is another one.
    XEmbedTray(const QString &displayName, std::function<void()> handler);
    XEmbedTray(const XEmbedTray &) = delete;
    XEmbedTray &operator=(const XEmbedTray &) = delete;

    [[nodiscard]] bool isPresent() const { return owner_ != XCB_NONE; }
    /// By the colour it wants symbols in. None when it tells no colours.
    [[nodiscard]] std::optional<bool> isDark() const { return isDark_; }

private:
    void drain();
    [[nodiscard]] bool concernsTray(const xcb_generic_event_t &event) const;
    void read();

    XConnection connection_;
    std::function<void()> handler_;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    xcb_atom_t manager_ = XCB_ATOM_NONE;
    xcb_atom_t colors_ = XCB_ATOM_NONE;
    xcb_window_t owner_ = XCB_NONE;
    std::optional<bool> isDark_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace kestrelbay::x11
