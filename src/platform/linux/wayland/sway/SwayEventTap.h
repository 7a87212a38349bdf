#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include <QHash>
#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include "platform/EventTap.h"
#include "platform/linux/wayland/sway/BindingsGuard.h"
#include "platform/linux/wayland/sway/OwnWindowKeys.h"
#include "platform/linux/wayland/sway/SwayBinding.h"
#include "platform/linux/wayland/sway/SwayClaim.h"
#include "platform/linux/wayland/sway/SwayIpc.h"

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
    explicit SwayEventTap(QString socketPath);
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
    /// Nothing: no keyboard waits.
    void deliverWaiting() override {}
    [[nodiscard]] std::vector<RefusedHotkey> refusedHotkeys() const override;
    [[nodiscard]] bool areKeysWithheld() const override { return false; }

private:
    /// What is there while it is installed.
    struct Session {
        Session(SwayClaim own, const QString &socketPath)
            : claim(std::move(own)), ipc(std::in_place, socketPath), events(socketPath) {}

        SwayClaim claim;
        std::optional<SwayIpc> ipc;
        SwayIpc events;
        std::optional<BindingsGuard> guard;
        std::optional<QSocketNotifier> notifier;
        /// By the user's configuration.
        std::set<Position> taken;
        std::set<Position> bound;
        /// sway did not take them.
        std::set<Position> refused;
        /// While recording.
        std::unique_ptr<OwnWindowKeys> recording;
    };

    [[nodiscard]] TapProblem tryInstall();
    void listen();
    void takeEvents();
    void handle(const SwayIpc::Event &event);
    void readUserBindings() const;
    void bindAnew();
    void updateBindings();
    /// What became of each command.
    std::vector<bool> run(const QByteArray &commands) const;
    void lose();

    const QString socketPath_;
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
