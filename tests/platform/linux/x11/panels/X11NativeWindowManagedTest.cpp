#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/linux/x11/panels/X11NativeWindowFixture.h"
#include "support/Poll.h"

namespace kestrelbay::testing {
namespace {

/// A screen with a window manager, and with another program that was used last.
class X11NativeWindowManaged : public X11NativeWindowFixture,
                               public ::testing::WithParamInterface<const char *> {
protected:
    void SetUp() override {
        manager_ = server_.startWindowManager(QString::fromLatin1(GetParam()));
    }

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

TEST_P(X11NativeWindowManaged, KnowsTheFrameBeforeTheWindowIsShown) {
    xcb_connection_t *const c = own_.connection().get();
    const xcb_window_t window = xcb_generate_id(c);
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window, own_.connection().root(), 0, 0, 200, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    own_.sync();
    const QMargins told = native_->frameMargins(window);
    map(own_, window);
    ASSERT_TRUE(waitUntil([&] {
        return own_.managed({window}) && own_.words(window, "_NET_FRAME_EXTENTS").size() == 4;
    }));
    const auto words = own_.words(window, "_NET_FRAME_EXTENTS");
    const auto side = [&words](std::size_t index) { return static_cast<int>(words[index]); };
    EXPECT_EQ(told, QMargins(side(0), side(2), side(1), side(3)));
    EXPECT_GT(told.top(), 0);
}

TEST_P(X11NativeWindowManaged, KnowsTheMiddleOfTheKeyWindow) {
    const xcb_window_t window = makeManaged(other_);
    use(window);
    xcb_connection_t *const c = other_.connection().get();
    EXPECT_TRUE(waitUntil([&] {
        const x11::Reply<xcb_translate_coordinates_reply_t> corner(xcb_translate_coordinates_reply(
            c, xcb_translate_coordinates(c, window, other_.connection().root(), 0, 0), nullptr));
        return native_->activeWindowCenter() == QPoint(corner->dst_x + 60, corner->dst_y + 40);
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
