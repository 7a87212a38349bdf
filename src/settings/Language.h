#pragma once

#include <cstdint>

#include <QString>

namespace kestrelbay {

class UserDefaults;

/// A language of the user interface.
class Language {
public:
    enum Value : std::uint8_t {
        zh,  ///< Simplified Chinese
        en,
    };

    constexpr Language(Value value) : value_(value) {}  // NOLINT(google-explicit-constructor)

    /// The language in force, resolved afresh at every call. Anything but exactly
    /// "zh" is English; the system's own language is left out on purpose.
    [[nodiscard]] static Language current(const UserDefaults &defaults);

    /// The same from the settings last given to setDefaults(); English without any.
    /// Main thread.
    [[nodiscard]] static Language current();

    /// Texts are resolved in every corner of the user interface, so this one source
    /// is shared. Null takes it away, as whoever owns it has to before it goes.
    static void setDefaults(const UserDefaults *defaults);

    /// The text that is stored, "zh" or "en".
    [[nodiscard]] QString rawValue() const;

    constexpr bool operator==(const Language &) const = default;

private:
    Value value_;
};

}  // namespace kestrelbay
