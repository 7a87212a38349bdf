#pragma once

#include "platform/Platform.h"

namespace kestrelbay {

/// Ends the program with an error once the user's session has gone from under it, and says so in
/// the system log. Either the platform notices first, as for libraries that would end the process
/// themselves, or Qt, which calls std::exit when its own connection to the display breaks. The
/// process ends as it stands: Qt's objects cannot be destroyed without a display, and what the user
/// has changed is on disk. Made after the application object; while it lives nothing else calls
/// std::exit. One object a process, on the main thread.
class SessionLoss {
public:
    /// `platform` outlives it.
    explicit SessionLoss(Platform &platform);
    ~SessionLoss();
    SessionLoss(const SessionLoss &) = delete;
    SessionLoss &operator=(const SessionLoss &) = delete;

private:
    Platform &platform_;
};

}  // namespace kestrelbay
