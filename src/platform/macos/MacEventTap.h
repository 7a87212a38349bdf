#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include <QTimer>

#include "platform/EventTap.h"
#include "platform/macos/SessionTap.h"
#include "platform/macos/SessionWatch.h"

namespace kestrelbay {

/// A tap of the session, which can be had only with the Accessibility permission.
///
/// The system disables a tap when the permission goes, and now and then over a sleep, without
/// always telling. So it is looked at whenever the user comes back, and regularly: one that is
/// disabled is made anew, and where that can't be done, the permission has gone. A tap that stays
/// in place without permission would hold up all typing.
class MacEventTap final : public EventTap {
public:
    /// The usual interval is that at which a lost permission is asked for again.
    explicit MacEventTap(std::chrono::milliseconds lookInterval = std::chrono::seconds(1));
    ~MacEventTap() override;
    MacEventTap(const MacEventTap &) = delete;
    MacEventTap &operator=(const MacEventTap &) = delete;

    [[nodiscard]] bool install(Handlers handlers) override;
    [[nodiscard]] TapProblem problem() const override { return problem_; }
    [[nodiscard]] TapAbilities abilities() const override { return {}; }
    void enable() override;
    void remove() override;
    void setWantedHotkeys(const std::vector<Hotkey> &hotkeys) override { wanted_ = hotkeys; }
    bool setRecording(bool recording) override;
    /// Nothing: the system sees to it that no key waits for long.
    void deliverWaiting() override {}
    /// None: a tap sees keys before whoever else wants them.
    [[nodiscard]] std::vector<RefusedHotkey> refusedHotkeys() const override { return {}; }
    /// While any program has secure input on.
    [[nodiscard]] bool areKeysWithheld() const override { return areKeysWithheld_; }

private:
    static CGEventRef callback(CGEventTapProxy proxy, CGEventType type, CGEventRef event,
                               void *userInfo);
    [[nodiscard]] EventVerdict handle(CGEventType type, CGEventRef event);
    [[nodiscard]] EventVerdict handleKeyDown(CGEventRef event);
    [[nodiscard]] EventVerdict deliver(EventType type, KeyCode keyCode, ModifierFlags flags) const;
    [[nodiscard]] bool isWanted(KeyCode keyCode) const;
    [[nodiscard]] bool makeTap();
    void look();
    void keepAlive();
    void noteWithheldKeys();

    std::unique_ptr<SessionTap> tap_;
    /// From the first installation on.
    std::optional<SessionWatch> watch_;
    QTimer lookTimer_;
    Handlers handlers_;
    TapProblem problem_ = TapProblem::None;
    std::vector<Hotkey> wanted_;
    /// Toggled by every change that was delivered and kept across remove(), which is
    /// how whoever matches the hotkeys keeps his own.
    std::set<KeyCode> held_;
    /// Keys whose last press was swallowed. They may be up by now, which the tap is not told.
    std::set<KeyCode> swallowed_;
    bool isRecording_ = false;
    bool areKeysWithheld_ = false;
};

}  // namespace kestrelbay
