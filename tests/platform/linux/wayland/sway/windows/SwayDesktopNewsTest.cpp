#include <atomic>
#include <optional>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

#include "platform/linux/glib/BackgroundLoop.h"
#include "platform/linux/wayland/sway/windows/SwayDesktopFixture.h"
#include "support/Poll.h"

namespace kestrelbay::sway {
namespace {

using kestrelbay::testing::waitUntil;
using ::testing::ElementsAre;
using ::testing::Optional;
using ::testing::ResultOf;

/// A desktop that hears what happens.
class SwayDesktopNewsTest : public SwayDesktopFixture {
protected:
    SwayDesktopNewsTest() {
        show({workspace("1", {window(4, "a", true), window(5, "b")}),
              workspace("2", {window(6, "a")})});
        desktop_->listen({.loop = *loop_,
                          .isWindowAwaited = [] { return false; },
                          .windowsChanged =
                              [this] {
                                  if (mayLook_)
                                      std::ignore = desktop_->read();
                              }});
    }
    ~SwayDesktopNewsTest() override { loop_.reset(); }

    [[nodiscard]] bool becomeKnown() {
        return waitUntil([this] { return desktop_->known().has_value(); });
    }
    void tell(MessageType type, const QByteArray &json) { sway_.tell(toBytes({type, json})); }
    void tellOf(const QByteArray &change, const QByteArray &window) {
        tell(MessageType::WindowEvent,
             R"({"change": ")" + change + R"(", "container": )" + window + '}');
    }
    /// What a press does that comes after all that was told.
    [[nodiscard]] std::optional<std::vector<wayland::DesktopWindow>> knownAtPress() {
        std::optional<std::vector<wayland::DesktopWindow>> known;
        bool isPressed = false;
        const auto connection = QObject::connect(events_.get(), &SwayEvents::happened,
                                                 [&](const SwayIpc::Event &event) {
                                                     if (event.type != MessageType::BindingEvent)
                                                         return;
                                                     isPressed = true;
                                                     desktop_->askAhead();
                                                     known = desktop_->known();
                                                 });
        tell(MessageType::BindingEvent, "{}");
        EXPECT_TRUE(waitUntil([&] { return isPressed; }));
        QObject::disconnect(connection);
        return known;
    }
    [[nodiscard]] static auto inOrder(auto... ids) {
        return Optional(ResultOf(&SwayDesktopFixture::idsOf, ElementsAre(ids...)));
    }
    [[nodiscard]] static auto focused(const std::vector<wayland::DesktopWindow> &windows) {
        std::vector<std::int64_t> ids;
        for (const wayland::DesktopWindow &window : windows) {
            if (window.isFocused)
                ids.push_back(window.id);
        }
        return ids;
    }

    std::atomic<bool> mayLook_ = true;

private:
    std::optional<BackgroundLoop> loop_{std::in_place};
};

TEST_F(SwayDesktopNewsTest, AsksNothingAtPressesWhenOnlyTheFocusHasChanged) {
    ASSERT_TRUE(becomeKnown());
    const int asked = treesAsked();
    EXPECT_THAT(knownAtPress(), inOrder(4, 5, 6));
    tellOf("focus", window(6, "a", true));
    tellOf("title", window(5, "b"));
    auto known = knownAtPress();
    EXPECT_THAT(known, inOrder(6, 4, 5));
    EXPECT_THAT(focused(*known), ElementsAre(6));
    tellOf("focus", window(5, "b", true));
    EXPECT_THAT(knownAtPress(), inOrder(5, 6, 4));
    tell(MessageType::WorkspaceEvent, R"({"change": "reload", "current": null})");
    EXPECT_THAT(knownAtPress(), inOrder(5, 6, 4));
    EXPECT_EQ(treesAsked(), asked);
}

TEST_F(SwayDesktopNewsTest, LooksAheadWhenWindowsComeGoAndMove) {
    ASSERT_TRUE(becomeKnown());
    for (const char *change : {"new", "move", "close"}) {
        mayLook_ = false;
        tellOf(change, window(5, "b"));
        EXPECT_EQ(knownAtPress(), std::nullopt) << change;
        mayLook_ = true;
        tellOf(change, window(5, "b"));
        ASSERT_TRUE(becomeKnown()) << change;
    }
    show({workspace("1", {window(4, "a"), window(7, "b", true)})});
    tellOf("new", window(7, "b"));
    EXPECT_TRUE(waitUntil([&] {
        const auto known = desktop_->known();
        return known && idsOf(*known) == std::vector<std::int64_t>{7, 4};
    }));
}

TEST_F(SwayDesktopNewsTest, KnowsNothingAfterItsOwnRequestsUntilItHasLooked) {
    ASSERT_TRUE(becomeKnown());
    const int asked = treesAsked();
    const std::vector<std::int64_t> hidden{5};
    desktop_->hide(hidden);
    EXPECT_EQ(treesAsked(), asked);
    EXPECT_TRUE(becomeKnown());
    EXPECT_GT(treesAsked(), asked);
}

TEST_F(SwayDesktopNewsTest, PutsWindowsOfAllWorkspacesInTheOrderOfTheirUse) {
    ASSERT_TRUE(becomeKnown());
    // The tree does not tell which of two workspaces' windows was used last.
    tellOf("focus", window(6, "a", true));
    tellOf("focus", window(5, "b", true));
    tellOf("focus", window(4, "a", true));
    EXPECT_THAT(knownAtPress(), inOrder(4, 5, 6));
    EXPECT_THAT(order(), ElementsAre(4, 5, 6));
    show({workspace("1", {window(4, "a"), window(5, "b", true)}),
          workspace("2", {window(7, "a"), window(6, "a")})});
    EXPECT_THAT(order(), ElementsAre(5, 4, 6, 7));
}

TEST_F(SwayDesktopNewsTest, KnowsNothingWithoutNewsAndAllAgainWithThem) {
    ASSERT_TRUE(becomeKnown());
    sway_.hangUp();
    EXPECT_TRUE(waitUntil([&] { return !desktop_->known(); }));
    show({workspace("1", {window(8, "a", true)})});
    EXPECT_TRUE(waitUntil([&] { return order() == std::vector<std::int64_t>{8}; }));
    EXPECT_EQ(desktop_->known(), std::nullopt) << "it may have missed something since";
    ASSERT_TRUE(events_->begin());
    ASSERT_TRUE(becomeKnown());
    EXPECT_THAT(knownAtPress(), inOrder(8));
}

}  // namespace
}  // namespace kestrelbay::sway
