#include <gtest/gtest.h>

#include <QApplication>

#include "platform/SystemSettings.h"
#include "support/PrivateXServer.h"
#include "ui/look/SystemColors.h"
#include "ui/look/SystemStyle.h"

int main(int argc, char **argv) {
    const kestrelbay::testing::PrivateXServer server;
    qputenv("DISPLAY", server.displayName().toLatin1());
    qputenv("QT_QPA_PLATFORM", "xcb");
    int result = 0;
    {
        const QApplication application(argc, argv);
        QApplication::setQuitOnLastWindowClosed(false);
        QApplication::setStyle(new kestrelbay::SystemStyle);
        QApplication::setPalette(kestrelbay::systemPalette(kestrelbay::ColorScheme::Light));
        testing::InitGoogleTest(&argc, argv);
        result = RUN_ALL_TESTS();
    }
    return result;
}
