#pragma once

#include <QString>
#include <QUrl>

#import <Foundation/Foundation.h>

#include "platform/macos/cocoa/CFOwner.h"

namespace kestrelbay {

/// Autoreleased.
[[nodiscard]] NSString *_Nonnull toNSString(const QString &text);
[[nodiscard]] CFOwner<CFStringRef> toCFString(const QString &text);

// Empty for nil or null.
[[nodiscard]] QString toQString(NSString *_Nullable text);
[[nodiscard]] QString toQString(CFStringRef _Nullable text);

/// Autoreleased; nil when it is not the URL of a file.
[[nodiscard]] NSURL *_Nullable toNSURL(const QUrl &file);

}  // namespace kestrelbay
