#include "platform/macos/applications/MacWindowElement.h"

#include "platform/macos/cocoa/Strings.h"

namespace kestrelbay {

namespace {

/// Nothing on every error.
CFOwner<CFTypeRef> copyAttribute(AXUIElementRef element, CFStringRef name) {
    CFTypeRef value = nullptr;
    if (AXUIElementCopyAttributeValue(element, name, &value) != kAXErrorSuccess)
        return {};
    return CFOwner<CFTypeRef>(value);
}

bool setAttribute(AXUIElementRef element, CFStringRef name, bool value) {
    return AXUIElementSetAttributeValue(element, name, value ? kCFBooleanTrue : kCFBooleanFalse) ==
           kAXErrorSuccess;
}

}  // namespace

std::vector<std::unique_ptr<WindowElement>> MacWindowElement::ofProcess(ProcessIdentifier process) {
    if (process < ProcessIdentifier{1})
        return {};
    const CFOwner<AXUIElementRef> application(
        AXUIElementCreateApplication(static_cast<pid_t>(process)));
    if (!application)
        return {};
    const CFOwner<CFTypeRef> value = copyAttribute(application.get(), CFSTR("AXWindows"));
    const auto *const array = cfCast<CFArrayRef>(value.get(), CFArrayGetTypeID());
    if (!array)
        return {};
    std::vector<std::unique_ptr<WindowElement>> windows;
    const CFIndex count = CFArrayGetCount(array);
    for (CFIndex i = 0; i < count; ++i) {
        const auto *const element =
            cfCast<AXUIElementRef>(CFArrayGetValueAtIndex(array, i), AXUIElementGetTypeID());
        if (!element)
            return {};
        windows.push_back(
            std::make_unique<MacWindowElement>(CFOwner<AXUIElementRef>::retained(element)));
    }
    return windows;
}

std::optional<QString> MacWindowElement::subrole() const {
    const CFOwner<CFTypeRef> value = copyAttribute(element_.get(), CFSTR("AXSubrole"));
    const auto *const text = cfCast<CFStringRef>(value.get(), CFStringGetTypeID());
    return text ? std::optional(toQString(text)) : std::nullopt;
}

std::optional<bool> MacWindowElement::isMinimized() const {
    const CFOwner<CFTypeRef> value = copyAttribute(element_.get(), CFSTR("AXMinimized"));
    const auto *const flag = cfCast<CFBooleanRef>(value.get(), CFBooleanGetTypeID());
    return flag ? std::optional<bool>(CFBooleanGetValue(flag)) : std::nullopt;
}

bool MacWindowElement::setMinimized(bool minimized) {
    return setAttribute(element_.get(), CFSTR("AXMinimized"), minimized);
}

bool MacWindowElement::setMain() {
    return setAttribute(element_.get(), CFSTR("AXMain"), true);
}

bool MacWindowElement::setFocused() {
    return setAttribute(element_.get(), CFSTR("AXFocused"), true);
}

bool MacWindowElement::raise() {
    return AXUIElementPerformAction(element_.get(), CFSTR("AXRaise")) == kAXErrorSuccess;
}

}  // namespace kestrelbay
