#include "platform/macos/desktop/MacServices.h"

#include <gtest/gtest.h>

#include "fakes/FakeDesktop.h"
#include "fakes/MacJournal.h"
#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::macos {
namespace {

TEST(MacSystemSettings, LeaveLightAndDarkToQt) {
    MacSystemSettings settings;
    EXPECT_EQ(settings.colorScheme(), std::nullopt);
    EXPECT_EQ(settings.accentColor(), std::nullopt);
    EXPECT_FALSE(settings.isContrastHigh());
    settings.setAppearanceHandler([] { ADD_FAILURE(); });
}

TEST(MacSystemSettings, OpenThePaneByItsUrl) {
    FakeDesktop desktop;
    MacSystemSettings settings;
    EXPECT_TRUE(settings.openAccessibilityPane());
    EXPECT_EQ(takeCalls(), QStringList{u"openURL x-apple.systempreferences:"
                                       "com.apple.preference.security?Privacy_Accessibility"_s});
    desktop.refuseRequests(u"no"_s);
    EXPECT_FALSE(settings.openAccessibilityPane());
}

}  // namespace
}  // namespace kestrelbay::macos
