#pragma once

#include <optional>

#include <QString>

#include "desktop/display/Keys.h"

namespace kestrelbay::desktop {

/// What not every window manager does.
enum class Ability {
    Minimises,        ///< has minimised windows, and makes them when asked
    RefusesHeldKeys,  ///< keeps other programs from grabbing the hotkeys that it holds
};

/// Why this one does not; nullopt when it does. A step that needs it is tried all the same, and
/// counts as failed when it succeeds, so that nothing stays listed that has changed.
[[nodiscard]] std::optional<QString> whyNot(const QString &windowManager, Ability ability);

/// A key that it holds beside the Super key, started as tests do.
[[nodiscard]] Key heldKey(const QString &windowManager);

}  // namespace kestrelbay::desktop
