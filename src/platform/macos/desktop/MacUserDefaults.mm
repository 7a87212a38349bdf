#include "platform/macos/desktop/MacUserDefaults.h"

#import <Foundation/Foundation.h>

#include "platform/macos/cocoa/CFOwner.h"
#include "platform/macos/cocoa/Strings.h"

namespace kestrelbay {

namespace {

id valueOf(const QString &key) {
    return [[NSUserDefaults standardUserDefaults] objectForKey:toNSString(key)];
}

void store(id value, const QString &key) {
    [[NSUserDefaults standardUserDefaults] setObject:value forKey:toNSString(key)];
}

}  // namespace

std::optional<QString> MacUserDefaults::string(const QString &key) const {
    @autoreleasepool {
        const id value = valueOf(key);
        if (![value isKindOfClass:[NSString class]])
            return std::nullopt;
        return toQString(static_cast<NSString *>(value));
    }
}

std::optional<bool> MacUserDefaults::boolean(const QString &key) const {
    @autoreleasepool {
        const id value = valueOf(key);
        // The defaults' own -boolForKey: would read texts and numbers as Booleans.
        const auto *const boolean = cfCast<CFBooleanRef>(value, CFBooleanGetTypeID());
        if (!boolean)
            return std::nullopt;
        return CFBooleanGetValue(boolean) != 0;
    }
}

void MacUserDefaults::setString(const QString &key, const QString &value) {
    @autoreleasepool {
        store(toNSString(value), key);
    }
}

void MacUserDefaults::setBoolean(const QString &key, bool value) {
    @autoreleasepool {
        store([NSNumber numberWithBool:value], key);
    }
}

}  // namespace kestrelbay
