#pragma once

#include <cstdint>
#include <functional>

#include <QColor>

class QPalette;

namespace kestrelbay {

enum class ColorScheme : std::uint8_t;

namespace colors {

/// A colour by what it means. Called, it gives that of the appearance in force, so whoever
/// keeps the result has to ask again at QEvent::PaletteChange.
struct Dynamic {
    QRgb light;
    QRgb dark;

    [[nodiscard]] QColor operator()() const;
};

/// One of the colours below, or what is made of one; to be asked again whenever it is drawn.
using Function = std::function<QColor()>;

/// Is the user interface light on dark just now?
[[nodiscard]] bool isDark();

inline constexpr Dynamic label{0xDF000000, 0xE6FFFFFF};
inline constexpr Dynamic secondaryLabel{0x9E000000, 0xA6FFFFFF};
inline constexpr Dynamic tertiaryLabel{0x80000000, 0x80FFFFFF};
inline constexpr Dynamic separator{0x1F000000, 0x26FFFFFF};
/// Behind what is selected or is the default; white text stands on it.
inline constexpr Dynamic controlAccent{0xFF0A6CDB, 0xFF1C70DC};
/// The accent as a text on the window's ground.
inline constexpr Dynamic link{0xFF0A62C9, 0xFF5AA9FF};
inline constexpr Dynamic systemGreen{0xFF1E7B34, 0xFF30D158};
inline constexpr Dynamic systemRed{0xFFC9001A, 0xFFFF6961};
inline constexpr Dynamic systemOrange{0xFFB25000, 0xFFFFB340};
/// The ground of windows, and that of fields and lists.
inline constexpr Dynamic window{0xFFF4F4F5, 0xFF262628};
inline constexpr Dynamic field{0xFFFFFFFF, 0xFF1C1C1E};
/// The ground of a panel that floats over other windows.
[[nodiscard]] QColor toast(bool translucent);

}  // namespace colors

/// The colours of the whole user interface for one appearance.
[[nodiscard]] QPalette systemPalette(ColorScheme scheme);

}  // namespace kestrelbay
