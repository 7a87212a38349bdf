#pragma once

#include <cstdint>

#include <QString>

#include "settings/SettingsKeys.h"

namespace kestrelbay {

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
    [[nodiscard]] static Language current(const UserDefaults &defaults) {
        return read(defaults, settings::kAppLanguage) == Language(zh).rawValue() ? zh : en;
    }

    /// The same from the settings last given to setDefaults(); English without any.
    /// Main thread.
    [[nodiscard]] static Language current() { return shared_ ? current(*shared_) : en; }

    /// Texts are resolved in every corner of the user interface, so this one source
    /// is shared. Null takes it away, as whoever owns it has to before it goes.
    static void setDefaults(const UserDefaults *defaults) { shared_ = defaults; }

    /// The text that is stored, "zh" or "en".
    [[nodiscard]] QString rawValue() const {
        return value_ == zh ? QStringLiteral("zh") : QStringLiteral("en");
    }

    constexpr bool operator==(const Language &) const = default;

private:
    static inline const UserDefaults *shared_ = nullptr;
    Value value_;
};

}  // namespace kestrelbay
