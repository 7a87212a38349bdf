#include "platform/linux/wayland/plasma/KeyNumbers.h"

#include <QKeySequence>
#include <QStringList>

#include <gtest/gtest.h>

#include "platform/linux/wayland/plasma/Keymaps.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::plasma {
namespace {

using kestrelbay::testing::makeKeymap;

constexpr ModifierFlags kCommandShift = modifier::kCommand | modifier::kShift;

/// As Plasma's settings write it.
QString words(const char *layouts, std::uint16_t keyCode, ModifierFlags modifiers,
              xkb_layout_index_t layout = 0) {
    const auto keymap = makeKeymap(layouts);
    QStringList all;
    for (const int number : keyNumbersOf({KeyCode{keyCode}, modifiers}, *keymap, layout))
        all.append(QKeySequence(number).toString());
    return all.join(u' ');
}

// What KWin 5.27 makes of real presses was tried key by key.
TEST(KeyNumbersTest, AreWhatTheKeyTypes) {
    EXPECT_EQ(words("us", 17, modifier::kCommand), u"Meta+T"_s);
    EXPECT_EQ(words("us", 17, modifier::kControl | modifier::kOption), u"Ctrl+Alt+T"_s);
    EXPECT_EQ(words("us", 96, {}), u"F5"_s);
    EXPECT_EQ(words("us", 111, {}), u"F12"_s);
    EXPECT_EQ(words("us", 36, modifier::kCommand), u"Meta+Return"_s);
    EXPECT_EQ(words("us", 49, modifier::kCommand), u"Meta+Space"_s);
    EXPECT_EQ(words("us", 116, modifier::kOption), u"Alt+PgUp"_s);
    EXPECT_EQ(words("us", 41, modifier::kCommand), u"Meta+;"_s);
}

TEST(KeyNumbersTest, HaveNoShiftWhereItMakesAnotherSymbol) {
    EXPECT_EQ(words("us", 17, kCommandShift), u"Meta+Shift+T"_s);
    EXPECT_EQ(words("us", 19, kCommandShift), u"Meta+@"_s);
    EXPECT_EQ(words("us", 41, kCommandShift), u"Meta+:"_s);
    EXPECT_EQ(words("us", 122, kCommandShift), u"Meta+Shift+F1"_s);
    EXPECT_EQ(words("us", 48, kCommandShift), u"Meta+Shift+Tab"_s);
    EXPECT_EQ(words("fr", 19, kCommandShift), u"Meta+2"_s);
}

TEST(KeyNumbersTest, FollowTheLayout) {
    EXPECT_EQ(words("us,de", 16, modifier::kCommand, 0), u"Meta+Y"_s);
    EXPECT_EQ(words("us,de", 16, modifier::kCommand, 1), u"Meta+Z"_s);
    EXPECT_EQ(words("de", 41, modifier::kCommand), u"Meta+Ö"_s);
}

TEST(KeyNumbersTest, AreTwoInAnotherAlphabet) {
    EXPECT_EQ(words("us,ru", 17, modifier::kCommand, 1), u"Meta+Е Meta+T"_s);
    EXPECT_EQ(words("us,ru", 17, modifier::kCommand, 0), u"Meta+T"_s);
    EXPECT_EQ(words("ru", 17, modifier::kCommand), u"Meta+Е"_s);
}

TEST(KeyNumbersTest, AreThoseOfNumLockOnAndOffOnTheNumericPad) {
    EXPECT_EQ(words("us", 87, modifier::kCommand), u"Meta+Clear Meta+5"_s);
    EXPECT_EQ(words("us", 76, modifier::kCommand), u"Meta+Enter"_s);
    EXPECT_EQ(words("us", 69, modifier::kCommand), u"Meta++"_s);
}

TEST(KeyNumbersTest, AreNoneForAKeyOfOtherKeyboards) {
    EXPECT_EQ(words("us", 63, modifier::kCommand), QString());
}

}  // namespace
}  // namespace kestrelbay::plasma
