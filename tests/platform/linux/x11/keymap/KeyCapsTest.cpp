#include "platform/linux/x11/keymap/KeyCaps.h"

#include <gtest/gtest.h>

#include "fixtures/QtPrinters.h"
#include "platform/linux/x11/keymap/XkbOwners.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::x11 {
namespace {

constexpr KeyCode kQ{12}, kW{13}, kT{17}, k2{19}, kMinus{27}, kLeftBracket{33}, kI{34}, kSpace{49},
    kBackspace{51}, kKeypad1{83};

/// What the first of the named layouts prints, or the one of this index.
class Caps {
public:
    explicit Caps(const char *layouts, const char *variant = "", xkb_layout_index_t index = 0) {
        const xkb_rule_names names{.rules = "evdev",
                                   .model = "pc105",
                                   .layout = layouts,
                                   .variant = variant,
                                   .options = ""};
        const XkbOwner<xkb_context> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
        const XkbOwner<xkb_keymap> keymap(
            xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
        if (keymap)
            caps_ = keyCaps(*keymap, index);
    }
    QString operator[](KeyCode code) const {
        const auto found = caps_.find(code);
        return found == caps_.end() ? QString() : found->second;
    }

private:
    std::map<KeyCode, QString> caps_;
};

TEST(KeyCaps, AreThoseOfTheUsLayout) {
    const Caps us("us");
    EXPECT_EQ(us[key::kA], u"A"_s);
    EXPECT_EQ(us[kT], u"T"_s);
    EXPECT_EQ(us[k2], u"2"_s);
    EXPECT_EQ(us[kMinus], u"-"_s);
}

TEST(KeyCaps, AreThoseOfOtherLatinLayouts) {
    const Caps azerty("fr");
    EXPECT_EQ(azerty[key::kA], u"Q"_s);
    EXPECT_EQ(azerty[kW], u"Z"_s);
    EXPECT_EQ(azerty[k2], u"2"_s) << "é without Shift";
    EXPECT_EQ(azerty[kLeftBracket], u"^"_s) << "a dead key";
    const Caps dvorak("us", "dvorak");
    EXPECT_EQ(dvorak[kQ], u"'"_s);
    EXPECT_EQ(dvorak[kT], u"Y"_s);
    EXPECT_EQ(Caps("de")[kMinus], u"ß"_s);
    EXPECT_EQ(Caps("tr")[kI], u"I"_s) << "the dotless one";
}

TEST(KeyCaps, AreThoseOfTheLayoutInUse) {
    EXPECT_EQ(Caps("us,ru", ",", 0)[kT], u"T"_s);
    EXPECT_EQ(Caps("us,ru", ",", 1)[kT], u"Е"_s);
}

TEST(KeyCaps, AreOfKeysThatTypeCharactersOnly) {
    const Caps us("us");
    for (const KeyCode code : {kSpace, kBackspace, kKeypad1, key::kEscape, key::kLeftCommand})
        EXPECT_EQ(us[code], QString()) << toNumber(code);
}

}  // namespace
}  // namespace kestrelbay::x11
