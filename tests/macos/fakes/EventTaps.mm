#include "fakes/EventTaps.h"

#include <QString>

#include "fakes/Bridge.h"
#import "fakes/FakeObject.h"
#include "fakes/MacJournal.h"

using namespace kestrelbay::macos;

@interface FakeEvent : FakeObject {
@public
    std::int64_t _keyCode;
    CGEventFlags _flags;
    BOOL _isRepeat;
}
@end

@implementation FakeEvent
@end

@interface FakeMachPort : FakeObject {
@public
    CGEventMask _mask;
    CGEventTapCallBack _callback;
    void *_userInfo;
    BOOL _isEnabled;
    BOOL _isInvalid;
}
@end

@implementation FakeMachPort
@end

@interface FakeRunLoopSource : FakeObject {
@public
    FakeMachPort *_port;
}
@end

@implementation FakeRunLoopSource
- (void)dealloc {
    [_port release];
    [super dealloc];
}
@end

namespace {

EventTaps *current = nullptr;

// Only their addresses count.
const char kDefaultMode = 'd';
const char kCommonModes = 'c';
char kMainLoop = 'm';
char kCurrentLoop = 'c';

QString nameOf(CFRunLoopRef loop, CFRunLoopMode mode) {
    return (loop == CFRunLoopGetMain() ? QStringLiteral("main") : QStringLiteral("current")) +
           (mode == kCFRunLoopCommonModes ? QStringLiteral(" common") : QStringLiteral(" default"));
}

}  // namespace

const CFRunLoopMode kCFRunLoopDefaultMode = reinterpret_cast<CFRunLoopMode>(&kDefaultMode);
const CFRunLoopMode kCFRunLoopCommonModes = reinterpret_cast<CFRunLoopMode>(&kCommonModes);

namespace kestrelbay::macos {

EventTaps::EventTaps() {
    current = this;
}

EventTaps::~EventTaps() {
    current = nullptr;
}

EventTaps &EventTaps::shared() {
    return *current;
}

void EventTaps::disableSilently() {
    for (const CFRunLoopSourceRef source : sources_)
        ns<FakeRunLoopSource *>(source)->_port->_isEnabled = NO;
}

void EventTaps::withdrawPermission() {
    refuseTaps(true);
    refuseEnabling(true);
    disableSilently();
}

EventTaps::Fate EventTaps::post(CGEventType type, std::int64_t keyCode, CGEventFlags flags,
                                bool isRepeat) {
    FakeEvent *const event = [[FakeEvent alloc] init];
    event->_keyCode = keyCode;
    event->_flags = flags;
    event->_isRepeat = isRepeat;
    Fate fate = Fate::Unseen;
    const std::set<CFRunLoopSourceRef> sources = sources_;
    for (const CFRunLoopSourceRef source : sources) {
        FakeMachPort *const port = ns<FakeRunLoopSource *>(source)->_port;
        const bool tellsOfItself =
            type == kCGEventTapDisabledByTimeout || type == kCGEventTapDisabledByUserInput;
        if (tellsOfItself)
            port->_isEnabled = NO;
        else if (!port->_isEnabled || !(port->_mask & (CGEventMask{1} << type)))
            continue;
        [port retain];
        const CGEventRef sent = tellsOfItself ? nullptr : cf<CGEventRef>(event);
        fate = port->_callback(nullptr, type, sent, port->_userInfo) == sent ? Fate::Passed
                                                                             : Fate::Swallowed;
        [port release];
    }
    [event release];
    return fate;
}

EventTaps::Fate EventTaps::postTo(void *userInfo, CGEventType type, std::int64_t keyCode) {
    FakeEvent *const event = [[FakeEvent alloc] init];
    event->_keyCode = keyCode;
    const auto sent = cf<CGEventRef>(event);
    const Fate fate =
        newest_(nullptr, type, sent, userInfo) == sent ? Fate::Passed : Fate::Swallowed;
    [event release];
    return fate;
}

}  // namespace kestrelbay::macos

CFMachPortRef CGEventTapCreate(CGEventTapLocation tap, CGEventTapPlacement place,
                               CGEventTapOptions options, CGEventMask eventsOfInterest,
                               CGEventTapCallBack callback, void *userInfo) {
    record(QStringLiteral("CGEventTapCreate %1 %2 %3 0x%4")
               .arg(tap)
               .arg(place)
               .arg(options)
               .arg(eventsOfInterest, 0, 16));
    if (EventTaps::shared().areTapsRefused())
        return nullptr;
    EventTaps::shared().setNewest(callback);
    FakeMachPort *const port = [[FakeMachPort alloc] init];
    port->_mask = eventsOfInterest;
    port->_callback = callback;
    port->_userInfo = userInfo;
    EventTaps::shared().changeCount(1);
    return cf<CFMachPortRef>(port);
}

void CGEventTapEnable(CFMachPortRef tap, bool enable) {
    record(enable ? QStringLiteral("CGEventTapEnable true")
                  : QStringLiteral("CGEventTapEnable false"));
    auto *const port = ns<FakeMachPort *>(tap);
    port->_isEnabled = enable && !port->_isInvalid && !EventTaps::shared().isEnablingRefused();
}

bool CGEventTapIsEnabled(CFMachPortRef tap) {
    return ns<FakeMachPort *>(tap)->_isEnabled;
}

void CFMachPortInvalidate(CFMachPortRef port) {
    record(QStringLiteral("CFMachPortInvalidate"));
    auto *const fake = ns<FakeMachPort *>(port);
    if (!fake->_isInvalid)
        EventTaps::shared().changeCount(-1);
    fake->_isInvalid = YES;
    fake->_isEnabled = NO;
}

std::int64_t CGEventGetIntegerValueField(CGEventRef event, CGEventField field) {
    const FakeEvent *const read = ns<FakeEvent *>(event);
    constexpr std::int64_t kOfNoFieldThatIsRead = 1;
    return field == 9 ? read->_keyCode : field == 8 ? read->_isRepeat : kOfNoFieldThatIsRead;
}

CGEventFlags CGEventGetFlags(CGEventRef event) {
    return ns<FakeEvent *>(event)->_flags;
}

CFRunLoopSourceRef CFMachPortCreateRunLoopSource(CFAllocatorRef, CFMachPortRef port,
                                                 CFIndex order) {
    record(QStringLiteral("CFMachPortCreateRunLoopSource %1").arg(order));
    if (EventTaps::shared().areSourcesRefused())
        return nullptr;
    FakeRunLoopSource *const source = [[FakeRunLoopSource alloc] init];
    source->_port = [ns<FakeMachPort *>(port) retain];
    return cf<CFRunLoopSourceRef>(source);
}

CFRunLoopRef CFRunLoopGetMain() {
    return reinterpret_cast<CFRunLoopRef>(&kMainLoop);
}

CFRunLoopRef CFRunLoopGetCurrent() {
    return reinterpret_cast<CFRunLoopRef>(&kCurrentLoop);
}

void CFRunLoopAddSource(CFRunLoopRef loop, CFRunLoopSourceRef source, CFRunLoopMode mode) {
    record(QStringLiteral("CFRunLoopAddSource ") + nameOf(loop, mode));
    EventTaps::shared().sources().insert(source);
    CFRetain(source);
}

void CFRunLoopRemoveSource(CFRunLoopRef loop, CFRunLoopSourceRef source, CFRunLoopMode mode) {
    record(QStringLiteral("CFRunLoopRemoveSource ") + nameOf(loop, mode));
    if (EventTaps::shared().sources().erase(source) > 0)
        CFRelease(source);
}
