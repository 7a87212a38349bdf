#include <gtest/gtest.h>

#include <QGuiApplication>

#include "platform/linux/glib/GObjectPtr.h"

int main(int argc, char **argv) {
    ::testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_NO_GLIB", "1");
    qputenv("GSETTINGS_BACKEND", "memory");
    qputenv("GSETTINGS_SCHEMA_DIR", KESTRELBAY_TEST_SCHEMAS);
    for (const char *name : {"DBUS_SESSION_BUS_ADDRESS", "DISPLAY", "WAYLAND_DISPLAY",
                             "XDG_CURRENT_DESKTOP", "XDG_RUNTIME_DIR"})
        qunsetenv(name);
    // Looked up once; a window manager would miss most of its own settings there.
    g_settings_schema_source_get_default();
    qunsetenv("GSETTINGS_SCHEMA_DIR");
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
