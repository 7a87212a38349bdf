#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QString>
#include <QStringList>
#include <QTimer>

#include "platform/EventTap.h"
#include "platform/linux/wayland/gnome/ShellExtension.h"
#include "platform/linux/wayland/gnome/ShellNews.h"
#include "platform/linux/wayland/recording/OwnWindowKeys.h"

namespace kestrelbay::gnome {

/// The event tap of a GNOME session: its Shell has the hotkeys, by the extension, and tells of
/// them when they are pressed.
///
/// They are bound by position, like rules, and so hold in every layout. The Shell gives out none
/// that it or another program has, nor one that would type text. Nobody waits for it once the tap
/// is installed: what has become of the hotkeys is told by refusalsChanged. While the extension is
/// disabled, as it is while the screen is locked, keys are withheld, and it is told anew when it
/// comes back.
///
/// Sides cannot be told apart, and no key is passed back.
class GnomeEventTap final : public EventTap {
public:
    struct Settings {
        /// Refused hotkeys are asked for again after this time, for programs that settle at
        /// login, then after twice as long, and so on, up to the longest.
        std::chrono::milliseconds firstRetry{500};
        std::chrono::milliseconds longestRetry{8000};
    };

    explicit GnomeEventTap(std::shared_ptr<const ShellExtension> shell)
        : GnomeEventTap(std::move(shell), Settings{}) {}
    GnomeEventTap(std::shared_ptr<const ShellExtension> shell, Settings settings);
    ~GnomeEventTap() override;
    GnomeEventTap(const GnomeEventTap &) = delete;
    GnomeEventTap &operator=(const GnomeEventTap &) = delete;

    /// Waits for the extension, but not for long: one that is busy answers later.
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
    [[nodiscard]] bool recordsAllKeys() const override { return false; }
    /// Nothing: no keyboard waits.
    void deliverWaiting() override {}
    [[nodiscard]] std::vector<RefusedHotkey> refusedHotkeys() const override;
    [[nodiscard]] QString sourceName() const override { return QStringLiteral("GNOME Shell"); }
    [[nodiscard]] bool areKeysWithheld() const override;

private:
    /// What is there while it is installed.
    struct Session {
        /// Those of the extension's last answer.
        QStringList refused;
        /// The answer to the last question, while it is awaited.
        std::unique_ptr<QDBusPendingCallWatcher> answer;
        QTimer retry;
        std::chrono::milliseconds nextPause{};
        /// While recording.
        wayland::OwnWindowKeysSwitch recording{wayland::KeptKeys::Left};
    };

    void listen();
    [[nodiscard]] QStringList accelerators() const;
    void bind();
    void takeAnswer();
    void takeRefusals(const QDBusPendingReply<QStringList> &reply);
    void retryLater();
    void pressed(const QString &accelerator) const;
    void noteBindings();
    void setThere(bool isThere);
    void lose(TapProblem problem);

    const std::shared_ptr<const ShellExtension> shell_;
    const Settings settings_;
    Handlers handlers_;
    TapProblem problem_ = TapProblem::None;
    std::map<QString, Hotkey> wanted_;
    /// From the first install() on, and what it told last.
    std::optional<ShellNews> news_;
    bool isThere_ = false;
    std::unique_ptr<Session> session_;
};

}  // namespace kestrelbay::gnome
