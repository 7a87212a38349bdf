#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include <QString>
#include <QStringView>

namespace kestrelbay {

class UserDefaults;

/// How long the icon of a launched application is shown.
enum class LaunchToastDuration : std::uint8_t { None, Short, Medium, Long };

/// In the order in which they are offered.
inline constexpr std::array<LaunchToastDuration, 4> kLaunchToastDurations{
    LaunchToastDuration::None, LaunchToastDuration::Short, LaunchToastDuration::Medium,
    LaunchToastDuration::Long};

/// The text that is stored, e.g. "short".
[[nodiscard]] QString rawValue(LaunchToastDuration duration);

/// No value for any other text; the case of letters counts.
[[nodiscard]] std::optional<LaunchToastDuration> launchToastDurationFromRawValue(QStringView text);

/// The setting; None when it is absent or unknown.
[[nodiscard]] LaunchToastDuration currentLaunchToastDuration(const UserDefaults &defaults);

}  // namespace kestrelbay
