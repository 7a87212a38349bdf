#pragma once

// Stands for <AppKit/NSResponder.h>.

#import <Foundation/Foundation.h>

@interface NSResponder : NSObject
@end
