#pragma once

#include <QString>
#include <QUrl>

#import <Foundation/Foundation.h>

namespace kestrelbay {

/// Autoreleased.
[[nodiscard]] NSString *toNSString(const QString &text);

/// Empty for nil.
[[nodiscard]] QString toQString(NSString *text);

/// Autoreleased; nil when it is none, or none to the system.
[[nodiscard]] NSURL *toNSURL(const QUrl &url);

}  // namespace kestrelbay
