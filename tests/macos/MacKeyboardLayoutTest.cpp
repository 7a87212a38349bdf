#include "platform/macos/desktop/MacKeyboardLayout.h"

#include <gtest/gtest.h>

#include "fakes/InputSources.h"
#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::macos {
namespace {

constexpr KeyCode kT{17}, kTwo{19}, kEscape{53};

TEST(MacKeyboardLayout, PrintsWhatTheKeyTypes) {
    selectLayout({{17, {u"е"_s, u"Е"_s}}, {19, {u"é"_s, u"2"_s}}, {53, {u"\x1b"_s, u"\x1b"_s}}});
    const MacKeyboardLayout layout;
    EXPECT_EQ(layout.printedOn(kT), u"Е"_s);
    EXPECT_EQ(layout.printedOn(kTwo), u"2"_s);
    EXPECT_EQ(layout.printedOn(kEscape), QString());
    EXPECT_EQ(layout.printedOn(KeyCode{200}), QString());
}

TEST(MacKeyboardLayout, PrintsNothingWithoutALayout) {
    selectSourceWithoutLayout();
    EXPECT_EQ(MacKeyboardLayout().printedOn(kT), QString());
}

TEST(MacKeyboardLayout, TellsOfAnotherOneUntilItGoes) {
    selectLayout({});
    QStringList told;
    {
        MacKeyboardLayout layout;
        selectLayout({{17, {u"y"_s, u"Y"_s}}});
        layout.setChangeHandler([&] { told.append(layout.printedOn(kT)); });
        selectLayout({{17, {u"t"_s, u"T"_s}}});
        layout.setChangeHandler({});
        selectLayout({});
        EXPECT_EQ(layoutObservers(), 1U);
    }
    EXPECT_EQ(layoutObservers(), 0U);
    EXPECT_EQ(told, QStringList{u"T"_s});
}

}  // namespace
}  // namespace kestrelbay::macos
