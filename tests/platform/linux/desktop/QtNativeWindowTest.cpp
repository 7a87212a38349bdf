#include "platform/linux/desktop/QtNativeWindow.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QWindow>

#include "support/Poll.h"

namespace kestrelbay::testing {
namespace {

TEST(QtNativeWindow, BringsAWindowForwardAndNoOther) {
    QWindow first;
    QWindow second;
    QtNativeWindow desktop;
    first.show();
    second.show();
    second.requestActivate();
    ASSERT_TRUE(waitUntil([&] { return QGuiApplication::focusWindow() == &second; }));
    desktop.bringProgramForward(first.winId());
    EXPECT_TRUE(waitUntil([&] { return QGuiApplication::focusWindow() == &first; }));
    desktop.bringProgramForward(NativeWindow::Id{} - 1);
    EXPECT_EQ(QGuiApplication::focusWindow(), &first);
}

}  // namespace
}  // namespace kestrelbay::testing
