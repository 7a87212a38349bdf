#include <CoreFoundation/CFBundle.h>
#import <Foundation/Foundation.h>

#include <objc/runtime.h>

#include "fakes/Bridge.h"
#include "fakes/Bundles.h"
#include "fakes/MacJournal.h"
#include "platform/macos/cocoa/Strings.h"

using namespace kestrelbay;
using namespace kestrelbay::macos;

CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef, CFStringRef filePath,
                                       CFURLPathStyle pathStyle, Boolean isDirectory) {
    if (pathStyle != 0)
        return nullptr;
    return created<CFURLRef>([NSURL fileURLWithPath:ns<NSString *>(filePath)
                                        isDirectory:isDirectory]);
}

CFDictionaryRef CFBundleCopyInfoDictionaryInDirectory(CFURLRef bundleURL) {
    NSString *const path =
        [[ns<NSURL *>(bundleURL) path] stringByAppendingPathComponent:@"Contents/Info.plist"];
    return created<CFDictionaryRef>([NSDictionary dictionaryWithContentsOfFile:path]);
}

namespace {

NSString *displayName(id /*fileManager*/, SEL /*selector*/, NSString *path) {
    record(QStringLiteral("displayNameAtPath ") + toQString(path));
    return [@"Shown " stringByAppendingString:[path lastPathComponent]];
}

}  // namespace

void kestrelbay::macos::replaceDisplayNames() {
    method_setImplementation(
        class_getInstanceMethod([NSFileManager class], @selector(displayNameAtPath:)),
        // By way of the type that stands for any function: an IMP takes any arguments.
        reinterpret_cast<IMP>(reinterpret_cast<void (*)()>(&displayName)));
}
