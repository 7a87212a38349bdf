#include "platform/linux/X11NativeWindow.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QFile>
#include <QRegion>

#include <gtest/gtest.h>

#include "appsDesktop.h"
#include "support/Poll.h"
#include "support/PrivateSessionBus.h"
#include "support/PrivateXServer.h"

namespace kestrelbay::testing {
namespace {

using x11::X11NativeWindow;

/// A screen with the windows of this program and of another one.
class X11NativeWindowTest : public ::testing::Test {
protected:
    X11NativeWindowTest()
        : own_(server_.displayName()),
          other_(server_.displayName()),
          native_(std::make_unique<X11NativeWindow>(server_.displayName())) {}

    /// A window that no window manager manages, not shown yet.
    static xcb_window_t makeUnmanaged(WindowMaker &maker, const QRect &at) {
        xcb_connection_t *const c = maker.connection().get();
        const xcb_window_t window = xcb_generate_id(c);
        const std::uint32_t overrideRedirect = 1;
        xcb_create_window(c, XCB_COPY_FROM_PARENT, window, maker.connection().root(),
                          static_cast<std::int16_t>(at.x()), static_cast<std::int16_t>(at.y()),
                          static_cast<std::uint16_t>(at.width()),
                          static_cast<std::uint16_t>(at.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
        maker.sync();
        return window;
    }
    static void map(WindowMaker &maker, xcb_window_t window) {
        xcb_map_window(maker.connection().get(), window);
        maker.sync();
    }
    static void unmap(WindowMaker &maker, xcb_window_t window) {
        xcb_unmap_window(maker.connection().get(), window);
        maker.sync();
    }
    static void raise(WindowMaker &maker, xcb_window_t window) {
        const std::uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(maker.connection().get(), window, XCB_CONFIG_WINDOW_STACK_MODE,
                             &above);
        maker.sync();
    }
    [[nodiscard]] bool isOnTop(xcb_window_t window) const {
        xcb_connection_t *const c = other_.connection().get();
        const x11::Reply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(c, xcb_query_tree(c, other_.connection().root()), nullptr));
        return tree && tree->children_len > 0 &&
               xcb_query_tree_children(tree.get())[tree->children_len - 1] == window;
    }

    /// Of two windows that overlap; the other may stand in a frame.
    [[nodiscard]] bool isAbove(xcb_window_t upper, xcb_window_t lower) const {
        xcb_connection_t *const c = other_.connection().get();
        const xcb_window_t root = other_.connection().root();
        xcb_window_t frame = lower;
        x11::Reply<xcb_query_tree_reply_t> tree;
        for (xcb_window_t parent = lower; parent != root && parent != XCB_NONE;
             parent = tree ? tree->parent : xcb_window_t{XCB_NONE}) {
            frame = parent;
            tree.reset(xcb_query_tree_reply(c, xcb_query_tree(c, parent), nullptr));
        }
        tree.reset(xcb_query_tree_reply(c, xcb_query_tree(c, root), nullptr));
        if (!tree)
            return false;
        const std::vector<xcb_window_t> stack(
            xcb_query_tree_children(tree.get()),
            xcb_query_tree_children(tree.get()) + tree->children_len);
        return std::ranges::find(stack, upper) > std::ranges::find(stack, frame);
    }

    PrivateXServer server_;
    WindowMaker own_;
    WindowMaker other_;
    std::unique_ptr<X11NativeWindow> native_;
};

const QRect kScreen(0, 0, 1280, 800);
const QRect kPanel(400, 300, 200, 100);

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

TEST_F(X11NativeWindowTest, BearsWindowsThatAreNotThere) {
    native_->makeFloatingPanel(0x7777777);
    native_->setBehindWindowMaterial(0x7777777, QRect(0, 0, 9, 9), 3);
    native_->bringProgramForward(0x7777777);
    const xcb_window_t panel = makeUnmanaged(own_, kPanel);
    native_->makeFloatingPanel(panel);
    EXPECT_TRUE(waitUntil([&] { return own_.words(panel, "_NET_WM_WINDOW_TYPE").size() == 1; }));
}

TEST_F(X11NativeWindowTest, HasNoKeyWindowWithoutAWindowManager) {
    EXPECT_EQ(native_->keyWindowCenter(), std::nullopt);
}

TEST_F(X11NativeWindowTest, BearsTheEndOfTheServer) {
    server_.process().kill();
    EXPECT_TRUE(waitUntil([&] { return !native_->isTranslucencyShown(); }));
    EXPECT_EQ(native_->keyWindowCenter(), std::nullopt);
    native_->bringProgramForward(1);
    native_->makeFloatingPanel(1);
}

TEST(X11NativeWindowWithoutServer, DoesNothing) {
    X11NativeWindow native(QStringLiteral(":99999"));
    native.makeFloatingPanel(1);
    native.setBehindWindowMaterial(1, QRect(0, 0, 1, 1), 0);
    native.bringProgramForward(1);
    EXPECT_FALSE(native.isTranslucencyShown());
    EXPECT_EQ(native.keyWindowCenter(), std::nullopt);
}

/// The same with a window manager, and another program that was used last.
class X11NativeWindowManaged : public X11NativeWindowTest,
                               public ::testing::WithParamInterface<const char *> {
protected:
    void SetUp() override {
        // xfwm4 has its settings from a service.
        const QString settings = QStringLiteral("org.xfce.Xfconf.service");
        QFile::link(QStringLiteral("/usr/share/dbus-1/services/") + settings,
                    bus_.serviceFolder() + u'/' + settings);
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus_.address().toUtf8());
        manager_ = startReadyWindowManager(server_, QString::fromLatin1(GetParam()));
    }

