#include "platform/linux/wayland/recording/ShortcutsInhibitor.h"

#include <array>
#include <cstddef>
#include <memory>
#include <optional>

#include <QFile>

#include <gtest/gtest.h>

#include <wayland-client.h>

#include "platform/linux/wayland/client/Connection.h"
#include "platform/linux/wayland/client/Globals.h"
#include "platform/linux/wayland/recording/FocusCompositor.h"

namespace kestrelbay::wayland {
namespace {

using testing::FocusCompositor;
using Inhibiting = FocusCompositor::Inhibiting;
using Keyboard = FocusCompositor::Keyboard;

constexpr int kNone = -1;

/// The toolkit of a program with two windows.
class Toolkit {
public:
    explicit Toolkit(const QString &socketPath)
        : display_(wl_display_connect(QFile::encodeName(socketPath).constData())) {
        Connection connection(*display_);
        const Globals globals(connection);
        const std::unique_ptr<wl_compositor, ReleaseProxy> compositor(
            globals.bind<wl_compositor>(wl_compositor_interface, 1));
        for (auto &surface : surfaces_)
            surface.reset(wl_compositor_create_surface(compositor.get()));
        connection.roundTrip();
        // What is told of them is for the toolkit.
        for (const auto &surface : surfaces_)
            wl_proxy_set_queue(reinterpret_cast<wl_proxy *>(surface.get()), nullptr);
    }

    [[nodiscard]] wl_display &display() const { return *display_; }
    void closeWindow(std::size_t which) {
        wl_surface_destroy(surfaces_.at(which).release());
        wl_display_flush(display_.get());
    }

private:
    struct Disconnect {
        void operator()(wl_display *display) const { wl_display_disconnect(display); }
    };

    const std::unique_ptr<wl_display, Disconnect> display_;
    std::array<std::unique_ptr<wl_surface, ReleaseProxy>, 2> surfaces_;
};

class ShortcutsInhibitorTest : public ::testing::Test {
protected:
    void useCompositor(Inhibiting inhibiting, Keyboard keyboard = Keyboard::Has) {
        inhibitor_.reset();
        toolkit_.reset();
        compositor_.emplace(inhibiting, keyboard);
        toolkit_.emplace(compositor_->socketPath());
        compositor_->focus(0);
        inhibitor_.emplace(toolkit_->display());
    }
    void SetUp() override { useCompositor(Inhibiting::Granted); }
    [[nodiscard]] bool isConnected() const {
        return wl_display_roundtrip(&toolkit_->display()) >= 0;
    }

    std::optional<FocusCompositor> compositor_;
    std::optional<Toolkit> toolkit_;
    std::optional<ShortcutsInhibitor> inhibitor_;
};

TEST_F(ShortcutsInhibitorTest, TheWindowThatHasTheKeyboardGetsAllKeysUntilTheEnd) {
    EXPECT_EQ(compositor_->inhibited(), kNone);
    EXPECT_FALSE(inhibitor_->isActive());

    inhibitor_->begin();
    EXPECT_EQ(compositor_->inhibited(), 0);
    EXPECT_TRUE(inhibitor_->isActive());

    inhibitor_->end();
    EXPECT_TRUE(isConnected());
    EXPECT_EQ(compositor_->inhibited(), kNone);
    EXPECT_EQ(compositor_->keyboardCount(), 0);
    EXPECT_FALSE(inhibitor_->isActive());
}

TEST_F(ShortcutsInhibitorTest, ItBeginsAsOftenAsItEnds) {
    for (int i = 0; i < 3; ++i) {
        inhibitor_->begin();
        EXPECT_TRUE(inhibitor_->isActive()) << i;
        inhibitor_->begin();
        EXPECT_TRUE(inhibitor_->isActive()) << i;
        inhibitor_->end();
    }
    EXPECT_TRUE(isConnected());
}

TEST_F(ShortcutsInhibitorTest, ItIsNotActiveBeforeTheUserHasSaidSo) {
    useCompositor(Inhibiting::AsksTheUser);
    inhibitor_->begin();
    EXPECT_EQ(compositor_->inhibited(), 0);
    EXPECT_FALSE(inhibitor_->isActive());
    compositor_->answer(true);
    EXPECT_TRUE(inhibitor_->isActive());
    compositor_->answer(false);
    EXPECT_FALSE(inhibitor_->isActive());
}

TEST_F(ShortcutsInhibitorTest, ItFollowsTheKeyboardToAnotherWindow) {
    inhibitor_->begin();
    compositor_->focus(1);
    EXPECT_FALSE(inhibitor_->isActive());
    EXPECT_TRUE(isConnected());
    EXPECT_TRUE(inhibitor_->isActive());
    EXPECT_EQ(compositor_->inhibited(), 1);
}

TEST_F(ShortcutsInhibitorTest, AWindowMayBeClosedMeanwhile) {
    inhibitor_->begin();
    toolkit_->closeWindow(0);
    inhibitor_->end();
    EXPECT_TRUE(isConnected());
}

TEST_F(ShortcutsInhibitorTest, AWindowMayBeClosedJustAsItGetsTheKeyboard) {
    inhibitor_->begin();
    compositor_->focus(1);
    toolkit_->closeWindow(1);
    EXPECT_FALSE(inhibitor_->isActive());
    EXPECT_TRUE(isConnected());
}

TEST_F(ShortcutsInhibitorTest, ItLetsGoWhenAnotherProgramGetsTheKeyboard) {
    inhibitor_->begin();
    compositor_->focusElsewhere();
    EXPECT_FALSE(inhibitor_->isActive());
    EXPECT_EQ(compositor_->inhibited(), kNone);
    EXPECT_TRUE(isConnected());
}

TEST_F(ShortcutsInhibitorTest, ACompositorWithoutItIsAskedForNothing) {
    useCompositor(Inhibiting::Lacking);
    inhibitor_->begin();
    EXPECT_FALSE(inhibitor_->isActive());
    EXPECT_EQ(compositor_->keyboardCount(), 0);
    inhibitor_->end();
    EXPECT_TRUE(isConnected());
}

TEST_F(ShortcutsInhibitorTest, ASeatWithoutAKeyboardIsNotAskedForOne) {
    useCompositor(Inhibiting::Granted, Keyboard::Lacks);
    inhibitor_->begin();
    EXPECT_FALSE(inhibitor_->isActive());
    EXPECT_TRUE(isConnected());
}

TEST_F(ShortcutsInhibitorTest, TheToolkitsOwnEventsAreLeftToIt) {
    int answers = 0;
    wl_callback *const callback = wl_display_sync(&toolkit_->display());
    constexpr wl_callback_listener kCount{
        .done = [](void *count, wl_callback *, std::uint32_t) { ++*static_cast<int *>(count); }};
    wl_callback_add_listener(callback, &kCount, &answers);
    inhibitor_->begin();
    EXPECT_TRUE(inhibitor_->isActive());
    EXPECT_EQ(answers, 0);
    wl_display_dispatch_pending(&toolkit_->display());
    EXPECT_EQ(answers, 1);
    wl_callback_destroy(callback);
}

}  // namespace
}  // namespace kestrelbay::wayland
