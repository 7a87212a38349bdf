#include "platform/linux/wayland/sway/OwnWindowRules.h"

#include <QCoreApplication>
#include <QGuiApplication>

namespace kestrelbay::sway {

QByteArray floatOwnWindowsCommands() {
    return "for_window [class=\"^" + QCoreApplication::applicationName().toUtf8() +
           "$\"] floating enable; for_window [app_id=\"^" +
           QGuiApplication::desktopFileName().toUtf8() + "$\"] floating enable";
}

}  // namespace kestrelbay::sway
