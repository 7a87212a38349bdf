#include "fakes/RunningApplications.h"

#import <AppKit/NSRunningApplication.h>

#include <mutex>

#include "fakes/FakeDesktop.h"
#import "fakes/FakeObject.h"
#include "fakes/MacJournal.h"

using kestrelbay::macos::FakeDesktop;
using kestrelbay::macos::record;

namespace {

/// Empty when it has gone.
FakeDesktop::Process processOf(pid_t pid) {
    const std::scoped_lock lock(FakeDesktop::shared().mutex());
    const auto *const process = FakeDesktop::shared().process(pid);
    return process ? *process : FakeDesktop::Process();
}

}  // namespace

@interface NSRunningApplication (Fake)
- (instancetype)initWithProcess:(pid_t)pid;
@end

@implementation NSRunningApplication

- (instancetype)initWithProcess:(pid_t)pid {
    self = [super init];
    if (self) {
        pid_ = pid;
        kestrelbay::macos::objectWasMade();
    }
    return self;
}

- (void)dealloc {
    kestrelbay::macos::objectIsGone();
    [super dealloc];
}

- (NSURL *)bundleURL {
    return [[processOf(pid_).bundleURL.get() retain] autorelease];
}

- (NSString *)bundleIdentifier {
    return [[processOf(pid_).bundleIdentifier.get() retain] autorelease];
}

- (pid_t)processIdentifier {
    return pid_;
}

- (BOOL)isActive {
    const std::scoped_lock lock(FakeDesktop::shared().mutex());
    auto *const process = FakeDesktop::shared().process(pid_);
    if (process && process->looksLeft && (*process->looksLeft)-- == 0)
        FakeDesktop::shared().activate(*process);
    return process && process->isActive;
}

- (BOOL)isTerminated {
    const std::scoped_lock lock(FakeDesktop::shared().mutex());
    return !FakeDesktop::shared().process(pid_);
}

- (BOOL)hide {
    record(QStringLiteral("hide %1").arg(pid_));
    const std::scoped_lock lock(FakeDesktop::shared().mutex());
    auto *const process = FakeDesktop::shared().process(pid_);
    if (!process || !process->acceptsRequests)
        return NO;
    process->isActive = false;
    return YES;
}

- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options {
    record(QStringLiteral("activateWithOptions %1 %2").arg(pid_).arg(options));
    const std::scoped_lock lock(FakeDesktop::shared().mutex());
    auto *const process = FakeDesktop::shared().process(pid_);
    if (!process || !process->acceptsRequests)
        return NO;
    process->looksLeft = process->looksUntilActive;
    if (process->looksLeft == 0)
        FakeDesktop::shared().activate(*process);
    return YES;
}

@end

NSArray *kestrelbay::macos::makeRunningApplications() {
    const std::scoped_lock lock(FakeDesktop::shared().mutex());
    NSMutableArray *const applications = [NSMutableArray array];
    for (const auto &process : FakeDesktop::shared().processes())
        [applications
            addObject:[[[NSRunningApplication alloc] initWithProcess:process->pid] autorelease]];
    return applications;
}
