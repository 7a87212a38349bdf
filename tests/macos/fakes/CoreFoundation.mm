#include <CoreFoundation/CoreFoundation.h>
#import <Foundation/Foundation.h>
#include <objc/message.h>
#include <objc/runtime.h>

#include "fakes/Bridge.h"

using kestrelbay::macos::cf;
using kestrelbay::macos::created;
using kestrelbay::macos::ns;
using kestrelbay::macos::typeID;

namespace {

/// Message expressions do not work before this file's part of the runtime is set up,
/// which is after the constants are.
CFBooleanRef boolean(BOOL value) {
    const SEL allocate = sel_registerName("alloc");
    const SEL initialise = sel_registerName("initWithBool:");
    const id type = objc_getClass("NSNumber");
    const id object =
        reinterpret_cast<id (*)(id, SEL)>(objc_msg_lookup(type, allocate))(type, allocate);
    return cf<CFBooleanRef>(reinterpret_cast<id (*)(id, SEL, BOOL)>(
        objc_msg_lookup(object, initialise))(object, initialise, value));
}

}  // namespace

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFBooleanRef kCFBooleanTrue = boolean(YES);
const CFBooleanRef kCFBooleanFalse = boolean(NO);

CFTypeRef CFRetain(CFTypeRef object) {
    return cf<CFTypeRef>([ns(object) retain]);
}

void CFRelease(CFTypeRef object) {
    [ns(object) release];
}

CFTypeID CFGetTypeID(CFTypeRef object) {
    if ([ns(object) isKindOfClass:[ns(kCFBooleanTrue) class]])
        return CFBooleanGetTypeID();
    for (Class type in @[ [NSString class], [NSArray class], [NSDictionary class] ])
        if ([ns(object) isKindOfClass:type])
            return typeID(type);
    return typeID([ns(object) class]);
}

CFTypeID CFStringGetTypeID() {
    return typeID([NSString class]);
}

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar *characters,
                                         CFIndex length) {
    return created<CFStringRef>([NSString stringWithCharacters:characters
                                                        length:static_cast<NSUInteger>(length)]);
}

CFIndex CFStringGetLength(CFStringRef string) {
    return static_cast<CFIndex>(ns<NSString *>(string).length);
}

void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar *buffer) {
    [ns<NSString *>(string) getCharacters:buffer
                                    range:NSMakeRange(static_cast<NSUInteger>(range.location),
                                                      static_cast<NSUInteger>(range.length))];
}

CFStringRef kestrelbayConstantString(const char *text) {
    static NSMutableDictionary *const strings = [[NSMutableDictionary alloc] init];
    @autoreleasepool {
        @synchronized(strings) {
            NSString *const key = @(text);
            if (![strings objectForKey:key])
                [strings setObject:key forKey:key];
            return cf<CFStringRef>([strings objectForKey:key]);
        }
    }
}

CFTypeID CFBooleanGetTypeID() {
    return typeID([ns(kCFBooleanTrue) class]);
}

Boolean CFBooleanGetValue(CFBooleanRef boolean) {
    return static_cast<Boolean>(ns<NSNumber *>(boolean).boolValue);
}

CFTypeID CFArrayGetTypeID() {
    return typeID([NSArray class]);
}

CFIndex CFArrayGetCount(CFArrayRef array) {
    return static_cast<CFIndex>(ns<NSArray *>(array).count);
}

const void *CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    return cf<const void *>([ns<NSArray *>(array) objectAtIndex:static_cast<NSUInteger>(index)]);
}

CFTypeID CFDictionaryGetTypeID() {
    return typeID([NSDictionary class]);
}

const void *CFDictionaryGetValue(CFDictionaryRef dictionary, const void *key) {
    return cf<const void *>([ns<NSDictionary *>(dictionary) objectForKey:ns(key)]);
}
