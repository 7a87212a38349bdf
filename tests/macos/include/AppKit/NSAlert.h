#pragma once

// Stands for <AppKit/NSAlert.h> and, of <AppKit/NSApplication.h>, NSModalResponse.

#import <Foundation/Foundation.h>

@class NSButton;
@class NSWindow;

typedef NSInteger NSModalResponse;
static const NSModalResponse NSAlertFirstButtonReturn = 1000;

typedef enum NSAlertStyle : NSUInteger {
    NSAlertStyleWarning = 0,
    NSAlertStyleInformational = 1,
    NSAlertStyleCritical = 2,
} NSAlertStyle;

@interface NSAlert : NSObject {
    NSString *messageText_;
    NSString *informativeText_;
    NSAlertStyle alertStyle_;
    NSMutableArray *buttons_;
    NSWindow *window_;
    void (^completionHandler_)(NSModalResponse);
}
@property(copy, nonnull) NSString *messageText;
@property(copy, nonnull) NSString *informativeText;
@property NSAlertStyle alertStyle;
@property(readonly, strong, nonnull) NSWindow *window;
- (nonnull NSButton *)addButtonWithTitle:(nonnull NSString *)title;
- (NSModalResponse)runModal;
- (void)beginSheetModalForWindow:(nonnull NSWindow *)sheetWindow
               completionHandler:(void (^_Nullable)(NSModalResponse returnCode))handler;
@end
