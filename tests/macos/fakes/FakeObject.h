#pragma once

#import <Foundation/Foundation.h>

namespace kestrelbay::macos {

/// For fakes of the system's own classes, which are derived from its own.
void objectWasMade();
void objectIsGone();

}  // namespace kestrelbay::macos

/// Counted by liveObjects().
@interface FakeObject : NSObject
@end
