#include "keys/KeyCode.h"

namespace kestrelbay {

namespace {

struct NamedKey {
    KeyCode keyCode;
    const char16_t *name;
};

// Sorted by key code. Return (36) has no name on purpose; Enter of the numeric
// pad (76) has.
constexpr auto kNamedKeys = std::to_array<NamedKey>({
    {KeyCode{0}, u"A"},      {KeyCode{1}, u"S"},     {KeyCode{2}, u"D"},
    {KeyCode{3}, u"F"},      {KeyCode{4}, u"H"},     {KeyCode{5}, u"G"},
    {KeyCode{6}, u"Z"},      {KeyCode{7}, u"X"},     {KeyCode{8}, u"C"},
    {KeyCode{9}, u"V"},      {KeyCode{11}, u"B"},    {KeyCode{12}, u"Q"},
    {KeyCode{13}, u"W"},     {KeyCode{14}, u"E"},    {KeyCode{15}, u"R"},
    {KeyCode{16}, u"Y"},     {KeyCode{17}, u"T"},    {KeyCode{18}, u"1"},
    {KeyCode{19}, u"2"},     {KeyCode{20}, u"3"},    {KeyCode{21}, u"4"},
    {KeyCode{22}, u"6"},     {KeyCode{23}, u"5"},    {KeyCode{24}, u"="},
    {KeyCode{25}, u"9"},     {KeyCode{26}, u"7"},    {KeyCode{27}, u"-"},
    {KeyCode{28}, u"8"},     {KeyCode{29}, u"0"},    {KeyCode{30}, u"]"},
    {KeyCode{31}, u"O"},     {KeyCode{32}, u"U"},    {KeyCode{33}, u"["},
    {KeyCode{34}, u"I"},     {KeyCode{35}, u"P"},    {KeyCode{37}, u"L"},
    {KeyCode{38}, u"J"},     {KeyCode{39}, u"'"},    {KeyCode{40}, u"K"},
    {KeyCode{41}, u";"},     {KeyCode{42}, u"\\"},   {KeyCode{43}, u","},
    {KeyCode{44}, u"/"},     {KeyCode{45}, u"N"},    {KeyCode{46}, u"M"},
    {KeyCode{47}, u"."},     {KeyCode{48}, u"⇥"},    {KeyCode{49}, u"Space"},
    {KeyCode{50}, u"`"},     {KeyCode{51}, u"⌫"},    {KeyCode{53}, u"⎋"},
    {KeyCode{65}, u"."},     {KeyCode{67}, u"*"},    {KeyCode{69}, u"+"},
    {KeyCode{71}, u"⌧"},     {KeyCode{75}, u"/"},    {KeyCode{76}, u"↩"},
    {KeyCode{78}, u"-"},     {KeyCode{81}, u"="},    {KeyCode{82}, u"0"},
    {KeyCode{83}, u"1"},     {KeyCode{84}, u"2"},    {KeyCode{85}, u"3"},
    {KeyCode{86}, u"4"},     {KeyCode{87}, u"5"},    {KeyCode{88}, u"6"},
    {KeyCode{89}, u"7"},     {KeyCode{91}, u"8"},    {KeyCode{92}, u"9"},
    {KeyCode{96}, u"F5"},    {KeyCode{97}, u"F6"},   {KeyCode{98}, u"F7"},
    {KeyCode{99}, u"F3"},    {KeyCode{100}, u"F8"},  {KeyCode{101}, u"F9"},
    {KeyCode{103}, u"F11"},  {KeyCode{105}, u"F13"}, {KeyCode{107}, u"F14"},
    {KeyCode{109}, u"F10"},  {KeyCode{111}, u"F12"}, {KeyCode{113}, u"F15"},
    {KeyCode{114}, u"Help"}, {KeyCode{115}, u"↖"},   {KeyCode{116}, u"⇞"},
    {KeyCode{117}, u"⌦"},    {KeyCode{118}, u"F4"},  {KeyCode{119}, u"↘"},
    {KeyCode{120}, u"F2"},   {KeyCode{121}, u"⇟"},   {KeyCode{122}, u"F1"},
    {KeyCode{123}, u"←"},    {KeyCode{124}, u"→"},   {KeyCode{125}, u"↓"},
    {KeyCode{126}, u"↑"},
});
static_assert(std::ranges::is_sorted(kNamedKeys, {}, &NamedKey::keyCode));

}  // namespace

QString keyName(KeyCode keyCode) {
    const auto *const found = std::ranges::lower_bound(kNamedKeys, keyCode, {}, &NamedKey::keyCode);
    if (found != kNamedKeys.end() && found->keyCode == keyCode)
        return QString::fromUtf16(found->name);
    return QStringLiteral("Key(%1)").arg(toNumber(keyCode));
}

}  // namespace kestrelbay
