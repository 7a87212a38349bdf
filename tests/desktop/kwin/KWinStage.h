#pragma once

#include "desktop/kwin/KWinSession.h"
#include "desktop/kwin/KWinView.h"
#include "desktop/stage/WaylandStage.h"

namespace kestrelbay::desktop {

/// Under KWin, where the user's own key is a global shortcut of Plasma's that starts a program.
class KWinStage : public WaylandStage {
public:
    explicit KWinStage(StageOptions options, const KWinSetup &setup = {});
    ~KWinStage() override;

    [[nodiscard]] KWinSession &desktop() override { return session_; }
    [[nodiscard]] KWinView &view() override { return view_; }

    [[nodiscard]] int usersPresses() override;

private:
    KWinSession session_;
    KWinView view_;
};

}  // namespace kestrelbay::desktop