    void TearDown() override { qunsetenv("DBUS_SESSION_BUS_ADDRESS"); }

    xcb_window_t makeManaged(WindowMaker &maker) {
        const xcb_window_t window = maker.make({});
        EXPECT_TRUE(waitUntil([&] { return maker.managed({window}); }));
        return window;
    }
    void use(xcb_window_t window) {
        // Without a time, metacity takes that at which it gets to it, which may be later
        // than what comes next here.
        other_.activate(window, serverTime());
        EXPECT_TRUE(waitUntil([&] { return other_.active() == window; }));
        // What a click or a key press in it leaves behind.
        const std::uint32_t time = serverTime();
        other_.setRaw(window, "_NET_WM_USER_TIME", "CARDINAL", 32,
                      QByteArray(reinterpret_cast<const char *>(&time), sizeof time));
    }
    std::uint32_t serverTime() {
        xcb_connection_t *const c = other_.connection().get();
        const xcb_window_t window = makeUnmanaged(other_, kPanel);
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(c, window, XCB_CW_EVENT_MASK, &events);
        other_.setText(window, "WM_NAME", "x");
        const x11::Reply<xcb_generic_event_t> event(xcb_wait_for_event(c));
        return reinterpret_cast<const xcb_property_notify_event_t &>(*event).time;
    }
    bool isForward(xcb_window_t window) {
        return waitUntil([&] { return own_.active() == window && !own_.isIconic(window); },
                         std::chrono::seconds(5));
    }
    void minimize(xcb_window_t window) {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = own_.atom("WM_CHANGE_STATE");
        event.data.data32[0] = 3;
        xcb_send_event(own_.connection().get(), 0, own_.connection().root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char *>(&event));
        own_.sync();
    }
    void showWorkspace(std::uint32_t number) {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = own_.connection().root();
        event.type = own_.atom("_NET_CURRENT_DESKTOP");
        event.data.data32[0] = number;
        event.data.data32[1] = serverTime();
        xcb_send_event(own_.connection().get(), 0, own_.connection().root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char *>(&event));
        own_.sync();
        EXPECT_TRUE(waitUntil([&] {
            return own_.words(own_.connection().root(), "_NET_CURRENT_DESKTOP") ==
                   std::vector{number};
        }));
    }

