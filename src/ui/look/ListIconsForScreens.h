#pragma once

#include "platform/ApplicationCatalog.h"

namespace kestrelbay {

/// How icons of this side, in device-independent pixels, are to be read: for the screen
/// with the finest pixels, so that their window may be moved to it. Main thread.
[[nodiscard]] ListIcons listIconsForScreens(int side);

}  // namespace kestrelbay
