#pragma once

#include <algorithm>
#include <memory>
#include <vector>

#include <QRect>

#include <gtest/gtest.h>

#include "platform/linux/apps/desktop.h"
#include "platform/linux/x11/panels/X11NativeWindow.h"
#include "support/PrivateXServer.h"

namespace kestrelbay::testing {

/// A screen with the windows of this program and of another one.
class X11NativeWindowFixture : public ::testing::Test {
protected:
    X11NativeWindowFixture()
        : own_(server_.displayName()),
          other_(server_.displayName()),
          native_(std::make_unique<x11::X11NativeWindow>(server_.displayName())) {}

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
    std::unique_ptr<x11::X11NativeWindow> native_;
};

inline constexpr QRect kScreen(0, 0, 1280, 800);
inline constexpr QRect kPanel(400, 300, 200, 100);

}  // namespace kestrelbay::testing
