#include "platform/linux/wayland/toplevels/ToplevelDesktop.h"

#include <array>
#include <atomic>
#include <chrono>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/wayland/toplevels/FakeCompositor.h"
#include "support/Poll.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::wayland {
namespace {

using kestrelbay::testing::FakeCompositor;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> appIds(const std::vector<DesktopWindow> &windows) {
    std::vector<std::string> ids;
    for (const DesktopWindow &window : windows)
        ids.push_back(window.facts.className.toStdString());
    return ids;
}

DesktopWindow windowOf(const QString &appId, ToplevelDesktop &desktop) {
    for (DesktopWindow &window : desktop.read()) {
        if (window.facts.className == appId)
            return window;
    }
    return {};
}

std::unique_ptr<ToplevelDesktop> desktopOf(
    const FakeCompositor &compositor, std::chrono::milliseconds patience = Connection::kPatience) {
    return std::make_unique<ToplevelDesktop>(compositor.socketPath(),
                                             ToplevelProtocol::ForeignToplevelManagement, patience);
}

TEST(ToplevelDesktop, ListsWhatIsOpenAndWhatIsOpenedLater) {
    FakeCompositor compositor;
    compositor.open("a");
    const auto desktop = desktopOf(compositor);
    EXPECT_EQ(desktop->version(), 3U);
    compositor.open("b");
    EXPECT_THAT(appIds(desktop->read()), ElementsAre("b", "a"));
    const DesktopWindow b = windowOf(u"b"_s, *desktop);
    EXPECT_EQ(b.title, u"b window"_s);
    EXPECT_EQ(b.facts.instance, u"b"_s);
    EXPECT_EQ(b.facts.pid, 0);
    EXPECT_TRUE(b.isFocused);
    EXPECT_FALSE(b.isHidden);
}

TEST(ToplevelDesktop, TakesWhatWasOpenedLastForTheFrontMostAsLongAsNothingElseIsKnown) {
    FakeCompositor compositor;
    compositor.open("a");
    compositor.open("b");
    compositor.open("c");
    compositor.focus("a");
    EXPECT_THAT(appIds(desktopOf(compositor)->read()), ElementsAre("a", "c", "b"));
}

TEST(ToplevelDesktop, HasTheWindowsInTheOrderOfTheirUse) {
    FakeCompositor compositor;
    for (const char *const appId : {"a", "b", "c"})
        compositor.open(appId);
    const auto desktop = desktopOf(compositor);
    compositor.focus("a");
    compositor.focus("b");
    // Nobody has looked in between.
    EXPECT_THAT(appIds(desktop->read()), ElementsAre("b", "a", "c"));
    compositor.focus("c");
    compositor.close("b");
    EXPECT_THAT(appIds(desktop->read()), ElementsAre("c", "a"));
}

TEST(ToplevelDesktop, AnswersWhatWasAskedAhead) {
    FakeCompositor compositor;
    compositor.open("a");
    const auto desktop = desktopOf(compositor);
    desktop->askAhead();
    desktop->askAhead();
    EXPECT_THAT(appIds(desktop->readAsked()), ElementsAre("a"));
    compositor.open("b");
    EXPECT_THAT(appIds(desktop->readAsked()), ElementsAre("b", "a"));
}

TEST(ToplevelDesktop, TellsDialogs) {
    FakeCompositor compositor;
    compositor.open("a");
    compositor.open("b");
    const auto desktop = desktopOf(compositor);
    compositor.setParent("b", "a");
    EXPECT_EQ(windowOf(u"b"_s, *desktop).facts.type, WindowType::Dialog);
    EXPECT_EQ(windowOf(u"b"_s, *desktop).facts.transientFor, windowOf(u"a"_s, *desktop).id);
}

TEST(ToplevelDesktop, MinimisesAndBringsBack) {
    FakeCompositor compositor;
    compositor.open("other");
    compositor.open("a");
    compositor.open("b");
    const auto desktop = desktopOf(compositor);
    const std::array ids{windowOf(u"a"_s, *desktop).id, windowOf(u"b"_s, *desktop).id};
    EXPECT_TRUE(desktop->hide(ids));
    EXPECT_THAT(compositor.takeRequests(), ElementsAre("minimize a", "minimize b"));
    EXPECT_TRUE(windowOf(u"a"_s, *desktop).isHidden);
    EXPECT_TRUE(desktop->bringForward(ids, ids[1]));
    EXPECT_THAT(appIds(desktop->read()), ElementsAre("b", "a", "other"));
    EXPECT_THAT(compositor.takeRequests(), ElementsAre("restore a", "restore b", "activate b"));
    EXPECT_FALSE(windowOf(u"a"_s, *desktop).isHidden);
    EXPECT_TRUE(windowOf(u"b"_s, *desktop).isFocused);
}

TEST(ToplevelDesktop, LeavesWhatCannotBeMinimisedForTheWindowUsedBefore) {
    FakeCompositor compositor(FakeCompositor::Minimizing::Ignores);
    compositor.open("other");
    compositor.open("before");
    compositor.open("a");
    compositor.open("b");
    const auto desktop = desktopOf(compositor);
    const std::array ids{windowOf(u"a"_s, *desktop).id, windowOf(u"b"_s, *desktop).id};
    EXPECT_TRUE(desktop->hide(ids));
    EXPECT_THAT(compositor.takeRequests(),
                ElementsAre("minimize a", "minimize b", "activate before"));
}

TEST(ToplevelDesktop, LeavesTheFocusWhereItIsWhenWhatIsHiddenDoesNotHaveIt) {
    FakeCompositor compositor(FakeCompositor::Minimizing::Ignores);
    compositor.open("a");
    compositor.open("b");
    const auto desktop = desktopOf(compositor);
    const std::array ids{windowOf(u"a"_s, *desktop).id};
    EXPECT_TRUE(desktop->hide(ids));
    EXPECT_THAT(compositor.takeRequests(), ElementsAre("minimize a"));
}

TEST(ToplevelDesktop, PassesOverWhatIsGone) {
    FakeCompositor compositor;
    compositor.open("a");
    const auto desktop = desktopOf(compositor);
    const std::array ids{windowOf(u"a"_s, *desktop).id};
    compositor.close("a");
    EXPECT_TRUE(desktop->hide(ids));
    EXPECT_TRUE(desktop->bringForward(ids, ids[0]));
    EXPECT_THAT(desktop->read(), IsEmpty());
}

TEST(ToplevelDesktop, WaitsForACompositorThatHangsOnlyForAWhile) {
    FakeCompositor compositor;
    compositor.open("a");
    const auto desktop = desktopOf(compositor, std::chrono::milliseconds(20));
    const std::array ids{windowOf(u"a"_s, *desktop).id};
    compositor.hang();
    EXPECT_THAT(appIds(desktop->read()), ElementsAre("a"));
    desktop->askAhead();
    EXPECT_THAT(appIds(desktop->readAsked()), ElementsAre("a"));
    EXPECT_TRUE(desktop->hide(ids));
    EXPECT_TRUE(desktop->bringForward({}, ids[0]));
}

TEST(ToplevelDesktop, HasTheWindowsOfACompositorThatHungUpUntilItIsLookedFor) {
    FakeCompositor compositor;
    compositor.open("a");
    const auto desktop = desktopOf(compositor);
    compositor.hangUp();
    EXPECT_THAT(appIds(desktop->read()), ElementsAre("a"));
    EXPECT_FALSE(desktop->bringForward({}, 1));
}

TEST(ToplevelDesktop, HasNoWindowsWithoutACompositor) {
    ToplevelDesktop nowhere(u"/nowhere/wayland-0"_s, ToplevelProtocol::ForeignToplevelManagement);
    EXPECT_EQ(nowhere.version(), 0U);
    nowhere.askAhead();
    EXPECT_THAT(nowhere.readAsked(), IsEmpty());
    EXPECT_FALSE(nowhere.bringForward({}, 1));
    EXPECT_FALSE(nowhere.hide({}));
}

TEST(ToplevelDesktop, HasNothingToDoWithACompositorThatDoesNotOfferTheProtocol) {
    const FakeCompositor compositor;
    ToplevelDesktop plasma(compositor.socketPath(), ToplevelProtocol::PlasmaWindowManagement);
    EXPECT_EQ(plasma.version(), 0U);
    EXPECT_THAT(plasma.read(), IsEmpty());
}

class ListeningToplevelDesktopTest : public ::testing::Test {
protected:
    void listen() {
        desktop_->listen({.loop = *loop_,
                          .isWindowAwaited = [this] { return isAwaited_.load(); },
                          .windowsChanged = [this] { ++changes_; }});
    }

