#pragma once

// Stands for <Foundation/NSAppleEventManager.h>: what GNUstep's lacks.

#include_next <Foundation/NSAppleEventManager.h>

#include <CoreServices/CoreServices.h>

@interface NSAppleEventManager (KestrelBayHandlers)
+ (nonnull NSAppleEventManager *)sharedAppleEventManager;
- (void)setEventHandler:(nonnull id)handler
            andSelector:(nonnull SEL)handleEventSelector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID;
- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID;
@end
