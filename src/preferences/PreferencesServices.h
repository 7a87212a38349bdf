#pragma once

#include <functional>

#include <QString>

#include "settings/Addresses.h"

namespace kestrelbay {

class ApplicationCatalog;
class DesktopExtension;
class DispatchQueue;
class HotkeyHolders;
class KeyboardLayout;
class LaunchAtLogin;
class NativeWindow;
class Notifications;
class ScreenLock;
class ShortcutManager;
class SystemSettings;
class SystemSounds;
class Timers;
class UserDefaults;
class Workspace;

/// What the preferences window and its views work with. All of it outlives them.
struct PreferencesServices {
    ShortcutManager &manager;
    UserDefaults &defaults;
    ApplicationCatalog &catalog;
    Workspace &workspace;
    SystemSounds &sounds;
    SystemSettings &systemSettings;
    /// Null where there is nothing to install.
    DesktopExtension *desktopExtension = nullptr;
    NativeWindow &nativeWindow;
    ScreenLock &screenLock;
    HotkeyHolders &hotkeyHolders;
    KeyboardLayout &keyboardLayout;
    LaunchAtLogin &launchAtLogin;
    Notifications &notifications;
    Timers &timers;
    DispatchQueue &mainQueue;
    /// For what takes long and must not keep the main thread.
    DispatchQueue &backgroundQueue;
    Addresses addresses;
    /// A message toast: its text, and a button where title and action are given.
    std::function<void(const QString &, const QString &, std::function<void()>)> showToast;
};

}  // namespace kestrelbay
