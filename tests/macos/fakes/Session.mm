#include "fakes/Session.h"

#import <AppKit/NSWorkspace.h>
#include <Carbon/Carbon.h>

namespace {

bool isSecureInputOn = false;
int queries = 0;

}  // namespace

NSNotificationName NSWorkspaceDidWakeNotification = @"NSWorkspaceDidWakeNotification";
NSNotificationName NSWorkspaceScreensDidWakeNotification = @"NSWorkspaceScreensDidWakeNotification";
NSNotificationName NSWorkspaceSessionDidBecomeActiveNotification =
    @"NSWorkspaceSessionDidBecomeActiveNotification";

Boolean IsSecureEventInputEnabled() {
    ++queries;
    return isSecureInputOn;
}

namespace kestrelbay::macos {

void userReturns(Return how) {
    NSString *const name = how == Return::MachineWakes ? NSWorkspaceDidWakeNotification
                           : how == Return::ScreensWake
                               ? NSWorkspaceScreensDidWakeNotification
                               : NSWorkspaceSessionDidBecomeActiveNotification;
    [[[NSWorkspace sharedWorkspace] notificationCenter] postNotificationName:name object:nil];
}

void setSecureInput(bool isOn) {
    isSecureInputOn = isOn;
}

int secureInputQueries() {
    return queries;
}

}  // namespace kestrelbay::macos
