#include <gtest/gtest.h>

#include <QGuiApplication>

#include "platform/linux/apps/desktop.h"

int main(int argc, char **argv) {
    ::testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const kestrelbay::testing::PrivateHome home;
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
