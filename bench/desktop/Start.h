#pragma once

#include <QString>

#include "desktop/session/Desktop.h"

namespace kestrelbay::bench {

/// Prints how long programs take from their exec until their hotkeys are grabbed, and what memory
/// is their own at rest, with no window ever opened: KestrelBay with few and many rules and in a
/// home that has nothing but rules, beside sxhkd. Throws std::runtime_error.
void measureStart(desktop::Desktop &desktop, const QString &kestrelbay);

}  // namespace kestrelbay::bench
