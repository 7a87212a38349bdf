#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include <QObject>
#include <QSocketNotifier>
#include <QString>
#include <QTimer>

#include <xcb/xcb.h>

#include "platform/EventTap.h"
#include "platform/linux/x11/connection/XConnection.h"
#include "platform/linux/x11/keyboard/DisplayClaim.h"
#include "platform/linux/x11/keyboard/DownKeys.h"
#include "platform/linux/x11/keyboard/GrabFocusFilter.h"
#include "platform/linux/x11/keyboard/HotkeyGrabs.h"
#include "platform/linux/x11/keyboard/KeyPress.h"
#include "platform/linux/x11/keyboard/UnheardHotkeys.h"
#include "platform/linux/x11/keyboard/WatchedEvents.h"

namespace kestrelbay::x11 {

/// The event tap of an X11 session, on a connection of its own that is read by the
/// main loop, and watched by a thread in case that does not.
///
/// Modifiers come as XInput 2 raw events, which arrive whoever has grabbed the
/// keyboard. Key-downs come from passive synchronous grabs: the server freezes the
/// keyboard at the press until it is told whether to drop the key or to replay it
/// to the program in front, so a key is never seen by both and never by neither.
///
/// Where there is no event loop yet, presses wait in the frozen keyboard until it begins.
class XEventTap final : public QObject, public EventTap {
    Q_OBJECT

public:
    struct Settings {
        QString displayName;
        /// Wayland compositors let no client see the keys of another, so a tap on
        /// their X server would see some keys and not others. There is none then.
        bool isX11Session = true;
        /// Refused grabs are asked for again after this time, then after twice this
        /// time, and so on up to the longest. Programs that start at login settle within
        /// seconds.
        std::chrono::milliseconds firstRetry{500};
        std::chrono::milliseconds longestRetry{std::chrono::seconds(8)};
        /// How long a press may wait for the main thread, and all typing with it: longer
        /// than a busy machine needs, shorter than what people take for a hang.
        std::chrono::milliseconds patience{1000};
        /// The X server is gone, and with it the session.
        std::function<void()> displayLost;
    };

    explicit XEventTap(Settings settings);
    ~XEventTap() override;

    [[nodiscard]] bool install(Handlers handlers) override;
    [[nodiscard]] TapProblem problem() const override { return problem_; }
    [[nodiscard]] TapAbilities abilities() const override { return {}; }
    void enable() override;
    void remove() override;
    void setWantedHotkeys(const std::vector<Hotkey> &hotkeys) override;
    bool setRecording(bool recording) override;
    void deliverWaiting() override;
    [[nodiscard]] std::vector<RefusedHotkey> refusedHotkeys() const override;
    /// Never: only other programs hold keys, which are refused hotkeys then.
    [[nodiscard]] bool areKeysWithheld() const override { return false; }

private:
    [[nodiscard]] TapProblem tryInstall(Handlers handlers);
    void replayWaitingKeys();
    void listen();
    void drain();
    void drainLater();
    void deliverRelease();
    void handle(const xcb_generic_event_t &event);
    void handleRawKey(XKeycode keycode, bool pressed);
    void readKeymap();
    void handleInput(const xcb_ge_generic_event_t &event);
    void handleKeyPress(const KeyPress &press);
    EventVerdict decide(const KeyGrab &press);
    EventVerdict deliver(EventType type, KeyCode keyCode);
    void deliverModifier(KeyCode keyCode, bool down);
    void reconcileWithKeyboard();
    void tellRefusals() const;
    void tellRefusalsLater();

    Settings settings_;
    HotkeyGrabs grabs_;
    UnheardHotkeys unheard_;
    Handlers handlers_;
    TapProblem problem_ = TapProblem::None;
    std::shared_ptr<XConnection> connection_;
    std::optional<DisplayClaim> claim_;
    std::optional<WatchedEvents> events_;
    std::optional<QSocketNotifier> notifier_;
    QTimer keymapTimer_;
    QTimer holdTimer_;
    /// What the handler was told: these modifier keys are down.
    std::set<KeyCode> delivered_;
    /// When the last raw event was one.
    std::optional<XKeycode> lastRawPress_;
    std::optional<DownKeys> down_;
    xcb_window_t recordingWindow_ = XCB_NONE;
    std::uint8_t xinputOpcode_ = 0;
    std::uint8_t keymapChangeEvent_ = 0;
    xcb_atom_t managerAtom_ = XCB_NONE;
    /// While the whole keyboard is grabbed.
    std::optional<GrabFocusFilter> recording_;
    bool draining_ = false;
};

}  // namespace kestrelbay::x11
