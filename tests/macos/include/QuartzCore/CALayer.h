#pragma once

// Stands for <QuartzCore/CALayer.h>.

#import <Foundation/Foundation.h>

@interface CALayer : NSObject {
    CGFloat cornerRadius_;
    BOOL masksToBounds_;
}
@property CGFloat cornerRadius;
@property BOOL masksToBounds;
@end
