#include "platform/linux/wayland/recording/QtDisplay.h"

#include <QGuiApplication>

namespace kestrelbay::wayland {

wl_display *qtDisplay() {
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    if (const auto *const application =
            qobject_cast<QGuiApplication *>(QCoreApplication::instance())) {
        if (const auto *const native =
                application->nativeInterface<QNativeInterface::QWaylandApplication>())
            return native->display();
    }
#endif
    return nullptr;
}

}  // namespace kestrelbay::wayland
