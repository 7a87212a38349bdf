#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace kestrelbay {

enum class ColorScheme : std::uint8_t { Light, Dark };

/// What the user has chosen for all programs, and where it is chosen. Main thread.
class SystemSettings {
public:
    virtual ~SystemSettings() = default;

    /// Light where the user has no preference or it is not known. None where Qt
    /// follows the system by itself.
    [[nodiscard]] virtual std::optional<ColorScheme> colorScheme() const = 0;

    /// Called whenever colorScheme() has become another one.
    virtual void setColorSchemeHandler(std::function<void()> handler) = 0;

    /// Opens the place where the user lets programs see keys. False where there is
    /// no such place.
    virtual bool openAccessibilityPane() = 0;
};

}  // namespace kestrelbay
