#include <gtest/gtest.h>

#include <QGuiApplication>

int main(int argc, char **argv) {
    ::testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_NO_GLIB", "1");
    qputenv("GSETTINGS_BACKEND", "memory");
    qputenv("GSETTINGS_SCHEMA_DIR", KESTRELBAY_TEST_SCHEMAS);
    for (const char *name : {"DBUS_SESSION_BUS_ADDRESS", "DISPLAY", "WAYLAND_DISPLAY",
                             "XDG_CURRENT_DESKTOP", "XDG_RUNTIME_DIR"})
        qunsetenv(name);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
