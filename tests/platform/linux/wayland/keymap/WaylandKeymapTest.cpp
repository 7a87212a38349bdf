#include "platform/linux/wayland/keymap/WaylandKeymap.h"

#include <cstdlib>

#include <QCoreApplication>

#include <gtest/gtest.h>

#include "platform/linux/wayland/plasma/Keymaps.h"
#include "platform/linux/wayland/toplevels/FakeCompositor.h"
#include "support/Poll.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::wayland {
namespace {

using kestrelbay::testing::FakeCompositor;
using kestrelbay::testing::waitUntil;

/// A keymap of these layouts.
QByteArray textOf(const char *layouts) {
    char *const text = xkb_keymap_get_as_string(kestrelbay::testing::makeKeymap(layouts).get(),
                                                XKB_KEYMAP_FORMAT_TEXT_V1);
    QByteArray copy(text);
    std::free(text);
    return copy;
}

class WaylandKeymapTest : public ::testing::Test {
protected:
    FakeCompositor compositor_;
    int changes_ = 0;

private:
    int argumentCount_ = 0;
    QCoreApplication application_{argumentCount_, nullptr};
};

TEST_F(WaylandKeymapTest, HasTheKeymapOfTheKeyboardAndTellsOfAnother) {
    compositor_.setKeymap(textOf("us"));
    const WaylandKeymap keymap(compositor_.socketPath(), [this] { ++changes_; });
    ASSERT_NE(keymap.get(), nullptr);
    EXPECT_EQ(xkb_keymap_num_layouts(keymap.get()), 1U);
    EXPECT_EQ(changes_, 0);
    compositor_.setKeymap(textOf("us,de"));
    EXPECT_TRUE(waitUntil([this] { return changes_ == 1; }));
    EXPECT_EQ(xkb_keymap_num_layouts(keymap.get()), 2U);
}

TEST_F(WaylandKeymapTest, KeepsTheKeymapOfACompositorThatHungUp) {
    compositor_.setKeymap(textOf("us,de"));
    const WaylandKeymap keymap(compositor_.socketPath(), [this] { ++changes_; });
    QCoreApplication::processEvents();
    compositor_.hangUp();
    QCoreApplication::processEvents();
    ASSERT_NE(keymap.get(), nullptr);
    EXPECT_EQ(xkb_keymap_num_layouts(keymap.get()), 2U);
}

TEST_F(WaylandKeymapTest, HasNoneWithoutACompositorNorForWhatIsNone) {
    EXPECT_EQ(WaylandKeymap(u"/nowhere/wayland-0"_s, [] {}).get(), nullptr);
    compositor_.setKeymap("no keymap");
    EXPECT_EQ(WaylandKeymap(compositor_.socketPath(), [] {}).get(), nullptr);
}

}  // namespace
}  // namespace kestrelbay::wayland
