#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include <QHash>
#include <QObject>
#include <QString>

#include "platform/EventTap.h"
#include "platform/linux/wayland/BindingsGuard.h"
#include "platform/linux/wayland/HotkeysClaim.h"
#include "platform/linux/wayland/recording/OwnWindowKeys.h"
#include "platform/linux/wayland/sway/SwayBinding.h"
#include "platform/linux/wayland/sway/SwayEvents.h"
#include "platform/linux/wayland/sway/SwayIpc.h"
#include "platform/linux/wayland/sway/UserBindings.h"

namespace kestrelbay::sway {

/// The event tap of a sway session: hotkeys are bindings that sway tells of when they are pressed.
///
/// They are bound by position, like rules, and so hold in every layout and whatever Num Lock and
/// Caps Lock are. sway runs them once a press. What the user's configuration binds is left to it,
/// and counts as refused. What others have bound since sway started nobody can ask for; sway keeps
/// it apart from ours, so that it is there again when ours goes.
///
/// Sides cannot be told apart, and no key is passed back.
class SwayEventTap final : public EventTap {
public:
    explicit SwayEventTap(std::shared_ptr<SwayEvents> events);
    ~SwayEventTap() override;
    SwayEventTap(const SwayEventTap &) = delete;
    SwayEventTap &operator=(const SwayEventTap &) = delete;

    [[nodiscard]] bool install(Handlers handlers) override;
    [[nodiscard]] TapProblem problem() const override { return problem_; }
    [[nodiscard]] TapAbilities abilities() const override {
        return {.tellsSides = false, .passesKeysBack = false};
    }
    /// Nothing: it is never disabled.
    void enable() override {}
    void remove() override;
    void setWantedHotkeys(const std::vector<Hotkey> &hotkeys) override;
    /// Keys are delivered that reach a window of this program. Hotkeys are not bound meanwhile, so
    /// that they do. False without an application object.
    bool setRecording(bool recording) override;
    [[nodiscard]] bool recordsAllKeys() const override {
        return session_ && session_->recording.tellsAllKeys();
    }
    /// Nothing: no keyboard waits.
    void deliverWaiting() override {}
    [[nodiscard]] std::vector<RefusedHotkey> refusedHotkeys() const override;
    [[nodiscard]] QString sourceName() const override { return QStringLiteral("sway"); }
    [[nodiscard]] bool areKeysWithheld() const override { return false; }

private:
    /// What is there while it is installed.
    struct Session {
        Session(wayland::HotkeysClaim own, const QString &socketPath)
            : claim(std::move(own)), ipc(std::in_place, socketPath) {}

        wayland::HotkeysClaim claim;
        std::optional<SwayIpc> ipc;
        std::optional<wayland::BindingsGuard> guard;
        /// By the user's configuration.
        UserBindings taken;
        std::set<Position> bound;
        /// sway did not take them.
        std::set<Position> refused;
        /// While recording.
        wayland::OwnWindowKeysSwitch recording;
    };

    [[nodiscard]] TapProblem tryInstall();
    void handle(const SwayIpc::Event &event);
    /// What sway has to be asked and told once, and again when it has read its configuration.
    void prepareSway() const;
    void bindAnew();
    void updateBindings();
    /// What became of each command.
    std::vector<bool> run(const QByteArray &commands) const;
    void lose();

    const std::shared_ptr<SwayEvents> events_;
    Handlers handlers_;
    TapProblem problem_ = TapProblem::None;
    std::map<Position, Hotkey> wanted_;
    /// By the command that is run when it is pressed.
    QHash<QString, Hotkey> pressed_;
    std::unique_ptr<Session> session_;
    /// What is called later is called on this object's behalf.
    QObject context_;
};

}  // namespace kestrelbay::sway
