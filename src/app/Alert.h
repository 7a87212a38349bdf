#pragma once

#include <functional>

#include "settings/LaunchAtLogin.h"

class QDialog;
class QWidget;

namespace kestrelbay {

/// Warns with the given texts and returns once the user has closed the warning with
/// its one button, Return or Escape. Nothing else of the program takes keys or
/// clicks meanwhile. Main thread.
void showAlert(QWidget *parent, const LaunchAtLogin::Failure &failure);

/// What happens to an alert that is ready to be shown, in place of waiting for the
/// user. Empty for waiting. For tests, in which nobody is there to answer.
void setAlertRunner(std::function<void(QDialog &alert)> runner);

}  // namespace kestrelbay
