#pragma once

#include <CoreFoundation/CoreFoundation.h>
#import <Foundation/Foundation.h>

namespace kestrelbay::macos {

// In the fakes every Core Foundation object is a Foundation object.

template <typename T>
T cf(id object) {
    return static_cast<T>(static_cast<void *>(object));
}

template <typename T = id>
T ns(CFTypeRef object) {
    return static_cast<T>(static_cast<id>(const_cast<void *>(object)));
}

/// What the object is created with belongs to the caller, as from all Create functions.
template <typename T>
T created(id object) {
    return cf<T>([object retain]);
}

/// Of an object that is an instance of the class or of one derived from it.
inline CFTypeID typeID(Class type) {
    return reinterpret_cast<CFTypeID>(type);
}

}  // namespace kestrelbay::macos
