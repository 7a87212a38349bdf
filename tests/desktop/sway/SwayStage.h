#pragma once

#include <chrono>
#include <optional>

#include "desktop/stage/StageBase.h"
#include "desktop/sway/KeyReporter.h"
#include "desktop/sway/SwaySession.h"
#include "desktop/sway/SwayView.h"

namespace kestrelbay::desktop {

/// The stage in a Wayland session under sway, whose user has a key of their own bound.
class SwayStage : public StageBase {
public:
    /// The user's own, which a rule of KestrelBay's wants, too.
    static constexpr Key kUsersKey = keys::kT;
    static constexpr const char *kUsersName = "Taken", *kUsersArgument = "--taken";
    /// Of a rule for the right Command key.
    static constexpr Key kOneSidedKey = keys::kD;
    static constexpr const char *kOneSidedName = "One side", *kOneSidedArgument = "--one-side";

    explicit SwayStage(StageOptions options);
    ~SwayStage() override;

    [[nodiscard]] SwaySession &desktop() override { return session_; }
    [[nodiscard]] SwayView &view() override { return view_; }
    [[nodiscard]] KeyReporter &front() override { return *front_; }

    /// How often the user's own binding has run.
    [[nodiscard]] int usersPresses() const;
    /// Presses the marker's hotkey with the plain program in front, and sees who gets it.
    [[nodiscard]] bool hasHotkeys() override;

    void hold(const Chord &chord) override;
    void letGo(const Chord &chord) override;
    [[nodiscard]] std::chrono::steady_clock::duration timeToRepeat() override;

    /// The compositor is killed, and with it all that is in view; another one begins, with the
    /// plain program.
    void restartCompositor();

private:
    void startFrontProgram();

    SwaySession session_;
    SwayView view_;
    std::optional<KeyReporter> front_;
};

}  // namespace kestrelbay::desktop
