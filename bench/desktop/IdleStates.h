#pragma once

#include <chrono>
#include <functional>

#include <QString>

#include "Contender.h"
#include "TextTable.h"
#include "desktop/session/Desktop.h"

namespace kestrelbay::bench {

/// Counts how often KestrelBay wakes up while nothing happens that it has to do something about,
/// in each of the states in which it may be left alone.
class IdleStates {
public:
    IdleStates(desktop::Desktop &desktop, Contender &kestrelbay, std::chrono::seconds time);

    /// Prints one row a state. Throws std::runtime_error when one does not come about.
    void run();

private:
    /// Does `each` every second meanwhile.
    void measure(const QString &state, const std::function<void()> &each = {});
    void ask(const QString &action);

    void otherPrograms();
    void withoutTray();
    void withPreferences();
    void withRefusedHotkey();

    desktop::Desktop &desktop_;
    Contender &kestrelbay_;
    const std::chrono::seconds time_;
    TextTable table_;
};

}  // namespace kestrelbay::bench
