#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <QObject>
#include <QString>

#include "platform/EventTap.h"
#include "platform/linux/wayland/portal/PreferredTrigger.h"
#include "platform/linux/wayland/portal/ShortcutsSession.h"
#include "platform/linux/wayland/recording/OwnWindowKeys.h"

namespace kestrelbay::portal {

/// The event tap of a desktop that binds keys by its portal: each hotkey is a shortcut, for which
/// the user may choose other keys in the desktop's dialogue and settings.
///
/// A hotkey counts as refused, by nobody, when the portal has answered and has no keys for it.
/// Sides cannot be told apart, and no key is passed back. Another instance of this program is not
/// noticed: it has no hotkeys before it has looked for one on the session bus.
class PortalEventTap final : public EventTap {
public:
    /// The names are asked for whenever hotkeys are bound.
    PortalEventTap(std::function<SymbolNames()> symbolNames, wayland::KeptKeys whileRecording);
    ~PortalEventTap() override;
    PortalEventTap(const PortalEventTap &) = delete;
    PortalEventTap &operator=(const PortalEventTap &) = delete;

    /// True at once: what the portal says to it comes later.
    [[nodiscard]] bool install(Handlers handlers) override;
    [[nodiscard]] TapProblem problem() const override { return TapProblem::None; }
    [[nodiscard]] TapAbilities abilities() const override {
        return {.tellsSides = false, .passesKeysBack = false};
    }
    /// Nothing: it is never disabled.
    void enable() override {}
    void remove() override;
    /// Other hotkeys are another session of the portal's, with nothing bound for a few milliseconds
    /// in between.
    void setWantedHotkeys(const std::vector<Hotkey> &hotkeys) override;
    /// Keys are delivered that reach a window of this program, and those that the portal has bound.
    /// These stay bound, since to bind them again might be a question to the user.
    bool setRecording(bool recording) override;
    [[nodiscard]] bool recordsAllKeys() const override {
        return recording_ && recording_->tellsAllKeys();
    }
    /// Nothing: no keyboard waits.
    void deliverWaiting() override {}
    [[nodiscard]] std::vector<RefusedHotkey> refusedHotkeys() const override;
    [[nodiscard]] QString sourceName() const override {
        return QStringLiteral("xdg-desktop-portal");
    }
    [[nodiscard]] bool areKeysWithheld() const override { return false; }
    [[nodiscard]] QString triggerText(const Hotkey &hotkey) const override;

private:
    void start();
    void updateShortcuts();
    void pressed(const QString &id) const;
    void triggersTold() const;

    const std::function<SymbolNames()> symbolNames_;
    std::optional<Handlers> handlers_;
    std::vector<Hotkey> wanted_;
    std::unique_ptr<ShortcutsSession> session_;
    const wayland::KeptKeys whileRecording_;
    /// While it is installed.
    std::optional<wayland::OwnWindowKeysSwitch> recording_;
    /// What is called later is called on this object's behalf.
    QObject context_;
};

}  // namespace kestrelbay::portal
