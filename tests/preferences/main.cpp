#include <gtest/gtest.h>

#include <QApplication>

#include "platform/SystemSettings.h"
#include "ui/look/SystemColors.h"
#include "ui/look/SystemStyle.h"

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(new kestrelbay::SystemStyle);
    QApplication::setPalette(kestrelbay::systemPalette(kestrelbay::ColorScheme::Light));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
