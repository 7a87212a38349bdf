#include "platform/linux/keycodes/KeyCodeTable.h"

#include <linux/input-event-codes.h>

#include <array>

namespace kestrelbay {

namespace {

struct Row {
    std::uint16_t keyCode;  // kVK_… of HIToolbox/Events.h
    std::uint8_t evdev;     // KEY_… of linux/input-event-codes.h
};

// By position, so a German Z is row 16 (Y). 114, the Help key of a full-size Apple
// keyboard, lies where PC keyboards have Insert; 10 is the extra key beside the
// left Shift of ISO keyboards.
constexpr std::array kRows{
    Row{0, KEY_A},           Row{1, KEY_S},           Row{2, KEY_D},
    Row{3, KEY_F},           Row{4, KEY_H},           Row{5, KEY_G},
    Row{6, KEY_Z},           Row{7, KEY_X},           Row{8, KEY_C},
    Row{9, KEY_V},           Row{10, KEY_102ND},      Row{11, KEY_B},
    Row{12, KEY_Q},          Row{13, KEY_W},          Row{14, KEY_E},
    Row{15, KEY_R},          Row{16, KEY_Y},          Row{17, KEY_T},
    Row{18, KEY_1},          Row{19, KEY_2},          Row{20, KEY_3},
    Row{21, KEY_4},          Row{22, KEY_6},          Row{23, KEY_5},
    Row{24, KEY_EQUAL},      Row{25, KEY_9},          Row{26, KEY_7},
    Row{27, KEY_MINUS},      Row{28, KEY_8},          Row{29, KEY_0},
    Row{30, KEY_RIGHTBRACE}, Row{31, KEY_O},          Row{32, KEY_U},
    Row{33, KEY_LEFTBRACE},  Row{34, KEY_I},          Row{35, KEY_P},
    Row{36, KEY_ENTER},      Row{37, KEY_L},          Row{38, KEY_J},
    Row{39, KEY_APOSTROPHE}, Row{40, KEY_K},          Row{41, KEY_SEMICOLON},
    Row{42, KEY_BACKSLASH},  Row{43, KEY_COMMA},      Row{44, KEY_SLASH},
    Row{45, KEY_N},          Row{46, KEY_M},          Row{47, KEY_DOT},
    Row{48, KEY_TAB},        Row{49, KEY_SPACE},      Row{50, KEY_GRAVE},
    Row{51, KEY_BACKSPACE},  Row{53, KEY_ESC},        Row{54, KEY_RIGHTMETA},
    Row{55, KEY_LEFTMETA},   Row{56, KEY_LEFTSHIFT},  Row{57, KEY_CAPSLOCK},
    Row{58, KEY_LEFTALT},    Row{59, KEY_LEFTCTRL},   Row{60, KEY_RIGHTSHIFT},
    Row{61, KEY_RIGHTALT},   Row{62, KEY_RIGHTCTRL},  Row{64, KEY_F17},
    Row{65, KEY_KPDOT},      Row{67, KEY_KPASTERISK}, Row{69, KEY_KPPLUS},
    Row{71, KEY_NUMLOCK},    Row{72, KEY_VOLUMEUP},   Row{73, KEY_VOLUMEDOWN},
    Row{74, KEY_MUTE},       Row{75, KEY_KPSLASH},    Row{76, KEY_KPENTER},
    Row{78, KEY_KPMINUS},    Row{79, KEY_F18},        Row{80, KEY_F19},
    Row{81, KEY_KPEQUAL},    Row{82, KEY_KP0},        Row{83, KEY_KP1},
    Row{84, KEY_KP2},        Row{85, KEY_KP3},        Row{86, KEY_KP4},
    Row{87, KEY_KP5},        Row{88, KEY_KP6},        Row{89, KEY_KP7},
    Row{90, KEY_F20},        Row{91, KEY_KP8},        Row{92, KEY_KP9},
    Row{93, KEY_YEN},        Row{94, KEY_RO},         Row{95, KEY_KPJPCOMMA},
    Row{96, KEY_F5},         Row{97, KEY_F6},         Row{98, KEY_F7},
    Row{99, KEY_F3},         Row{100, KEY_F8},        Row{101, KEY_F9},
    Row{102, KEY_HANJA},     Row{103, KEY_F11},       Row{104, KEY_HANGEUL},
    Row{105, KEY_F13},       Row{106, KEY_F16},       Row{107, KEY_F14},
    Row{109, KEY_F10},       Row{110, KEY_COMPOSE},   Row{111, KEY_F12},
    Row{113, KEY_F15},       Row{114, KEY_INSERT},    Row{115, KEY_HOME},
    Row{116, KEY_PAGEUP},    Row{117, KEY_DELETE},    Row{118, KEY_F4},
    Row{119, KEY_END},       Row{120, KEY_F2},        Row{121, KEY_PAGEDOWN},
    Row{122, KEY_F1},        Row{123, KEY_LEFT},      Row{124, KEY_RIGHT},
    Row{125, KEY_DOWN},      Row{126, KEY_UP},
};

constexpr std::uint8_t kXOffset = 8;  // X servers number evdev keys from 8

}  // namespace

std::optional<XKeycode> toXKeycode(KeyCode code) {
    for (const Row &row : kRows) {
        if (row.keyCode == toNumber(code))
            return static_cast<XKeycode>(row.evdev + kXOffset);
    }
    return std::nullopt;
}

std::optional<KeyCode> toKeyCode(XKeycode code) {
    for (const Row &row : kRows) {
        if (row.evdev + kXOffset == code)
            return KeyCode{row.keyCode};
    }
    return std::nullopt;
}

}  // namespace kestrelbay
