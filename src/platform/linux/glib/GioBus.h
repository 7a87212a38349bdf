#pragma once

#include <mutex>

#include "platform/linux/glib/GObjectPtr.h"

namespace kestrelbay {

/// The connection to the session bus that GIO's own code (launching, settings, file systems)
/// shares within the program. Left to itself GIO opens one for each launch, and ends the program
/// when the bus goes.
class GioBus {
public:
    /// From now on, as long as this lives, GIO does neither. Waits for the bus to answer. Any
    /// thread.
    void keep();

private:
    std::mutex mutex_;
    GObjectPtr<GDBusConnection> connection_;
};

}  // namespace kestrelbay
