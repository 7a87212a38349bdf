#include "platform/linux/wayland/plasma/QtKey.h"

#include <algorithm>
#include <array>

#include <QChar>
#include <QString>

namespace kestrelbay::plasma {

namespace {

struct Row {
    xkb_keysym_t symbol;
    Qt::Key key;
};

/// Those that type no character.
constexpr std::array kRows{
    Row{XKB_KEY_Escape, Qt::Key_Escape},
    Row{XKB_KEY_Tab, Qt::Key_Tab},
    Row{XKB_KEY_ISO_Left_Tab, Qt::Key_Backtab},
    Row{XKB_KEY_BackSpace, Qt::Key_Backspace},
    Row{XKB_KEY_Return, Qt::Key_Return},
    Row{XKB_KEY_Insert, Qt::Key_Insert},
    Row{XKB_KEY_Delete, Qt::Key_Delete},
    Row{XKB_KEY_Home, Qt::Key_Home},
    Row{XKB_KEY_End, Qt::Key_End},
    Row{XKB_KEY_Left, Qt::Key_Left},
    Row{XKB_KEY_Up, Qt::Key_Up},
    Row{XKB_KEY_Right, Qt::Key_Right},
    Row{XKB_KEY_Down, Qt::Key_Down},
    Row{XKB_KEY_Prior, Qt::Key_PageUp},
    Row{XKB_KEY_Next, Qt::Key_PageDown},
    Row{XKB_KEY_Caps_Lock, Qt::Key_CapsLock},
    Row{XKB_KEY_Num_Lock, Qt::Key_NumLock},
    Row{XKB_KEY_Menu, Qt::Key_Menu},
    Row{XKB_KEY_Help, Qt::Key_Help},
    Row{XKB_KEY_Multi_key, Qt::Key_Multi_key},
    Row{XKB_KEY_Hangul, Qt::Key_Hangul},
    Row{XKB_KEY_Hangul_Hanja, Qt::Key_Hangul_Hanja},
    Row{XKB_KEY_KP_Enter, Qt::Key_Enter},
    Row{XKB_KEY_KP_Insert, Qt::Key_Insert},
    Row{XKB_KEY_KP_Delete, Qt::Key_Delete},
    Row{XKB_KEY_KP_Home, Qt::Key_Home},
    Row{XKB_KEY_KP_End, Qt::Key_End},
    Row{XKB_KEY_KP_Left, Qt::Key_Left},
    Row{XKB_KEY_KP_Up, Qt::Key_Up},
    Row{XKB_KEY_KP_Right, Qt::Key_Right},
    Row{XKB_KEY_KP_Down, Qt::Key_Down},
    Row{XKB_KEY_KP_Prior, Qt::Key_PageUp},
    Row{XKB_KEY_KP_Next, Qt::Key_PageDown},
    Row{XKB_KEY_KP_Begin, Qt::Key_Clear},
    Row{XKB_KEY_XF86AudioRaiseVolume, Qt::Key_VolumeUp},
    Row{XKB_KEY_XF86AudioLowerVolume, Qt::Key_VolumeDown},
    Row{XKB_KEY_XF86AudioMute, Qt::Key_VolumeMute},
    Row{XKB_KEY_XF86AudioMicMute, Qt::Key_MicMute},
    Row{XKB_KEY_XF86Tools, Qt::Key_Tools},
    Row{XKB_KEY_XF86Launch5, Qt::Key_Launch7},
    Row{XKB_KEY_XF86Launch6, Qt::Key_Launch8},
    Row{XKB_KEY_XF86Launch7, Qt::Key_Launch9},
    Row{XKB_KEY_XF86Launch8, Qt::Key_LaunchA},
    Row{XKB_KEY_XF86Launch9, Qt::Key_LaunchB},
};

}  // namespace

std::optional<int> qtKeyOf(xkb_keysym_t symbol) {
    if (symbol >= XKB_KEY_F1 && symbol <= XKB_KEY_F35)
        return Qt::Key_F1 + static_cast<int>(symbol - XKB_KEY_F1);
    if (symbol >= XKB_KEY_dead_grave && symbol <= XKB_KEY_dead_longsolidusoverlay)
        return Qt::Key_Dead_Grave + static_cast<int>(symbol - XKB_KEY_dead_grave);
    const auto *const row = std::ranges::find(kRows, symbol, &Row::symbol);
    if (row != kRows.end())
        return row->key;
    const char32_t character = xkb_keysym_to_utf32(symbol);
    if (character < U' ' || character == 0x7F)
        return std::nullopt;
    return static_cast<int>(QChar::toUpper(character));
}

}  // namespace kestrelbay::plasma
