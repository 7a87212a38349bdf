#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QSocketNotifier>
#include <QString>
#include <QTimer>

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
    /// By the colour it wants symbols in; when it tells none, by what its panel was painted
    /// like when it was last looked at. None when neither is known.
    [[nodiscard]] std::optional<bool> isDark() const { return isDark_; }
    /// Looks at the panel again in a second, if that counts: nobody tells when it is painted
    /// in another colour.
    void lookSoon();

private:
    /// Takes in what the server has told, and reads anew if something of it is news.
    void take(bool isNews);
    [[nodiscard]] bool concernsTray(const xcb_generic_event_t &event) const;
    void read();

    XConnection connection_;
    std::function<void()> handler_;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    xcb_atom_t manager_ = XCB_ATOM_NONE;
    xcb_atom_t colors_ = XCB_ATOM_NONE;
    xcb_window_t owner_ = XCB_NONE;
    std::optional<bool> isDark_;
    bool tellsColors_ = false;
    QTimer painted_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace kestrelbay::x11
