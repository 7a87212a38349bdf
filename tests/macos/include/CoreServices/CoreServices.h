#pragma once

// Stands for <CoreServices/CoreServices.h>: of <AE/AEDataModel.h> and <AE/AppleEvents.h>.

#include <MacTypes.h>

typedef FourCharCode AEEventClass;
typedef FourCharCode AEEventID;

enum {
    kCoreEventClass = 'aevt',
};
enum {
    kAEReopenApplication = 'rapp',
};
