#pragma once

#import <Foundation/Foundation.h>

namespace kestrelbay::macos {

/// One NSRunningApplication a process of the desktop, in their order. Autoreleased.
[[nodiscard]] NSArray *makeRunningApplications();

}  // namespace kestrelbay::macos
