#pragma once

#include <functional>
#include <optional>
#include <utility>

#include <QString>

#include "platform/LoginItem.h"
#include "settings/SettingsKeys.h"

namespace kestrelbay {

/// The switch that has the program started at login. Main thread.
class LaunchAtLogin {
public:
    /// What to say in a modal alert, in English in either language.
    struct Failure {
        QString messageText;
        QString informativeText;
        QString buttonTitle;
    };
    using Report = std::function<void(const Failure &)>;

    /// All of it has to outlive this.
    LaunchAtLogin(LoginItem &loginItem, UserDefaults &defaults, Report report)
        : loginItem_(loginItem), defaults_(defaults), report_(std::move(report)) {}

    [[nodiscard]] bool isLaunchAtLoginEnabled() const { return loginItem_.isEnabled(); }

    /// Reports a failure before it returns. Either way the settings remember what
    /// was asked for, not what came of it.
    void setLaunchAtLogin(bool enabled) {
        if (const std::optional<QString> reason = loginItem_.setEnabled(enabled); reason && report_)
            report_({.messageText = QStringLiteral("Launch at Login"),
                     .informativeText =
                         QStringLiteral("Failed to %1 launch at login: ")
                             .arg(enabled ? QStringLiteral("enable") : QStringLiteral("disable")) +
                         *reason,
                     .buttonTitle = QStringLiteral("OK")});
        write(defaults_, settings::kLaunchAtLogin, enabled);
    }

private:
    LoginItem &loginItem_;
    UserDefaults &defaults_;
    Report report_;
};

}  // namespace kestrelbay
