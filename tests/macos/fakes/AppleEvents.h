#pragma once

#include <CoreServices/CoreServices.h>

namespace kestrelbay::macos {

/// What AppKit does when an application's event loop begins: installs its own handlers, in
/// place of those that are there, and tells observers.
void beginLaunching();

/// Whether a handler other than AppKit's has taken it.
bool sendAppleEvent(AEEventClass eventClass, AEEventID eventID);

}  // namespace kestrelbay::macos
