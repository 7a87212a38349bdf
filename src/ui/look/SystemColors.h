#pragma once

#include <functional>
#include <optional>

#include <QColor>

#include "platform/SystemSettings.h"

class QPalette;

namespace kestrelbay {

class SystemTints;

/// Colours by what they mean, in the appearance in force. They come from the palette, whoever
/// has set it, so whoever keeps one has to ask again at QEvent::PaletteChange. Main thread.
namespace colors {

/// One of the colours below, or what is made of one; to be asked again whenever it is drawn.
using Function = std::function<QColor()>;

/// Is the user interface light on dark just now?
[[nodiscard]] bool isDark();
/// Has the user asked for more contrast?
[[nodiscard]] bool isContrastHigh();

[[nodiscard]] QColor label();
[[nodiscard]] QColor secondaryLabel();
[[nodiscard]] QColor tertiaryLabel();
[[nodiscard]] QColor separator();
/// Behind what is selected or is the default, and the text on it.
[[nodiscard]] QColor controlAccent();
[[nodiscard]] QColor onAccent();
/// The accent as the line that shows where the keyboard is; in high contrast one that is clearly
/// seen in windows and on buttons.
[[nodiscard]] QColor focusRing();
/// The accent as a text on the window's ground.
[[nodiscard]] QColor link();
[[nodiscard]] QColor systemGreen();
[[nodiscard]] QColor systemRed();
[[nodiscard]] QColor systemOrange();
/// The ground of windows, and that of fields and lists.
[[nodiscard]] QColor window();
[[nodiscard]] QColor field();
/// The ground of a panel that floats over other windows.
[[nodiscard]] QColor toast(bool translucent);

/// Takes effect on what is drawn next; a change of the palette has everything drawn.
void setContrastHigh(bool isHigh);
/// Where all but the grounds and label() are taken from; null for the palette and numbers of our
/// own. They have to be taken back before they go.
void setSystemTints(const SystemTints *tints);

}  // namespace colors

/// The colours of the whole user interface for one appearance. The accent is darkened as far as
/// white text on it needs.
[[nodiscard]] QPalette systemPalette(ColorScheme scheme, const std::optional<QColor> &accent = {},
                                     bool isContrastHigh = false);

}  // namespace kestrelbay
