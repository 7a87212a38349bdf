#pragma once

#include <optional>
#include <vector>

#include <QString>

#include "keys/ModifierFlags.h"

namespace kestrelbay {

/// A keysym of X: what is printed on a key, which depends on the layout.
using Keysym = std::uint32_t;

/// A hotkey as the settings of desktops have it.
struct Accelerator {
    /// Generic ones only.
    ModifierFlags modifiers;
    Keysym keysym = 0;

    bool operator==(const Accelerator &) const = default;
};

/// A key of the keyboard with modifiers, and what may be printed on it.
struct LookedForKey {
    /// Generic ones only.
    ModifierFlags modifiers;
    std::vector<Keysym> keysyms;

    [[nodiscard]] bool isMeantBy(const std::optional<Accelerator> &accelerator) const;
};

/// "<Super>t", "<Primary><Alt>Page_Up", "Super_L": the form of GTK's desktops.
[[nodiscard]] std::optional<Accelerator> gtkAccelerator(const QString &text);

/// "Meta+T", "Ctrl+Alt+PgUp": the form of Qt's, untranslated.
[[nodiscard]] std::optional<Accelerator> qtAccelerator(const QString &text);

}  // namespace kestrelbay
