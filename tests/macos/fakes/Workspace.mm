#import <AppKit/NSRunningApplication.h>
#import <AppKit/NSWorkspace.h>

#include <Block.h>

#include "fakes/FakeDesktop.h"
#include "fakes/FakeImages.h"
#include "fakes/MacJournal.h"
#include "fakes/RunningApplications.h"
#include "platform/macos/cocoa/Strings.h"

using namespace kestrelbay;
using namespace kestrelbay::macos;

namespace {

using CompletionBlock = void (^)(NSRunningApplication *, NSError *);

QString text(NSURL *url) {
    return toQString([url path]);
}

QString textOf(NSWorkspaceOpenConfiguration *configuration) {
    QString line = [configuration createsNewApplicationInstance] ? QStringLiteral(" new")
                                                                 : QStringLiteral(" default");
    if (![configuration activates])
        line += QStringLiteral(" behind");
    for (NSString *argument in [configuration arguments])
        line += u'|' + toQString(argument);
    return line;
}

/// Brings a running application forward, unless a new instance is wanted.
bool reopen(NSURL *application, NSWorkspaceOpenConfiguration *configuration) {
    FakeDesktop &desktop = FakeDesktop::shared();
    const std::scoped_lock lock(desktop.mutex());
    auto *const process = desktop.process(application);
    if (!process || [configuration createsNewApplicationInstance])
        return false;
    if ([configuration activates])
        desktop.activate(*process);
    return true;
}

/// Launches, and tells the handler on another thread.
void launch(NSURL *application, NSWorkspaceOpenConfiguration *configuration,
            CompletionBlock handler) {
    FakeDesktop &desktop = FakeDesktop::shared();
    QString error = desktop.refusal();
    if (error.isEmpty() && !reopen(application, configuration) && !desktop.launch(application))
        error = QStringLiteral("There is no such application.");
    if (!handler)
        return;
    const CompletionBlock copy = Block_copy(handler);
    desktop.callLater([copy, error] {
        @autoreleasepool {
            NSDictionary *const info =
                [NSDictionary dictionaryWithObject:toNSString(error)
                                            forKey:NSLocalizedDescriptionKey];
            copy(nil, error.isEmpty() ? nil
                                      : [NSError errorWithDomain:NSCocoaErrorDomain
                                                            code:1
                                                        userInfo:info]);
            Block_release(copy);
        }
    });
}

}  // namespace

@implementation NSWorkspaceOpenConfiguration
@synthesize arguments = arguments_;
@synthesize activates = activates_;
@synthesize createsNewApplicationInstance = createsNewApplicationInstance_;

+ (instancetype)configuration {
    return [[[self alloc] init] autorelease];
}

- (instancetype)init {
    self = [super init];
    if (self)
        activates_ = YES;
    return self;
}

- (void)dealloc {
    [arguments_ release];
    [super dealloc];
}
@end

@implementation NSWorkspace
+ (NSWorkspace *)sharedWorkspace {
    static NSWorkspace *const workspace = [[NSWorkspace alloc] init];
    return workspace;
}

- (NSNotificationCenter *)notificationCenter {
    static NSNotificationCenter *const center = [[NSNotificationCenter alloc] init];
    return center;
}

- (NSArray *)runningApplications {
    return makeRunningApplications();
}

- (BOOL)openURL:(NSURL *)url {
    record(QStringLiteral("openURL ") + toQString([url absoluteString]));
    if (!FakeDesktop::shared().refusal().isEmpty())
        return NO;
    return ![url isFileURL] || FakeDesktop::shared().launch(url);
}

- (void)openURLs:(NSArray *)urls
    withApplicationAtURL:(NSURL *)applicationURL
           configuration:(NSWorkspaceOpenConfiguration *)configuration
       completionHandler:(CompletionBlock)completionHandler {
    QStringList files;
    for (NSURL *url in urls)
        files.append(text(url));
    record(QStringLiteral("openURLs ") + files.join(u'|') + QStringLiteral(" with ") +
           text(applicationURL) + textOf(configuration));
    launch(applicationURL, configuration, completionHandler);
}

- (void)openApplicationAtURL:(NSURL *)applicationURL
               configuration:(NSWorkspaceOpenConfiguration *)configuration
           completionHandler:(CompletionBlock)completionHandler {
    record(QStringLiteral("openApplicationAtURL ") + text(applicationURL) + textOf(configuration));
    launch(applicationURL, configuration, completionHandler);
}

- (BOOL)selectFile:(NSString *)fullPath inFileViewerRootedAtPath:(NSString *)rootFullPath {
    record(QStringLiteral("selectFile ") +
           (fullPath ? toQString(fullPath) : QStringLiteral("nil")) + QStringLiteral(" rootedAt ") +
           toQString(rootFullPath));
    return FakeDesktop::shared().refusal().isEmpty();
}

- (NSImage *)iconForFile:(NSString *)fullPath {
    record(QStringLiteral("iconForFile ") + toQString(fullPath));
    return [NSImage redImageWithSize:NSMakeSize(32, 32)];
}
@end
