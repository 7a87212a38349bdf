#pragma once

#include <QString>

#include "platform/macos/cocoa/CFOwner.h"

namespace kestrelbay {

[[nodiscard]] CFOwner<CFStringRef> toCFString(const QString &text);

/// Empty for null.
[[nodiscard]] QString toQString(CFStringRef text);

}  // namespace kestrelbay
