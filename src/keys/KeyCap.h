#pragma once

#include <QString>

namespace kestrelbay {

/// What a key is called by, of the characters that it types without and with Shift: a letter's
/// capital, a digit even where it takes Shift, otherwise the first. Empty for a key that types
/// nothing visible.
[[nodiscard]] QString keyCap(const QString &plain, const QString &shifted);

}  // namespace kestrelbay
