#pragma once

// Stands for <Foundation/NSProcessInfo.h>: what GNUstep's lacks.

#include_next <Foundation/NSProcessInfo.h>

typedef struct {
    NSInteger majorVersion;
    NSInteger minorVersion;
    NSInteger patchVersion;
} NSOperatingSystemVersion;

@interface NSProcessInfo (KestrelBayVersions)
- (BOOL)isOperatingSystemAtLeastVersion:(NSOperatingSystemVersion)version;
@end
