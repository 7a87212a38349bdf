#include "fakes/AppleEvents.h"

#import <AppKit/NSApplication.h>
#import <Foundation/NSAppleEventManager.h>

#include <map>
#include <utility>

namespace {

struct Handler {
    id target;
    SEL selector;
};

/// As the system does, by the weak pointers of those that are called.
std::map<std::pair<AEEventClass, AEEventID>, Handler> handlers;

}  // namespace

NSNotificationName NSApplicationWillFinishLaunchingNotification =
    @"NSApplicationWillFinishLaunchingNotification";

@implementation NSAppleEventManager (KestrelBayHandlers)
+ (NSAppleEventManager *)sharedAppleEventManager {
    static NSAppleEventManager *const manager = [[NSAppleEventManager alloc] init];
    return manager;
}

- (void)setEventHandler:(id)handler
            andSelector:(SEL)handleEventSelector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID {
    handlers[{eventClass, eventID}] = {handler, handleEventSelector};
}

- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID {
    handlers.erase({eventClass, eventID});
}
@end

namespace kestrelbay::macos {

void beginLaunching() {
    handlers.clear();
    [[NSNotificationCenter defaultCenter]
        postNotificationName:NSApplicationWillFinishLaunchingNotification
                      object:nil];
}

bool sendAppleEvent(AEEventClass eventClass, AEEventID eventID) {
    const auto found = handlers.find({eventClass, eventID});
    if (found == handlers.end())
        return false;
    [found->second.target performSelector:found->second.selector withObject:nil withObject:nil];
    return true;
}

}  // namespace kestrelbay::macos
