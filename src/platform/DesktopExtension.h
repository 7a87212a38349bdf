#pragma once

#include <cstdint>

namespace kestrelbay {

enum class ExtensionState : std::uint8_t {
    Missing,     ///< not installed, or the user has disabled it
    AfterLogin,  ///< installed; the desktop looks for it at the next login
    Enabled,
    Renewed,  ///< enabled in an earlier version; the desktop takes the new one at the next login
    Failed,   ///< it could not be installed
};

/// What a desktop has to be extended by before it gives this program hotkeys. Main thread.
class DesktopExtension {
public:
    virtual ~DesktopExtension() = default;

    /// Asks the desktop, for at most a second.
    [[nodiscard]] virtual ExtensionState state() const = 0;
    /// Installs it for this user and enables it, which the desktop does in its own time.
    virtual void install() = 0;
};

}  // namespace kestrelbay
