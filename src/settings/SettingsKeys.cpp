#include "settings/SettingsKeys.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

QString rawValue(LaunchToastDuration duration) {
    switch (duration) {
        case LaunchToastDuration::None:
            return u"none"_s;
        case LaunchToastDuration::Short:
            return u"short"_s;
        case LaunchToastDuration::Medium:
            return u"medium"_s;
        case LaunchToastDuration::Long:
            return u"long"_s;
    }
    return {};
}

std::optional<LaunchToastDuration> launchToastDurationFromRawValue(QStringView text) {
    for (const LaunchToastDuration duration : kLaunchToastDurations) {
        if (rawValue(duration) == text)
            return duration;
    }
    return std::nullopt;
}

LaunchToastDuration currentLaunchToastDuration(const UserDefaults &defaults) {
    return launchToastDurationFromRawValue(read(defaults, settings::kLaunchToastDuration))
        .value_or(LaunchToastDuration::None);
}

}  // namespace kestrelbay
