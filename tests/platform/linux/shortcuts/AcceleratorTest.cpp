#include "platform/linux/shortcuts/Accelerator.h"

#include <gtest/gtest.h>

#include <xkbcommon/xkbcommon-keysyms.h>

using namespace Qt::StringLiterals;

namespace kestrelbay {
namespace {

constexpr auto kControlOption = modifier::kControl | modifier::kOption;

TEST(Accelerators, AreReadAsGtkHasThem) {
    EXPECT_EQ(gtkAccelerator(u"<Super>t"_s), (Accelerator{modifier::kCommand, XKB_KEY_t}));
    EXPECT_EQ(gtkAccelerator(u"<Shift><super>T"_s),
              (Accelerator{modifier::kShift | modifier::kCommand, XKB_KEY_t}));
    EXPECT_EQ(gtkAccelerator(u"<Primary><Alt>Page_Up"_s),
              (Accelerator{kControlOption, XKB_KEY_Page_Up}));
    EXPECT_EQ(gtkAccelerator(u"<Ctrl><Mod1>Delete"_s),
              (Accelerator{kControlOption, XKB_KEY_Delete}));
    EXPECT_EQ(gtkAccelerator(u"Super_L"_s), (Accelerator{{}, XKB_KEY_Super_L}));
    EXPECT_EQ(gtkAccelerator(u"<Alt>Above_Tab"_s), (Accelerator{modifier::kOption, XKB_KEY_grave}));
    for (const QString &none : {u""_s, u"disabled"_s, u"<Super"_s, u"<Hyper>t"_s, u"<Super>"_s})
        EXPECT_FALSE(gtkAccelerator(none)) << none.toStdString();
}

TEST(Accelerators, AreReadAsQtHasThem) {
    EXPECT_EQ(qtAccelerator(u"Meta+T"_s), (Accelerator{modifier::kCommand, XKB_KEY_t}));
    EXPECT_EQ(qtAccelerator(u"Ctrl+Alt+PgUp"_s), (Accelerator{kControlOption, XKB_KEY_Page_Up}));
    EXPECT_EQ(qtAccelerator(u"Meta++"_s), (Accelerator{modifier::kCommand, XKB_KEY_plus}));
    EXPECT_EQ(qtAccelerator(u"Alt+F4"_s), (Accelerator{modifier::kOption, XKB_KEY_F4}));
    for (const QString &none : {u""_s, u"none"_s, u"Meta+"_s, u"Launch (1)+T"_s})
        EXPECT_FALSE(qtAccelerator(none)) << none.toStdString();
}

TEST(Accelerators, MeanAKeyThatHasTheirSignSomewhere) {
    const LookedForKey key{modifier::kCommand, {XKB_KEY_Cyrillic_ie, XKB_KEY_t}};
    EXPECT_TRUE(key.isMeantBy(gtkAccelerator(u"<Super>t"_s)));
    EXPECT_FALSE(key.isMeantBy(gtkAccelerator(u"<Super><Shift>t"_s)));
    EXPECT_FALSE(key.isMeantBy(gtkAccelerator(u"<Super>e"_s)));
    EXPECT_FALSE(key.isMeantBy(std::nullopt));
}

}  // namespace
}  // namespace kestrelbay
