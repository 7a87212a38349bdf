#include <gtest/gtest.h>

#include "fakes/FakeColors.h"
#include "platform/macos/desktop/MacServices.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::macos {
namespace {

class MacSystemTintsTest : public ::testing::Test {
protected:
    ~MacSystemTintsTest() override { setDarkAppearance(false); }

    MacSystemTints tints_;
};

TEST_F(MacSystemTintsTest, AreTheColoursOfThoseMeanings) {
    setSystemColor(u"controlAccentColor"_s, Qt::magenta, Qt::magenta);
    setSystemColor(u"systemGreenColor"_s, Qt::green, Qt::green);
    setSystemColor(u"systemOrangeColor"_s, QColor(255, 128, 0), QColor(255, 128, 0));
    setSystemColor(u"systemRedColor"_s, Qt::red, Qt::red);
    EXPECT_EQ(tints_.accent().rgb(), QColor(Qt::magenta).rgb());
    EXPECT_EQ(tints_.green().rgb(), QColor(Qt::green).rgb());
    EXPECT_EQ(tints_.orange().rgb(), qRgb(255, 128, 0));
    EXPECT_EQ(tints_.red().rgb(), QColor(Qt::red).rgb());
}

TEST_F(MacSystemTintsTest, AreThoseOfTheAppearanceInForce) {
    setSystemColor(u"controlAccentColor"_s, Qt::blue, Qt::cyan);
    EXPECT_EQ(tints_.accent().rgb(), QColor(Qt::blue).rgb());
    setDarkAppearance(true);
    EXPECT_EQ(tints_.accent().rgb(), QColor(Qt::cyan).rgb());
}

}  // namespace
}  // namespace kestrelbay::macos
