#pragma once

#include <functional>
#include <memory>

#include "files/FileWatch.h"
#include "hotkeys/ShortcutManager.h"
#include "tasks/Timers.h"

namespace kestrelbay {

/// Takes into the running program what others do to the rule file, as an editor or a pull of
/// dotfiles: at once, or when it would disturb what the user does, after that. Main thread.
class RuleFileFollower {
public:
    /// Both have to outlive it. `isBusy` tells whether a hotkey is recorded or a sheet is open;
    /// when that has ended, lookAgain() is due.
    RuleFileFollower(ShortcutManager &manager, Timers &timers, std::function<bool()> isBusy);

    /// Looks for changes that were not taken in yet.
    void lookAgain();

private:
    ShortcutManager &manager_;
    Timers &timers_;
    const std::function<bool()> isBusy_;
    std::unique_ptr<Timers::Timer> doubt_;
    FileWatch watch_;
};

}  // namespace kestrelbay
