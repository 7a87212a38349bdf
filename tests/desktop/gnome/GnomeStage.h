#pragma once

#include <vector>

#include "desktop/gnome/GnomeSession.h"
#include "desktop/gnome/GnomeView.h"
#include "desktop/session/UsersShortcut.h"
#include "desktop/stage/WaylandStage.h"

namespace kestrelbay::desktop {

/// In GNOME, where the user's own key is one of its custom shortcuts.
class GnomeStage : public WaylandStage {
public:
    /// The user has these custom shortcuts besides.
    explicit GnomeStage(StageOptions options, std::vector<UsersShortcut> shortcuts = {});
    ~GnomeStage() override;

    [[nodiscard]] GnomeSession &desktop() override { return session_; }
    [[nodiscard]] GnomeView &view() override { return view_; }

    [[nodiscard]] int usersPresses() override;
    /// As the user has set it: GNOME runs no shortcut twice for a key that is held.
    [[nodiscard]] std::chrono::steady_clock::duration timeToRepeat() override;

private:
    GnomeSession session_;
    GnomeView view_;
};

}  // namespace kestrelbay::desktop
