#pragma once

#include <functional>

#include <QString>

#include "platform/LoginItem.h"

namespace kestrelbay {

class UserDefaults;

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
    LaunchAtLogin(LoginItem &loginItem, UserDefaults &defaults, Report report);

    [[nodiscard]] bool isLaunchAtLoginEnabled() const { return loginItem_.isEnabled(); }

    /// Reports a failure before it returns. Either way the settings remember what
    /// was asked for, not what came of it.
    void setLaunchAtLogin(bool enabled);

private:
    LoginItem &loginItem_;
    UserDefaults &defaults_;
    Report report_;
};

}  // namespace kestrelbay