    FakeCompositor compositor_;
    const std::unique_ptr<ToplevelDesktop> desktop_ = desktopOf(compositor_);
    std::atomic<bool> isAwaited_{false};
    std::atomic<int> changes_{0};
    /// Ends before the desktop does.
    std::unique_ptr<BackgroundLoop> loop_ = std::make_unique<BackgroundLoop>();
};

TEST_F(ListeningToplevelDesktopTest, TellsOfNewWindowsAsLongAsOneIsAwaited) {
    isAwaited_ = true;
    listen();
    compositor_.open("a");
    EXPECT_TRUE(kestrelbay::testing::waitUntil([this] { return changes_ > 0; }));
}

TEST_F(ListeningToplevelDesktopTest, FindsACompositorAgainThatHungUp) {
    compositor_.open("a");
    listen();
    const std::int64_t before = windowOf(u"a"_s, *desktop_).id;
    compositor_.hangUp();
    // Whoever still has the old number must not reach another window by it.
    EXPECT_TRUE(kestrelbay::testing::waitUntil([&] {
        const std::int64_t now = windowOf(u"a"_s, *desktop_).id;
        return now != 0 && now != before;
    }));
}

TEST_F(ListeningToplevelDesktopTest, LosesNoUseOfWindowsByMoreEventsThanTheSocketHolds) {
    for (const char *const appId : {"a", "b", "c", "d"})
        compositor_.open(appId);
    listen();
    const std::int64_t before = windowOf(u"a"_s, *desktop_).id;
    for (const char *const appId : {"c", "b", "a"})
        compositor_.focus(appId);
    constexpr int kFarTooMany = 3000;
    for (int i = 0; i < kFarTooMany; ++i)
        compositor_.setTitle("b", QByteArray::number(i));
    EXPECT_TRUE(kestrelbay::testing::waitUntil([&] {
        const std::int64_t now = windowOf(u"a"_s, *desktop_).id;
        return now != 0 && now != before;
    }));
    EXPECT_THAT(appIds(desktop_->read()), ElementsAre("a", "b", "c", "d"));
}

}  // namespace
}  // namespace kestrelbay::wayland
