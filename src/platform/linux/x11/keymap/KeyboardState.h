#pragma once

#include <bitset>
#include <map>
#include <optional>

#include <QString>

#include <xcb/xcb.h>

#include "keys/KeyCode.h"
#include "platform/linux/x11/keymap/KeyGrabs.h"

namespace kestrelbay::x11 {

/// Makes the connection one that speaks XKB, as readKeyboardModel() needs, and has
/// the server say on it when the keymap changes or a keyboard with another one is
/// used. Gives the type of these events; no value when the server has no XKB.
[[nodiscard]] std::optional<std::uint8_t> watchKeymap(xcb_connection_t *connection);

/// Has the server say on a connection of that kind, by events of that type, also when another
/// of the keymap's layouts is chosen.
void watchLayoutInUse(xcb_connection_t *connection);

/// The master keyboard that core events come from, by the number that XInput and XKB share.
[[nodiscard]] std::optional<std::uint16_t> coreKeyboard(xcb_connection_t *connection);

/// Asks the server which keys set which modifiers, and which modifiers lock. No
/// value when the connection is broken.
[[nodiscard]] std::optional<KeyboardModel> readKeyboardModel(xcb_connection_t *connection);

/// What the layout in use prints on keys; see keyCaps(). Empty when the connection is broken.
[[nodiscard]] std::map<KeyCode, QString> readKeyCaps(xcb_connection_t *connection);

/// What XKB calls the symbols of the layout in use; see symbolNames(). Where the server does not
/// answer, those of the layout that XKB has by the environment.
[[nodiscard]] std::map<KeyCode, QString> readSymbolNames(const QString &displayName);

/// Keys by their X key codes.
using KeySet = std::bitset<256>;

/// The keys that are down at this moment; with the keyboard frozen by a grab, those down
/// when it froze. No value when the connection is broken.
[[nodiscard]] std::optional<KeySet> readDownKeys(xcb_connection_t *connection);

/// Is this one of them?
[[nodiscard]] bool contains(const KeySet &keys, KeyCode code);

}  // namespace kestrelbay::x11
