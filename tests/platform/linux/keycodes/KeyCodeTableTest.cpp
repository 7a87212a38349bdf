#include "platform/linux/keycodes/KeyCodeTable.h"

#include <set>

#include <gtest/gtest.h>

#include "keys/KeyCode.h"

namespace kestrelbay {
namespace {

TEST(KeyCodeTable, IsTwoWay) {
    int count = 0;
    std::set<XKeycode> seen;
    for (unsigned number = 0; number <= 0xFFFF; ++number) {
        const KeyCode code{static_cast<std::uint16_t>(number)};
        const auto x = toXKeycode(code);
        if (!x)
            continue;
        ++count;
        EXPECT_TRUE(seen.insert(*x).second) << number << " shares X key code " << int{*x};
        EXPECT_EQ(toKeyCode(*x), code) << number;
    }
    EXPECT_EQ(count, 119);
}

TEST(KeyCodeTable, KnowsEveryModifierKey) {
    // evdev KEY_… + 8
    EXPECT_EQ(toXKeycode(key::kLeftCommand), 133);
    EXPECT_EQ(toXKeycode(key::kRightCommand), 134);
    EXPECT_EQ(toXKeycode(key::kLeftShift), 50);
    EXPECT_EQ(toXKeycode(key::kRightShift), 62);
    EXPECT_EQ(toXKeycode(key::kLeftOption), 64);
    EXPECT_EQ(toXKeycode(key::kRightOption), 108);
    EXPECT_EQ(toXKeycode(key::kLeftControl), 37);
    EXPECT_EQ(toXKeycode(key::kRightControl), 105);
}

TEST(KeyCodeTable, GoesByPosition) {
    EXPECT_EQ(toXKeycode(KeyCode{0}), 38);     // A
    EXPECT_EQ(toXKeycode(KeyCode{17}), 28);    // T
    EXPECT_EQ(toXKeycode(KeyCode{16}), 29);    // Y, a German Z
    EXPECT_EQ(toXKeycode(KeyCode{49}), 65);    // Space
    EXPECT_EQ(toXKeycode(KeyCode{51}), 22);    // Delete is Backspace
    EXPECT_EQ(toXKeycode(KeyCode{117}), 119);  // Forward Delete
    EXPECT_EQ(toXKeycode(KeyCode{122}), 67);   // F1
    EXPECT_EQ(toXKeycode(KeyCode{126}), 111);  // Up
}

TEST(KeyCodeTable, HasNoValueForKeysOfOneSystemOnly) {
    EXPECT_FALSE(toXKeycode(KeyCode{63}));  // Fn never reaches X
    EXPECT_FALSE(toXKeycode(KeyCode{52}));
    EXPECT_FALSE(toXKeycode(KeyCode{999}));
    EXPECT_FALSE(toKeyCode(0));
    EXPECT_FALSE(toKeyCode(7));
    EXPECT_FALSE(toKeyCode(107));  // Print
    EXPECT_FALSE(toKeyCode(255));
}

}  // namespace
}  // namespace kestrelbay
