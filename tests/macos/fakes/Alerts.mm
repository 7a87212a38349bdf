#include "fakes/FakeAlerts.h"

#import <AppKit/NSButton.h>
#import <AppKit/NSWindow.h>

#include <utility>

#include <Block.h>

#include "platform/macos/cocoa/ObjCOwner.h"
#include "platform/macos/cocoa/Strings.h"

using kestrelbay::ObjCOwner;
using kestrelbay::toNSString;
using kestrelbay::toQString;

namespace {

NSAlert *sheet = nil;
NSWindow *sheetParent = nil;
int modalAnswer = 0;
ObjCOwner<NSAlert *> modalAlert;

}  // namespace

@interface NSAlert (KestrelBayFake)
- (void)endWith:(NSModalResponse)response;
@end

@implementation NSAlert
@synthesize messageText = messageText_;
@synthesize informativeText = informativeText_;
@synthesize alertStyle = alertStyle_;
@synthesize window = window_;

- (instancetype)init {
    if ((self = [super init])) {
        buttons_ = [[NSMutableArray alloc] init];
        window_ = [[NSWindow alloc] init];
    }
    return self;
}

- (void)dealloc {
    [messageText_ release];
    [informativeText_ release];
    [buttons_ release];
    [window_ release];
    [super dealloc];
}

- (NSButton *)addButtonWithTitle:(NSString *)title {
    NSButton *const button = [[[NSButton alloc] init] autorelease];
    button.title = title;
    button.keyEquivalent = [buttons_ count] == 0 ? @"\r" : @"";
    [buttons_ addObject:button];
    return button;
}

- (NSModalResponse)runModal {
    modalAlert = ObjCOwner<NSAlert *>::retained(self);
    return NSAlertFirstButtonReturn + modalAnswer;
}

/// As the system does, the open sheet keeps its alert.
- (void)beginSheetModalForWindow:(NSWindow *)sheetWindow
               completionHandler:(void (^)(NSModalResponse))handler {
    completionHandler_ = Block_copy(handler);
    sheet = [self retain];
    sheetParent = sheetWindow;
}

- (void)endWith:(NSModalResponse)response {
    sheetParent = nil;
    const auto handler = completionHandler_;
    handler(response);
    Block_release(handler);
    std::exchange(sheet, nil);
    [self release];
}

- (NSArray *)shownButtons {
    return buttons_;
}
@end

@implementation NSWindow (NSWindowSheets)
- (NSWindow *)sheetParent {
    return sheet && sheet.window == self ? sheetParent : nil;
}

- (void)endSheet:(NSWindow *)window {
    constexpr NSModalResponse kStop = -1000;
    if (sheet && sheet.window == window && sheetParent == self)
        [sheet endWith:kStop];
}
@end

namespace kestrelbay::macos {

QStringList contentOf(NSAlert *alert) {
    QStringList content{QStringLiteral("style %1").arg(alert.alertStyle),
                        toQString(alert.messageText), toQString(alert.informativeText)};
    for (NSButton *button in [alert performSelector:@selector(shownButtons)]) {
        QString words = toQString(button.title);
        if ([button.keyEquivalent isEqualToString:@"\r"])
            words += QStringLiteral(" Return");
        if ([button.keyEquivalent isEqualToString:@"\033"])
            words += QStringLiteral(" Escape");
        if (button.hasDestructiveAction)
            words += QStringLiteral(" destructive");
        content.append(words);
    }
    return content;
}

NSAlert *openSheet() {
    return sheet;
}

void pressInSheet(int button) {
    [sheet endWith:NSAlertFirstButtonReturn + button];
}

void setModalAnswer(int button) {
    modalAnswer = button;
}

NSAlert *lastModalAlert() {
    return modalAlert.get();
}

}  // namespace kestrelbay::macos
