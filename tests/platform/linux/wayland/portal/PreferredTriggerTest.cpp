#include "platform/linux/wayland/portal/PreferredTrigger.h"

#include <gtest/gtest.h>

#include "fixtures/QtPrinters.h"
#include "platform/linux/x11/keymap/KeyboardState.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::portal {
namespace {

constexpr KeyCode kT{17}, kReturn{36}, kKeypad1{83}, kUnknown{127};

TEST(PreferredTrigger, NamesModifiersAndTheSymbolOfTheKey) {
    const SymbolNames names{{kT, u"t"_s}, {kReturn, u"Return"_s}};
    EXPECT_EQ(preferredTrigger({kT, modifier::kCommand}, names), u"LOGO+t"_s);
    EXPECT_EQ(preferredTrigger({kReturn, modifier::kControl | modifier::kOption | modifier::kShift |
                                             modifier::kCommand},
                               names),
              u"CTRL+ALT+SHIFT+LOGO+Return"_s);
    EXPECT_EQ(preferredTrigger({kT, {}}, names), u"t"_s);
}

TEST(PreferredTrigger, IsEmptyForAKeyWithoutAName) {
    EXPECT_EQ(preferredTrigger({kUnknown, modifier::kCommand}, {{kT, u"t"_s}}), QString());
}

TEST(PreferredTrigger, HasNamesWithoutAnXServerToo) {
    const SymbolNames names = x11::readSymbolNames(u":no-such-display"_s);
    EXPECT_EQ(preferredTrigger({kT, modifier::kOption}, names), u"ALT+t"_s);
    EXPECT_EQ(preferredTrigger({kReturn, {}}, names), u"Return"_s);
    EXPECT_EQ(preferredTrigger({kKeypad1, {}}, names), u"KP_End"_s);
}

}  // namespace
}  // namespace kestrelbay::portal
