#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <QApplication>
#include <QWidget>

#include "core/ManagerFixture.h"
#include "fakes/FakeApplicationCatalog.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/FakeNativeWindow.h"
#include "fakes/FakeSystemSettings.h"
#include "fakes/FakeSystemSounds.h"
#include "fakes/FakeTimers.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualDispatchQueue.h"
#include "preferences/ApplicationIconCache.h"
#include "preferences/PreferencesServices.h"
#include "settings/Language.h"
#include "settings/LaunchAtLogin.h"
#include "settings/NotificationCenter.h"

namespace kestrelbay {

/// What a rule row and its recorder need, with a keyboard, and a window that has it.
class RowFixture : public ManagerFixture {
protected:
    struct Toast {
        QString message;
        QString actionTitle;
        std::function<void()> action;
    };

    void SetUp() override {
        Language::setDefaults(&defaults_);
        window_ = std::make_unique<QWidget>();
        window_->resize(700, 200);
        services_ = std::make_unique<PreferencesServices>(
            PreferencesServices{.manager = manager(),
                                .defaults = defaults_,
                                .catalog = catalog_,
                                .workspace = workspace_,
                                .sounds = sounds_,
                                .systemSettings = systemSettings_,
                                .nativeWindow = nativeWindow_,
                                .launchAtLogin = launchAtLogin_,
                                .notificationCenter = notificationCenter_,
                                .timers = timers_,
                                .mainQueue = mainQueue_,
                                .backgroundQueue = backgroundQueue_,
                                .showToast = [this](const QString &message, const QString &title,
                                                    std::function<void()> action) {
                                    toasts_.push_back({message, title, std::move(action)});
                                }});
        icons_ = std::make_unique<ApplicationIconCache>(*services_);
    }
    void TearDown() override {
        window_.reset();
        Language::setDefaults(nullptr);
    }

    void showWindow() {
        window_->show();
        window_->activateWindow();
        QApplication::setActiveWindow(window_.get());
        window_->setFocus();
    }

    FakeUserDefaults defaults_;
    FakeApplicationCatalog catalog_;
    FakeWorkspace workspace_;
    FakeSystemSounds sounds_;
    FakeSystemSettings systemSettings_;
    FakeNativeWindow nativeWindow_;
    FakeLoginItem loginItem_;
    LaunchAtLogin launchAtLogin_{loginItem_, defaults_, {}};
    NotificationCenter notificationCenter_;
    FakeTimers timers_;
    ManualDispatchQueue mainQueue_;
    ManualDispatchQueue backgroundQueue_;
    std::vector<Toast> toasts_;
    std::unique_ptr<PreferencesServices> services_;
    std::unique_ptr<ApplicationIconCache> icons_;
    std::unique_ptr<QWidget> window_;
};

}  // namespace kestrelbay
