#include "platform/linux/x11/panels/X11NativeWindow.h"

#include <chrono>
#include <optional>
#include <vector>

#include <QRegion>

#include <xcb/shape.h>

#include <gtest/gtest.h>

#include "platform/linux/x11/panels/X11NativeWindowFixture.h"
#include "support/Poll.h"

namespace kestrelbay::testing {
namespace {

using x11::X11NativeWindow;

class X11NativeWindowTest : public X11NativeWindowFixture {};

TEST_F(X11NativeWindowTest, MarksAPanelAsANotification) {
    const xcb_window_t panel = makeUnmanaged(own_, kPanel);
    native_->makeFloatingPanel(panel);
    EXPECT_TRUE(waitUntil([&] {
        return own_.words(panel, "_NET_WM_WINDOW_TYPE") ==
               std::vector{own_.atom("_NET_WM_WINDOW_TYPE_NOTIFICATION")};
    }));
}

TEST_F(X11NativeWindowTest, KeepsAPanelAboveAWindowThatIsRaised) {
    const xcb_window_t panel = makeUnmanaged(own_, kPanel);
    native_->makeFloatingPanel(panel);
    const xcb_window_t fullScreen = makeUnmanaged(other_, kScreen);
    map(other_, fullScreen);
    map(own_, panel);
    EXPECT_TRUE(waitUntil([&] { return isOnTop(panel); }));
    for (int i = 0; i < 3; ++i) {
        raise(other_, fullScreen);
        EXPECT_TRUE(waitUntil([&] { return isOnTop(panel); }));
    }
}

TEST_F(X11NativeWindowTest, KeepsAPanelAboveAWindowThatIsShownOrCirculated) {
    const xcb_window_t fullScreen = makeUnmanaged(other_, kScreen);
    map(other_, fullScreen);
    const xcb_window_t panel = makeUnmanaged(own_, kPanel);
    native_->makeFloatingPanel(panel);
    map(own_, panel);
    // Until it listens to what becomes of the others.
    raise(other_, fullScreen);
    ASSERT_TRUE(waitUntil([&] { return isOnTop(panel); }));
    map(other_, makeUnmanaged(other_, kScreen));
    EXPECT_FALSE(isOnTop(panel));
    EXPECT_TRUE(waitUntil([&] { return isOnTop(panel); }));
    xcb_circulate_window(other_.connection().get(), XCB_CIRCULATE_RAISE_LOWEST,
                         other_.connection().root());
    other_.sync();
    EXPECT_FALSE(isOnTop(panel));
    EXPECT_TRUE(waitUntil([&] { return isOnTop(panel); }));
}

TEST_F(X11NativeWindowTest, KeepsAPanelAboveUnderACompositingManager) {
    const ChildProcess compositor(QStringLiteral("picom"),
                                  {QStringLiteral("--backend"), QStringLiteral("xrender"),
                                   QStringLiteral("--config"), QProcess::nullDevice()},
                                  server_.environment(), QProcess::nullDevice());
    ASSERT_TRUE(waitUntil([&] { return native_->isTranslucencyShown(); }));
    const xcb_window_t panel = makeUnmanaged(own_, kPanel);
    native_->makeFloatingPanel(panel);
    map(own_, panel);
    const xcb_window_t fullScreen = makeUnmanaged(other_, kScreen);
    map(other_, fullScreen);
    EXPECT_TRUE(waitUntil([&] { return isAbove(panel, fullScreen); }));
    for (int i = 0; i < 3; ++i) {
        raise(other_, fullScreen);
        EXPECT_TRUE(waitUntil([&] { return isAbove(panel, fullScreen); }));
    }
}

TEST_F(X11NativeWindowTest, LeavesAPanelAloneThatNothingCovers) {
    const xcb_window_t panel = makeUnmanaged(own_, kPanel);
    native_->makeFloatingPanel(panel);
    map(own_, panel);
    const xcb_window_t beside = makeUnmanaged(other_, QRect(0, 0, 100, 100));
    map(other_, beside);
    // More often than a panel is raised over one that covers it.
    for (int i = 0; i < 20; ++i)
        raise(other_, beside);
    const xcb_window_t fullScreen = makeUnmanaged(other_, kScreen);
    map(other_, fullScreen);
    EXPECT_TRUE(waitUntil([&] { return isAbove(panel, fullScreen); }));
}

TEST_F(X11NativeWindowTest, DoesNotFightWithoutEndButBeginsAfreshWhenShownAgain) {
    const xcb_window_t panel = makeUnmanaged(own_, kPanel);
    native_->makeFloatingPanel(panel);
    const xcb_window_t rival = makeUnmanaged(other_, kScreen);
    map(other_, rival);
    for (int showing = 0; showing < 2; ++showing) {
        map(own_, panel);
        raise(own_, panel);
        int raises = 0;
        const auto panelComesBack = [&] {
            raise(other_, rival);
            return waitUntil([&] { return isOnTop(panel); }, std::chrono::milliseconds(300));
        };
        while (raises < 20 && panelComesBack())
            ++raises;
        EXPECT_GE(raises, 2);
        EXPECT_LT(raises, 10);
        unmap(own_, panel);
    }
}

TEST_F(X11NativeWindowTest, SeesACompositingManagerComeAndGo) {
    EXPECT_FALSE(native_->isTranslucencyShown());
    {
        WindowMaker manager(server_.displayName());
        const xcb_window_t window = makeUnmanaged(manager, kPanel);
        xcb_set_selection_owner(manager.connection().get(), window, manager.atom("_NET_WM_CM_S0"),
                                XCB_CURRENT_TIME);
        manager.sync();
        EXPECT_TRUE(native_->isTranslucencyShown());
    }
    EXPECT_TRUE(waitUntil([&] { return !native_->isTranslucencyShown(); }));
}

TEST_F(X11NativeWindowTest, BlursWithinARoundedRectangle) {
    const xcb_window_t window = makeUnmanaged(own_, kPanel);
    native_->setBehindWindowMaterial(window, QRect(10, 20, 100, 50), 12);
    std::vector<std::uint32_t> words;
    ASSERT_TRUE(waitUntil([&] {
        words = own_.words(window, "_KDE_NET_WM_BLUR_BEHIND_REGION");
        return !words.empty();
    }));
    ASSERT_EQ(words.size() % 4, 0U);
    QRegion region;
    for (std::size_t i = 0; i < words.size(); i += 4)
        region += QRect(static_cast<int>(words[i]), static_cast<int>(words[i + 1]),
                        static_cast<int>(words[i + 2]), static_cast<int>(words[i + 3]));
    EXPECT_EQ(region.boundingRect(), QRect(10, 20, 100, 50));
    EXPECT_TRUE(region.contains(QPoint(60, 20)));
    EXPECT_TRUE(region.contains(QPoint(10, 45)));
    EXPECT_TRUE(region.contains(QPoint(14, 24)));
    for (const QPoint corner :
         {QPoint(10, 20), QPoint(109, 20), QPoint(10, 69), QPoint(109, 69), QPoint(12, 22)})
        EXPECT_FALSE(region.contains(corner));
}

TEST_F(X11NativeWindowTest, CutsAWindowToARoundedRectangle) {
    const xcb_window_t window = makeUnmanaged(own_, kPanel);
    native_->cutToRoundedRectangle(window, QRect(0, 0, 200, 100), 12);
    xcb_connection_t *const c = own_.connection().get();
    QRegion region;
    ASSERT_TRUE(waitUntil([&] {
        const x11::Reply<xcb_shape_get_rectangles_reply_t> reply(xcb_shape_get_rectangles_reply(
            c, xcb_shape_get_rectangles(c, window, XCB_SHAPE_SK_BOUNDING), nullptr));
        region = {};
        for (int i = 0; reply && i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i) {
            const xcb_rectangle_t &part = xcb_shape_get_rectangles_rectangles(reply.get())[i];
            region += QRect(part.x, part.y, part.width, part.height);
        }
        return region.rectCount() > 1;
    }));
    EXPECT_EQ(region.boundingRect(), QRect(0, 0, 200, 100));
    for (const QPoint inside : {QPoint(0, 12), QPoint(12, 0), QPoint(4, 4), QPoint(199, 87)})
        EXPECT_TRUE(region.contains(inside));
    for (const QPoint corner :
         {QPoint(0, 0), QPoint(199, 0), QPoint(0, 99), QPoint(199, 99), QPoint(2, 2)})
        EXPECT_FALSE(region.contains(corner));
}

TEST_F(X11NativeWindowTest, HasNoFrameWithoutAWindowManager) {
    EXPECT_EQ(native_->frameMargins(makeUnmanaged(own_, kPanel)), QMargins());
}

TEST_F(X11NativeWindowTest, BearsWindowsThatAreNotThere) {
    native_->cutToRoundedRectangle(0x7777777, QRect(0, 0, 9, 9), 3);
    native_->makeFloatingPanel(0x7777777);
    native_->setBehindWindowMaterial(0x7777777, QRect(0, 0, 9, 9), 3);
    native_->bringProgramForward(0x7777777);
    const xcb_window_t panel = makeUnmanaged(own_, kPanel);
    native_->makeFloatingPanel(panel);
    EXPECT_TRUE(waitUntil([&] { return own_.words(panel, "_NET_WM_WINDOW_TYPE").size() == 1; }));
}

TEST_F(X11NativeWindowTest, HasNoKeyWindowWithoutAWindowManager) {
    EXPECT_EQ(native_->activeWindowCenter(), std::nullopt);
}

TEST_F(X11NativeWindowTest, BearsTheEndOfTheServer) {
    server_.process().kill();
    EXPECT_TRUE(waitUntil([&] { return !native_->isTranslucencyShown(); }));
    EXPECT_EQ(native_->activeWindowCenter(), std::nullopt);
    native_->bringProgramForward(1);
    native_->makeFloatingPanel(1);
    native_->cutToRoundedRectangle(1, QRect(0, 0, 1, 1), 0);
    EXPECT_EQ(native_->frameMargins(1), QMargins());
}

TEST(X11NativeWindowWithoutServer, DoesNothing) {
    X11NativeWindow native(QStringLiteral(":99999"));
    native.makeFloatingPanel(1);
    native.setBehindWindowMaterial(1, QRect(0, 0, 1, 1), 0);
    native.bringProgramForward(1);
    EXPECT_FALSE(native.isTranslucencyShown());
    EXPECT_EQ(native.activeWindowCenter(), std::nullopt);
}

}  // namespace
}  // namespace kestrelbay::testing
