#pragma once

#include <utility>

#import <Foundation/Foundation.h>

#if __has_feature(objc_arc)
#error "Owner types count references themselves; compile without ARC."
#endif

namespace kestrelbay {

/// Owns one reference to an Objective-C object, or nothing. T is the pointer type,
/// such as NSString *. Copies are retained, so a block may capture one by value.
template <typename T>
class ObjCOwner {
public:
    ObjCOwner() = default;
    /// Takes over a reference that the caller has: the result of alloc, new or copy.
    explicit ObjCOwner(T object) : object_(object) {}
    /// Owns a reference of its own: for all other results.
    [[nodiscard]] static ObjCOwner retained(T object) { return ObjCOwner([object retain]); }

    ObjCOwner(const ObjCOwner &other) : ObjCOwner(retained(other.object_)) {}
    ObjCOwner(ObjCOwner &&other) noexcept : object_(std::exchange(other.object_, nil)) {}
    ObjCOwner &operator=(ObjCOwner other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ObjCOwner() { [object_ release]; }

    [[nodiscard]] T get() const { return object_; }
    explicit operator bool() const { return object_ != nil; }

private:
    T object_ = nil;
};

}  // namespace kestrelbay
