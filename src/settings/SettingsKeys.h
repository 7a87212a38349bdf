#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include <QLatin1StringView>
#include <QString>
#include <QStringView>

#include "platform/UserDefaults.h"

namespace kestrelbay {

/// A setting: its key, its type, and what its absence means. There is no object
/// that holds settings: they are read at the moment of use, and whoever edits one
/// writes it at once.
template <typename Value>
struct SettingsKey {
    QLatin1StringView name;
    Value whenAbsent;
};
using TextKey = SettingsKey<QLatin1StringView>;
using BooleanKey = SettingsKey<bool>;

/// All settings of the program.
namespace settings {
using namespace Qt::StringLiterals;

/// Interface language, a raw value of Language.
inline constexpr TextKey kAppLanguage{"appLanguage"_L1, "en"_L1};
/// What the user asked for last, which is not always what the system did.
inline constexpr BooleanKey kLaunchAtLogin{"launchAtLogin"_L1, false};
/// Name of the system sound for a hotkey that fires; empty for none.
inline constexpr TextKey kSoundFeedbackName{"soundFeedbackName"_L1, ""_L1};
/// A raw value of LaunchToastDuration.
inline constexpr TextKey kLaunchToastDuration{"launchToastDuration"_L1, "none"_L1};
/// Has the first-run guide been finished, skipped or closed?
inline constexpr BooleanKey kOnboardingCompleted{"onboardingCompleted"_L1, false};
}  // namespace settings

[[nodiscard]] inline QString read(const UserDefaults &defaults, const TextKey &key) {
    return defaults.string(key.name).value_or(key.whenAbsent);
}
[[nodiscard]] inline bool read(const UserDefaults &defaults, const BooleanKey &key) {
    return defaults.boolean(key.name).value_or(key.whenAbsent);
}
inline void write(UserDefaults &defaults, const TextKey &key, const QString &value) {
    defaults.setString(key.name, value);
}
inline void write(UserDefaults &defaults, const BooleanKey &key, bool value) {
    defaults.setBoolean(key.name, value);
}

/// How long the icon of a launched application is shown.
enum class LaunchToastDuration : std::uint8_t { None, Short, Medium, Long };

/// In the order in which they are offered.
inline constexpr std::array<LaunchToastDuration, 4> kLaunchToastDurations{
    LaunchToastDuration::None, LaunchToastDuration::Short, LaunchToastDuration::Medium,
    LaunchToastDuration::Long};

/// The text that is stored, e.g. "short".
[[nodiscard]] inline QString rawValue(LaunchToastDuration duration) {
    using namespace Qt::StringLiterals;
    constexpr std::array kTexts{"none"_L1, "short"_L1, "medium"_L1, "long"_L1};
    return kTexts[static_cast<std::size_t>(duration)];
}

/// No value for any other text; the case of letters counts.
[[nodiscard]] inline std::optional<LaunchToastDuration> launchToastDurationFromRawValue(
    QStringView text) {
    for (const LaunchToastDuration duration : kLaunchToastDurations) {
        if (rawValue(duration) == text)
            return duration;
    }
    return std::nullopt;
}

/// The setting; None when it is absent or unknown.
[[nodiscard]] inline LaunchToastDuration currentLaunchToastDuration(const UserDefaults &defaults) {
    return launchToastDurationFromRawValue(read(defaults, settings::kLaunchToastDuration))
        .value_or(LaunchToastDuration::None);
}

}  // namespace kestrelbay
