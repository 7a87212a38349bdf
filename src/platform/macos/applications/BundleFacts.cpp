#include "platform/macos/applications/BundleFacts.h"

#include "platform/macos/cocoa/CFOwner.h"
#include "platform/macos/cocoa/CFStrings.h"

namespace kestrelbay {

namespace {

/// Null for a file that is no bundle.
CFOwner<CFDictionaryRef> readInformation(const QString &path) {
    const CFOwner<CFURLRef> url(CFURLCreateWithFileSystemPath(
        kCFAllocatorDefault, toCFString(path).get(), kCFURLPOSIXPathStyle, true));
    return url ? CFOwner<CFDictionaryRef>(CFBundleCopyInfoDictionaryInDirectory(url.get()))
               : CFOwner<CFDictionaryRef>();
}

/// Both spellings are in use.
bool isTrue(CFTypeRef value) {
    if (const auto *const flag = cfCast<CFBooleanRef>(value, CFBooleanGetTypeID()))
        return CFBooleanGetValue(flag);
    return toQString(cfCast<CFStringRef>(value, CFStringGetTypeID())) == u'1';
}

}  // namespace

bool isBundleForUsers(const QString &path) {
    const CFOwner<CFDictionaryRef> information = readInformation(path);
    if (!information)
        return false;
    const auto value = [&information](CFStringRef key) {
        return CFDictionaryGetValue(information.get(), key);
    };
    if (isTrue(value(CFSTR("LSUIElement"))) || isTrue(value(CFSTR("LSBackgroundOnly"))))
        return false;
    return value(CFSTR("CFBundleIconFile")) || value(CFSTR("CFBundleIconName")) ||
           cfCast<CFDictionaryRef>(value(CFSTR("CFBundleIcons")), CFDictionaryGetTypeID());
}

}  // namespace kestrelbay
