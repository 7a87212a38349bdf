#include "platform/macos/SessionWatch.h"

#import <AppKit/NSWorkspace.h>
#import <Foundation/Foundation.h>

#include <utility>

#include "platform/macos/cocoa/ObjCOwner.h"

@interface KestrelBaySessionObserver : NSObject {
@public
    const std::function<void()> *_userIsBack;
}
@end

@implementation KestrelBaySessionObserver
- (void)userIsBack:(NSNotification *)__attribute__((unused))notification {
    (*_userIsBack)();
}
@end

namespace kestrelbay {

struct SessionWatch::Observer {
    std::function<void()> userIsBack;
    ObjCOwner<KestrelBaySessionObserver *> object{[[KestrelBaySessionObserver alloc] init]};
};

SessionWatch::SessionWatch(std::function<void()> userIsBack)
    : observer_(new Observer{std::move(userIsBack)}) {
    @autoreleasepool {
        observer_->object.get()->_userIsBack = &observer_->userIsBack;
        NSNotificationCenter *const center = [[NSWorkspace sharedWorkspace] notificationCenter];
        for (NSNotificationName const name :
             {NSWorkspaceDidWakeNotification, NSWorkspaceScreensDidWakeNotification,
              NSWorkspaceSessionDidBecomeActiveNotification})
            [center addObserver:observer_->object.get()
                       selector:@selector(userIsBack:)
                           name:name
                         object:nil];
    }
}

SessionWatch::~SessionWatch() {
    @autoreleasepool {
        [[[NSWorkspace sharedWorkspace] notificationCenter] removeObserver:observer_->object.get()];
    }
}

}  // namespace kestrelbay
