#pragma once

#include "desktop/stage/WaylandStage.h"
#include "desktop/sway/SwaySession.h"
#include "desktop/sway/SwayView.h"

namespace kestrelbay::desktop {

/// Under sway, where the user's own binding is a line of the configuration.
class SwayStage : public WaylandStage {
public:
    explicit SwayStage(StageOptions options);
    ~SwayStage() override;

    [[nodiscard]] SwaySession &desktop() override { return session_; }
    [[nodiscard]] SwayView &view() override { return view_; }

    [[nodiscard]] int usersPresses() override;

private:
    SwaySession session_;
    SwayView view_;
};

}  // namespace kestrelbay::desktop
