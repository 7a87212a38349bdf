#pragma once

#include <utility>

#include <CoreFoundation/CoreFoundation.h>

namespace kestrelbay {

/// Owns one reference to a Core Foundation object, or nothing. T is the reference
/// type, such as CFStringRef.
template <typename T>
class CFOwner {
public:
    CFOwner() = default;
    /// Takes over a reference that the caller has: the result of a function with
    /// Create or Copy in its name.
    explicit CFOwner(T object) : object_(object) {}
    /// Owns a reference of its own beside the caller's: for results of Get functions.
    [[nodiscard]] static CFOwner retained(T object) {
        if (object)
            CFRetain(object);
        return CFOwner(object);
    }

    CFOwner(const CFOwner &other) : CFOwner(retained(other.object_)) {}
    CFOwner(CFOwner &&other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    CFOwner &operator=(CFOwner other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~CFOwner() {
        if (object_)
            CFRelease(object_);
    }

    [[nodiscard]] T get() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

private:
    T object_ = nullptr;
};

/// The object as a reference of another type; null when it is not of that type.
/// The type is asked for as CFStringGetTypeID() gives it.
template <typename T>
[[nodiscard]] T cfCast(CFTypeRef object, CFTypeID type) {
    return object && CFGetTypeID(object) == type ? static_cast<T>(object) : nullptr;
}

}  // namespace kestrelbay
