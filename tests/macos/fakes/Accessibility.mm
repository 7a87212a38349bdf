#include "fakes/Accessibility.h"

#include "fakes/Bridge.h"
#include "fakes/FakeDesktop.h"
#import "fakes/FakeObject.h"
#include "fakes/MacJournal.h"
#include "platform/macos/cocoa/Strings.h"

using namespace kestrelbay;
using namespace kestrelbay::macos;

@interface FakeElement : FakeObject {
@public
    /// Empty for the element of an application.
    QString _name;
    pid_t _pid;
}
@end

@implementation FakeElement
@end

namespace {

FakeElement *fake(AXUIElementRef element) {
    return ns<FakeElement *>(element);
}

/// Names the call in the journal; what it is to come back with.
AXError begin(const char *call, AXUIElementRef element, CFStringRef name, const QString &value) {
    const QString target = fake(element)->_name.isEmpty() ? QString::number(fake(element)->_pid)
                                                          : fake(element)->_name;
    record(QLatin1StringView(call) + u' ' + target + u' ' + toQString(name) + value);
    FakeDesktop &desktop = FakeDesktop::shared();
    if (fake(element)->_name.isEmpty()) {
        const auto *const process = desktop.process(fake(element)->_pid);
        return process ? process->windowsError : kAXErrorCannotComplete;
    }
    const auto *const window = desktop.window(element);
    if (!window)
        return kAXErrorInvalidUIElement;
    const auto error = window->errors.find(toQString(name));
    return error == window->errors.end() ? kAXErrorSuccess : error->second;
}

id windowsOf(const FakeDesktop::Process &process) {
    if (process.windowsValue)
        return process.windowsValue->get();
    NSMutableArray *const elements = [NSMutableArray array];
    for (const auto &window : process.windows)
        [elements addObject:fake(window.element.get())];
    return elements;
}

/// The front-most window of an application is its main one.
void makeMain(AXUIElementRef element) {
    FakeDesktop::Process &process = *FakeDesktop::shared().process(fake(element)->_pid);
    const auto found = std::ranges::find_if(
        process.windows, [&](const auto &window) { return window.element.get() == element; });
    std::rotate(process.windows.begin(), found, std::next(found));
}

}  // namespace

CFOwner<AXUIElementRef> kestrelbay::macos::makeElement(const QString &name, pid_t pid) {
    FakeElement *const element = [[FakeElement alloc] init];
    element->_name = name;
    element->_pid = pid;
    return CFOwner(cf<AXUIElementRef>(element));
}

CFTypeID AXUIElementGetTypeID() {
    return typeID([FakeElement class]);
}

AXUIElementRef AXUIElementCreateApplication(pid_t pid) {
    record(QStringLiteral("AXUIElementCreateApplication %1").arg(pid));
    FakeElement *const element = [[FakeElement alloc] init];
    element->_pid = pid;
    return cf<AXUIElementRef>(element);
}

AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                      CFTypeRef *value) {
    const std::scoped_lock lock(FakeDesktop::shared().mutex());
    const AXError error = begin("AXUIElementCopyAttributeValue", element, attribute, {});
    if (error != kAXErrorSuccess) {
        // Nobody promises that it is left alone.
        *value = cf<CFTypeRef>(@"not a value");
        return error;
    }
    FakeDesktop &desktop = FakeDesktop::shared();
    id object = nil;
    if (!fake(element)->_name.isEmpty()) {
        const auto &values = desktop.window(element)->values;
        const auto found = values.find(toQString(attribute));
        object = found == values.end() ? nil : found->second.get();
    } else if (toQString(attribute) == QStringLiteral("AXWindows")) {
        object = windowsOf(*desktop.process(fake(element)->_pid));
    }
    if (!object)
        return kAXErrorNoValue;
    *value = created<CFTypeRef>(object);
    return kAXErrorSuccess;
}

AXError AXUIElementSetAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                     CFTypeRef value) {
    const std::scoped_lock lock(FakeDesktop::shared().mutex());
    const bool isTrue = CFBooleanGetValue(static_cast<CFBooleanRef>(value));
    const AXError error = begin("AXUIElementSetAttributeValue", element, attribute,
                                isTrue ? QStringLiteral(" true") : QStringLiteral(" false"));
    if (error != kAXErrorSuccess)
        return error;
    FakeDesktop::shared().window(element)->values[toQString(attribute)] =
        ObjCOwner<id>::retained(ns(value));
    if (toQString(attribute) == QStringLiteral("AXMain"))
        makeMain(element);
    return kAXErrorSuccess;
}

AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action) {
    const std::scoped_lock lock(FakeDesktop::shared().mutex());
    return begin("AXUIElementPerformAction", element, action, {});
}
