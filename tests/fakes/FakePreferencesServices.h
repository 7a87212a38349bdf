#pragma once

#include <functional>

#include <QString>
#include <QStringList>

#include "fakes/FakeApplicationCatalog.h"
#include "fakes/FakeDesktopExtension.h"
#include "fakes/FakeHotkeyHolders.h"
#include "fakes/FakeKeyboardLayout.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/FakeNativeWindow.h"
#include "fakes/FakeScreenLock.h"
#include "fakes/FakeSystemSettings.h"
#include "fakes/FakeSystemSounds.h"
#include "fakes/FakeTimers.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualDispatchQueue.h"
#include "preferences/PreferencesServices.h"
#include "settings/LaunchAtLogin.h"
#include "settings/Notifications.h"

namespace kestrelbay {

/// What the preferences work with beside the rules, all of it faked but what has no
/// side but this one. For those to derive from who have a manager of the rules.
class FakePreferencesServices {
protected:
    [[nodiscard]] PreferencesServices servicesFor(ShortcutManager &manager, Timers &timers,
                                                  DispatchQueue &mainQueue) {
        return {.manager = manager,
                .defaults = defaults_,
                .catalog = catalog_,
                .workspace = workspace_,
                .sounds = sounds_,
                .systemSettings = systemSettings_,
                .desktopExtension = &desktopExtension_,
                .nativeWindow = nativeWindow_,
                .screenLock = screenLock_,
                .hotkeyHolders = hotkeyHolders_,
                .keyboardLayout = keyboardLayout_,
                .launchAtLogin = launchAtLogin_,
                .notifications = notifications_,
                .timers = timers,
                .mainQueue = mainQueue,
                .backgroundQueue = backgroundQueue_,
                .addresses = addresses_,
                .showToast = [this](const QString &message, const QString &actionTitle,
                                    const std::function<void()> &action) {
                    toasts_.append(message);
                    lastToastAction_ = {actionTitle, action};
                }};
    }
    [[nodiscard]] PreferencesServices servicesFor(ShortcutManager &manager) {
        return servicesFor(manager, timers_, mainQueue_);
    }

    struct ToastAction {
        QString title;
        std::function<void()> run;
    };

    FakeUserDefaults defaults_;
    FakeApplicationCatalog catalog_;
    FakeWorkspace workspace_;
    FakeSystemSounds sounds_;
    FakeSystemSettings systemSettings_;
    FakeDesktopExtension desktopExtension_;
    FakeNativeWindow nativeWindow_;
    FakeScreenLock screenLock_;
    FakeHotkeyHolders hotkeyHolders_;
    FakeKeyboardLayout keyboardLayout_;
    FakeLoginItem loginItem_;
    QStringList launchAtLoginFailures_;
    LaunchAtLogin launchAtLogin_{loginItem_, defaults_,
                                 [this](const LaunchAtLogin::Failure &failure) {
                                     launchAtLoginFailures_.append(failure.informativeText);
                                 }};
    Notifications notifications_;
    FakeTimers timers_;
    ManualDispatchQueue mainQueue_;
    ManualDispatchQueue backgroundQueue_;
    Addresses addresses_;
    QStringList toasts_;
    ToastAction lastToastAction_;
};

}  // namespace kestrelbay
