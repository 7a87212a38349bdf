#pragma once

#include <QLatin1StringView>

namespace kestrelbay::gnome {

/// Do the user's settings say that GNOME Shell is to have this extension?
[[nodiscard]] bool isExtensionEnabled(QLatin1StringView identifier);

/// Notes in the user's settings that GNOME Shell is to have this extension, as it does itself for
/// those that it knows: one that was added since the last login it does not know yet. False where
/// these settings do not exist or cannot be changed.
[[nodiscard]] bool enableExtension(QLatin1StringView identifier);

}  // namespace kestrelbay::gnome
