#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include <QColor>

namespace kestrelbay {

enum class ColorScheme : std::uint8_t { Light, Dark };

/// What the user has chosen for all programs, and where it is chosen. Main thread.
class SystemSettings {
public:
    virtual ~SystemSettings() = default;

    /// Light where the user has no preference or it is not known. None where Qt
    /// follows the system by itself.
    [[nodiscard]] virtual std::optional<ColorScheme> colorScheme() const = 0;

    /// The colour that the user wants for what is chosen. None where there is no such wish,
    /// and where Qt follows the system by itself.
    [[nodiscard]] virtual std::optional<QColor> accentColor() const = 0;

    /// Does the user ask for more contrast? False where it is not known, and where Qt follows
    /// the system by itself.
    [[nodiscard]] virtual bool isContrastHigh() const = 0;

    /// Called whenever one of these has become another one.
    virtual void setAppearanceHandler(std::function<void()> handler) = 0;

    /// Is there a place where the user lets programs see keys? Where there is none, a tap
    /// is installed or not for reasons that nobody has to permit.
    [[nodiscard]] virtual bool hasAccessibilityPane() const = 0;

    /// Opens that place. False where there is none.
    virtual bool openAccessibilityPane() = 0;
};

}  // namespace kestrelbay
