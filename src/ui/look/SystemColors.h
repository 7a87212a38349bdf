#pragma once

#include <cstdint>

#include <QColor>

class QPalette;

namespace kestrelbay {

enum class ColorScheme : std::uint8_t;

/// Colours by what they mean. They come out for the appearance in force at each
/// call, so whoever keeps one has to ask again at QEvent::PaletteChange.
namespace colors {

/// One of the colours below, to be asked again whenever it is drawn.
using Function = QColor (*)();

/// Is the user interface light on dark just now?
[[nodiscard]] bool isDark();

[[nodiscard]] QColor label();
[[nodiscard]] QColor secondaryLabel();
[[nodiscard]] QColor tertiaryLabel();
[[nodiscard]] QColor separator();
/// Behind what is selected or is the default; white text stands on it.
[[nodiscard]] QColor controlAccent();
/// The accent as a text on the window's ground.
[[nodiscard]] QColor link();
[[nodiscard]] QColor systemGreen();
[[nodiscard]] QColor systemRed();
[[nodiscard]] QColor systemOrange();
/// The ground of windows, and that of fields and lists.
[[nodiscard]] QColor window();
[[nodiscard]] QColor field();
/// The ground of a panel that floats over other windows.
[[nodiscard]] QColor hud(bool translucent);

}  // namespace colors

/// The colours of the whole user interface for one appearance.
[[nodiscard]] QPalette systemPalette(ColorScheme scheme);

}  // namespace kestrelbay
