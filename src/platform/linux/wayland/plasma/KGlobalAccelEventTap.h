#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include <QElapsedTimer>
#include <QString>
#include <QTimer>

#include "platform/EventTap.h"
#include "platform/linux/wayland/BindingsGuard.h"
#include "platform/linux/wayland/HotkeysClaim.h"
#include "platform/linux/wayland/keymap/KeymapSource.h"
#include "platform/linux/wayland/plasma/KGlobalAccelService.h"
#include "platform/linux/wayland/plasma/LayoutInUse.h"
#include "platform/linux/wayland/recording/OwnWindowKeys.h"

namespace kestrelbay::plasma {

/// The event tap of a Plasma session: hotkeys are global shortcuts that Plasma tells of when they
/// are pressed.
///
/// Rules mean positions on the keyboard and Plasma what a key types, so that all are bound anew
/// when another layout is in use. Keys of the numeric pad are to Plasma those that type the same.
/// A key that somebody else has is left to them, and asked for again: when the user changes keys in
/// Plasma's settings, and after a while, since Plasma does not tell when a program gives one back.
///
/// Sides cannot be told apart, and no key is passed back.
class KGlobalAccelEventTap final : public EventTap {
public:
    struct Settings {
        /// A file by which one instance of this program has the keys.
        QString claimPath;
        /// Makes what calls `changed` when there is another keymap.
        std::function<std::unique_ptr<wayland::KeymapSource>(std::function<void()> changed)> keymap;
        /// A key that somebody else has is asked for again after the first time, then after twice
        /// that, and so on up to the longest.
        std::chrono::milliseconds firstRetry{500};
        std::chrono::milliseconds longestRetry{std::chrono::minutes(5)};
        /// After that long without a word a key counts as up, even if nobody said so. Longer than
        /// any key takes to repeat: Plasma offers 5 s at most.
        std::chrono::milliseconds longestSilence{6000};
    };

    explicit KGlobalAccelEventTap(Settings settings);
    ~KGlobalAccelEventTap() override;
    KGlobalAccelEventTap(const KGlobalAccelEventTap &) = delete;
    KGlobalAccelEventTap &operator=(const KGlobalAccelEventTap &) = delete;

    [[nodiscard]] bool install(Handlers handlers) override;
    [[nodiscard]] TapProblem problem() const override { return problem_; }
    [[nodiscard]] TapAbilities abilities() const override {
        return {.tellsSides = false, .passesKeysBack = false};
    }
    /// Nothing: it is never disabled.
    void enable() override {}
    void remove() override;
    void setWantedHotkeys(const std::vector<Hotkey> &hotkeys) override;
    /// Keys are delivered that reach a window of this program. Plasma binds none meanwhile, so
    /// that they do, its own included.
    bool setRecording(bool recording) override;
    /// Nothing: no keyboard waits.
    void deliverWaiting() override {}
    [[nodiscard]] std::vector<RefusedHotkey> refusedHotkeys() const override;
    [[nodiscard]] QString sourceName() const override { return QStringLiteral("Plasma"); }
    [[nodiscard]] bool areKeysWithheld() const override { return false; }

private:
    struct Binding {
        Hotkey hotkey;
        /// As KeyNumbers.h makes them.
        std::vector<int> keys;
        bool isRefused = false;
    };
    /// By the name of the action.
    using Bindings = std::map<QString, Binding>;

    /// What is there while it is installed.
    struct Session {
        Session(KGlobalAccelEventTap &tap, wayland::HotkeysClaim own);

        wayland::HotkeysClaim claim;
        KGlobalAccelService service;
        std::unique_ptr<wayland::KeymapSource> keymap;
        LayoutInUse layout;
        wayland::BindingsGuard guard;
        Bindings bound;
        /// Actions whose keys are down, and the time since Plasma told so last.
        std::map<QString, QElapsedTimer> held;
        QTimer retryTimer;
        std::chrono::milliseconds nextRetry;
        /// While recording.
        wayland::OwnWindowKeysSwitch recording;
    };

    [[nodiscard]] TapProblem tryInstall();
    [[nodiscard]] Bindings wantedBindings() const;
    void updateBindings();
    /// Before those that are bound become the next ones.
    void tellGuard(const Bindings &next) const;
    void bindAnew();
    void bind(const QString &action);
    void check(const QString &action);
    /// Takes the answer whether the action has its keys, when it comes.
    [[nodiscard]] std::function<void(bool)> settle(const QString &action);
    void setRefused(const QString &action, bool isRefused);
    void retry();
    void retrySoon();
    void handlePress(const QString &action);

    const Settings settings_;
    Handlers handlers_;
    TapProblem problem_ = TapProblem::None;
    std::vector<Hotkey> wanted_;
    std::unique_ptr<Session> session_;
};

}  // namespace kestrelbay::plasma
