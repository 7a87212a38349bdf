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
    setSystemColor(u"alternateSelectedControlTextColor"_s, Qt::white, Qt::white);
    setSystemColor(u"secondaryLabelColor"_s, Qt::darkGray, Qt::darkGray);
    setSystemColor(u"tertiaryLabelColor"_s, Qt::gray, Qt::gray);
    setSystemColor(u"separatorColor"_s, Qt::lightGray, Qt::lightGray);
    EXPECT_EQ(tints_.accent().rgb(), QColor(Qt::magenta).rgb());
    EXPECT_EQ(tints_.onAccent().rgb(), QColor(Qt::white).rgb());
    EXPECT_EQ(tints_.secondaryLabel().rgb(), QColor(Qt::darkGray).rgb());
    EXPECT_EQ(tints_.tertiaryLabel().rgb(), QColor(Qt::gray).rgb());
    EXPECT_EQ(tints_.separator().rgb(), QColor(Qt::lightGray).rgb());
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
