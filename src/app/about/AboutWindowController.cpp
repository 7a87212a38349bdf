#include "app/about/AboutWindowController.h"

#include "app/about/AboutViewController.h"
#include "platform/NativeWindow.h"
#include "settings/L.h"
#include "ui/look/Screens.h"
#include "ui/windows/FixedWindow.h"

namespace kestrelbay {

AboutWindowController::AboutWindowController(Services services) : services_(services) {}

AboutWindowController::~AboutWindowController() = default;

void AboutWindowController::show() {
    if (!window_) {
        window_ = std::make_unique<FixedWindow>(AboutViewController::kSize, L::aboutKestrelBay());
        viewController_ = std::make_unique<AboutViewController>(*window_, services_.workspace);
    }
    window_->centerOn(activeScreen(services_.nativeWindow));
    window_->show();
    window_->raise();
    services_.nativeWindow.bringProgramForward(window_->winId());
}

QWidget *AboutWindowController::window() const {
    return window_.get();
}

}  // namespace kestrelbay
