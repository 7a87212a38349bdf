#include "platform/macos/desktop/MacReopening.h"

#import <AppKit/NSApplication.h>
#include <CoreServices/CoreServices.h>
#import <Foundation/NSAppleEventManager.h>

#include <utility>

@interface KestrelBayReopenObserver : NSObject {
@public
    std::function<void()> handler_;
}
- (void)applicationWillFinishLaunching:(NSNotification *)notification;
- (void)reopen:(NSAppleEventDescriptor *)event withReply:(NSAppleEventDescriptor *)reply;
@end

@implementation KestrelBayReopenObserver
/// AppKit has installed its own handler by now, in the place of any that was there; this one
/// takes its place.
- (void)applicationWillFinishLaunching:(NSNotification *)notification {
    [[NSAppleEventManager sharedAppleEventManager] setEventHandler:self
                                                       andSelector:@selector(reopen:withReply:)
                                                     forEventClass:kCoreEventClass
                                                        andEventID:kAEReopenApplication];
}

- (void)reopen:(NSAppleEventDescriptor *)event withReply:(NSAppleEventDescriptor *)reply {
    if (const auto handler = handler_)  // which may set another one
        handler();
}
@end

namespace kestrelbay {

static_assert(kCoreEventClass == 0x61657674 && kAEReopenApplication == 0x72617070);

MacReopening::MacReopening() : observer_([[KestrelBayReopenObserver alloc] init]) {
    @autoreleasepool {
        [[NSNotificationCenter defaultCenter]
            addObserver:observer_.get()
               selector:@selector(applicationWillFinishLaunching:)
                   name:NSApplicationWillFinishLaunchingNotification
                 object:nil];
    }
}

MacReopening::~MacReopening() {
    @autoreleasepool {
        [[NSNotificationCenter defaultCenter] removeObserver:observer_.get()];
        // Neither centre nor manager keeps those that it tells.
        [[NSAppleEventManager sharedAppleEventManager]
            removeEventHandlerForEventClass:kCoreEventClass
                                 andEventID:kAEReopenApplication];
    }
}

void MacReopening::setHandler(std::function<void()> handler) {
    observer_.get()->handler_ = std::move(handler);
}

}  // namespace kestrelbay
