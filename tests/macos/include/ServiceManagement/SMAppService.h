#pragma once

// Stands for <ServiceManagement/SMAppService.h>.

#import <Foundation/Foundation.h>
#include <os/availability.h>

typedef enum SMAppServiceStatus : NSInteger {
    SMAppServiceStatusNotRegistered = 0,
    SMAppServiceStatusEnabled = 1,
    SMAppServiceStatusRequiresApproval = 2,
    SMAppServiceStatusNotFound = 3,
} SMAppServiceStatus;

API_AVAILABLE(macos(13.0))
@interface SMAppService : NSObject
+ (nonnull SMAppService *)mainAppService;
- (BOOL)registerAndReturnError:(NSError **_Nullable)error;
- (BOOL)unregisterAndReturnError:(NSError **_Nullable)error;
@property(readonly) SMAppServiceStatus status;
@end
