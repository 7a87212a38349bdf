#pragma once

class QFont;
class QString;

namespace kestrelbay {

/// The font, or where the text would be wider than `width` (in device-independent
/// pixels) the largest smaller one in which it is not. Never below 10 pixels.
[[nodiscard]] QFont fittingFont(const QString &text, QFont font, int width);

}  // namespace kestrelbay
