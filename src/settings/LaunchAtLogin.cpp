#include "settings/LaunchAtLogin.h"

#include <optional>
#include <utility>

#include "settings/SettingsKeys.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

LaunchAtLogin::LaunchAtLogin(LoginItem &loginItem, UserDefaults &defaults, Report report)
    : loginItem_(loginItem), defaults_(defaults), report_(std::move(report)) {}

void LaunchAtLogin::setLaunchAtLogin(bool enabled) {
    if (const std::optional<QString> reason = loginItem_.setEnabled(enabled); reason && report_) {
        report_({
            .messageText = u"Launch at Login"_s,
            .informativeText = u"Failed to "_s + (enabled ? "enable"_L1 : "disable"_L1) +
                               u" launch at login: "_s + *reason,
            .buttonTitle = u"OK"_s,
        });
    }
    write(defaults_, settings::kLaunchAtLogin, enabled);
}

}  // namespace kestrelbay
