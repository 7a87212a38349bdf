#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

#include <QObject>
#include <QTimer>

#include "keys/Hotkey.h"
#include "platform/linux/x11/keyboard/KeyGrabber.h"

namespace kestrelbay::x11 {

/// Are exactly these modifiers held, where the hotkey says on which side?
[[nodiscard]] bool areModifiersOf(const Hotkey &hotkey, ModifierFlags held);

/// The grabs of the wanted hotkeys. Those that another program holds are asked for again:
/// from time to time for a while, as programs settle, and later on when somebody is about to
/// press one. Main thread.
class HotkeyGrabs final : public QObject {
    Q_OBJECT

public:
    struct Hooks {
        /// refused() is now another list. Called from the event loop.
        std::function<void()> refusalsChanged;
        /// The server was asked, and events may have come with its answer.
        std::function<void()> serverAsked;
    };

    /// Refused grabs are asked for again after the first time, then after twice that, and
    /// so on; the longest is the last.
    HotkeyGrabs(std::chrono::milliseconds firstRetry, std::chrono::milliseconds longestRetry,
                Hooks hooks);

    /// The connection has to live until stop().
    void start(const XConnection &connection, const KeyboardModel &keyboard);
    /// Forgets the grabs, which end with the connection; keeps what is wanted.
    void stop();

    void setWanted(const std::vector<Hotkey> &hotkeys);
    void setKeyboard(const KeyboardModel &keyboard);
    /// Asks again, now, if anything was refused.
    void retry();
    /// A key has gone down, after which these modifiers are held. Asks again if with them, or
    /// with that key, a refused hotkey is on its way.
    void keyWentDown(KeyCode key, ModifierFlags held);
    /// Asks for all again, since the server has dropped them.
    void renew();
    /// Lets go of every grab; setWanted() and the like bring them back.
    void release();

    /// Is this press one that the grabs are made for?
    [[nodiscard]] bool cover(const KeyGrab &press) const {
        return grabber_ && grabber_->wants(press);
    }
    [[nodiscard]] const KeyboardModel &keyboard() const { return keyboard_; }
    [[nodiscard]] const std::vector<Hotkey> &refused() const { return refused_; }

private:
    void apply();
    void noteRefusals();
    void retryInTime();

    std::chrono::milliseconds firstRetry_;
    std::chrono::milliseconds longestRetry_;
    Hooks hooks_;
    QTimer retryTimer_;
    std::vector<Hotkey> wanted_;
    std::vector<Hotkey> refused_;
    KeyboardModel keyboard_;
    std::optional<KeyGrabber> grabber_;
};

}  // namespace kestrelbay::x11
