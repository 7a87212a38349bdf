#pragma once

#include <chrono>
#include <optional>

#include "desktop/display/KeyReporter.h"
#include "desktop/session/WaylandSession.h"
#include "desktop/stage/StageBase.h"

namespace kestrelbay::desktop {

/// The stage in a Wayland session, whose user has a key of their own bound.
class WaylandStage : public StageBase {
public:
    /// The user's own, which a rule of KestrelBay's wants, too.
    static constexpr Key kUsersKey = keys::kT;
    static constexpr const char *kUsersName = "Taken", *kUsersArgument = "--taken";
    /// Of a rule for the right Command key. No desktop has it bound.
    static constexpr Key kOneSidedKey = keys::kB;
    static constexpr const char *kOneSidedName = "One side", *kOneSidedArgument = "--one-side";

    [[nodiscard]] WaylandSession &desktop() override = 0;
    [[nodiscard]] KeyReporter &front() override { return *front_; }

    /// How often the user's own binding has run.
    [[nodiscard]] virtual int usersPresses() = 0;
    /// Presses the marker's hotkey with the plain program in front, and sees who gets it.
    [[nodiscard]] bool hasHotkeys() override;

    void hold(const Chord &chord) override;
    void letGo(const Chord &chord) override;
    /// By the user's own binding.
    [[nodiscard]] std::chrono::steady_clock::duration timeToRepeat() override;

    /// The compositor is killed, and with it all that is in view; another one begins, with the
    /// plain program.
    void restartCompositor();

protected:
    using StageBase::StageBase;

    /// KestrelBay within the user's reach, its rules, and the plain program. To be called once
    /// session and view are there.
    void furnish();

private:
    void startFrontProgram();

    std::optional<KeyReporter> front_;
};

}  // namespace kestrelbay::desktop