    PrivateSessionBus bus_;
    std::unique_ptr<ChildProcess> manager_;
};

TEST_P(X11NativeWindowManaged, BringsAWindowForwardFromBehindTheOneInUse) {
    const xcb_window_t window = makeManaged(own_);
    use(makeManaged(other_));
    native_->bringProgramForward(window);
    EXPECT_TRUE(isForward(window));
}

TEST_P(X11NativeWindowManaged, BringsAWindowForwardThatWasOnlyJustShown) {
    use(makeManaged(other_));
    const xcb_window_t window = own_.make({});
    native_->bringProgramForward(window);
    EXPECT_TRUE(isForward(window));
}

TEST_P(X11NativeWindowManaged, BringsAWindowForwardThatWasHiddenAndIsShownAgain) {
    const xcb_window_t window = makeManaged(own_);
    use(makeManaged(other_));
    unmap(own_, window);
    map(own_, window);
    native_->bringProgramForward(window);
    EXPECT_TRUE(isForward(window));
}

TEST_P(X11NativeWindowManaged, BringsAMinimizedWindowBack) {
    const xcb_window_t window = makeManaged(own_);
    const xcb_window_t other = makeManaged(other_);
    minimize(window);
    ASSERT_TRUE(waitUntil([&] { return own_.isIconic(window); }));
    use(other);
    native_->bringProgramForward(window);
    EXPECT_TRUE(isForward(window));
}

TEST_P(X11NativeWindowManaged, GoesToTheWorkspaceOfTheWindow) {
    ASSERT_TRUE(waitUntil([&] {
        const auto count = own_.words(own_.connection().root(), "_NET_NUMBER_OF_DESKTOPS");
        return !count.empty() && count.front() > 1;
    }));
    const xcb_window_t window = makeManaged(own_);
    showWorkspace(1);
    use(makeManaged(other_));
    native_->bringProgramForward(window);
    EXPECT_TRUE(isForward(window));
    EXPECT_EQ(own_.words(own_.connection().root(), "_NET_CURRENT_DESKTOP"),
              std::vector<std::uint32_t>{0});
}

TEST_P(X11NativeWindowManaged, KnowsTheMiddleOfTheKeyWindow) {
    const xcb_window_t window = makeManaged(other_);
    use(window);
    xcb_connection_t *const c = other_.connection().get();
    EXPECT_TRUE(waitUntil([&] {
        const x11::Reply<xcb_translate_coordinates_reply_t> corner(xcb_translate_coordinates_reply(
            c, xcb_translate_coordinates(c, window, other_.connection().root(), 0, 0), nullptr));
        return native_->keyWindowCenter() == QPoint(corner->dst_x + 60, corner->dst_y + 40);
    }));
}

TEST_P(X11NativeWindowManaged, KeepsAPanelAboveAWindowInFullScreen) {
    const xcb_window_t window = makeManaged(other_);
    const xcb_window_t panel = makeUnmanaged(own_, kPanel);
    native_->makeFloatingPanel(panel);
    map(own_, panel);
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = other_.atom("_NET_WM_STATE");
    event.data.data32[0] = 1;
    event.data.data32[1] = other_.atom("_NET_WM_STATE_FULLSCREEN");
    event.data.data32[3] = 2;
    xcb_send_event(other_.connection().get(), 0, other_.connection().root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&event));
    other_.sync();
    use(window);
    EXPECT_TRUE(waitUntil([&] {
        const auto states = other_.words(window, "_NET_WM_STATE");
        return std::find(states.begin(), states.end(), other_.atom("_NET_WM_STATE_FULLSCREEN")) !=
                   states.end() &&
               isAbove(panel, window);
    }));
}

INSTANTIATE_TEST_SUITE_P(Managers, X11NativeWindowManaged,
                         ::testing::Values("openbox", "xfwm4", "metacity"),
                         [](const auto &manager) { return std::string(manager.param); });

}  // namespace
}  // namespace kestrelbay::testing
