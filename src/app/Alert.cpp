#include "app/Alert.h"

#include <utility>

#include "settings/L.h"
#include "ui/windows/Sheet.h"

namespace kestrelbay {

namespace {

std::function<void(QDialog &)> &alertRunner() {
    static std::function<void(QDialog &)> runner;
    return runner;
}

}  // namespace

void setAlertRunner(std::function<void(QDialog &)> runner) {
    alertRunner() = std::move(runner);
}

void showAlert(QWidget *parent, const LaunchAtLogin::Failure &failure) {
    AlertSheet alert({.title = failure.messageText,
                      .text = failure.informativeText,
                      .acceptTitle = failure.buttonTitle,
                      .isWarning = true},
                     parent);
    alert.setAttribute(Qt::WA_DeleteOnClose, false);
    alert.setWindowModality(Qt::ApplicationModal);
    alert.setWindowTitle(L::programName());
    alert.setAccessibleName(failure.messageText);

    if (const auto &runner = alertRunner())
        runner(alert);
    else
        alert.exec();
}

}  // namespace kestrelbay
