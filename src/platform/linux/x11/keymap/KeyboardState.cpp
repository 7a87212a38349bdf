#include "platform/linux/x11/keymap/KeyboardState.h"

#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

// A C header that names a field after a C++ keyword.
#ifdef __clang__
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicitMapping
#include <xcb/xkb.h>
#undef explicit

#include <span>

#include "platform/linux/x11/connection/XConnection.h"
#include "platform/linux/x11/keymap/KeyCaps.h"
#include "platform/linux/x11/keymap/XkbOwners.h"

namespace kestrelbay::x11 {

namespace {

std::uint8_t coreModifiers(xkb_state *state, xkb_state_component component) {
    // The first eight modifiers of every keymap are the core protocol's.
    return static_cast<std::uint8_t>(xkb_state_serialize_mods(state, component) & 0xffU);
}

/// Adds what the key does in each of its layouts and at each of its levels. Pressing it in
/// a copy of the keyboard tells, however the layout came to bind it. The modifier map would
/// not do: on most layouts with a third level it leaves out the very key that chooses that
/// level.
void pressEverywhere(xkb_keymap &keymap, xkb_keycode_t code, KeyboardModel &model) {
    for (xkb_layout_index_t layout = 0; layout < xkb_keymap_num_layouts_for_key(&keymap, code);
         ++layout) {
        for (xkb_level_index_t level = 0;
             level < xkb_keymap_num_levels_for_key(&keymap, code, layout); ++level) {
            // Any combination that chooses the level will do, locked to be told from what
            // the key sets while it is down.
            xkb_mod_mask_t chooser = 0;
            xkb_keymap_key_get_mods_for_level(&keymap, code, layout, level, &chooser, 1);
            const XkbOwner<xkb_state> state(xkb_state_new(&keymap));
            xkb_state_update_mask(state.get(), 0, 0, chooser, 0, 0, layout);
            const unsigned lockedBefore = coreModifiers(state.get(), XKB_STATE_MODS_LOCKED);
            xkb_state_update_key(state.get(), code, XKB_KEY_DOWN);
            unsigned set = coreModifiers(state.get(), XKB_STATE_MODS_DEPRESSED);
            xkb_state_update_key(state.get(), code, XKB_KEY_UP);
            const unsigned locked =
                coreModifiers(state.get(), XKB_STATE_MODS_LOCKED) ^ lockedBefore;
            model.lockModifiers |= static_cast<std::uint8_t>(locked);
            // A lock that another modifier chooses is not what the key is held for.
            if (level > 0)
                set &= ~locked;
            if (set != 0)
                model.modifiersOfKey.at(code).insert(static_cast<std::uint8_t>(set));
        }
    }
}

/// Null when the connection is broken.
XkbOwner<xkb_keymap> readKeymap(xcb_connection_t *connection) {
    const XkbOwner<xkb_context> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    const std::optional<std::uint16_t> device = coreKeyboard(connection);
    if (!context || !device)
        return nullptr;
    return XkbOwner<xkb_keymap>(xkb_x11_keymap_new_from_device(context.get(), connection, *device,
                                                               XKB_KEYMAP_COMPILE_NO_FLAGS));
}

/// What `read` finds in the keymap for that layout.
std::map<KeyCode, QString> ofLayoutInUse(xcb_connection_t *connection, auto read) {
    const XkbOwner<xkb_keymap> keymap = readKeymap(connection);
    const std::optional<std::uint16_t> device = coreKeyboard(connection);
    if (!keymap || !device)
        return {};
    const XkbOwner<xkb_state> state(
        xkb_x11_state_new_from_device(keymap.get(), connection, *device));
    if (!state)
        return {};
    return read(*keymap, xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE));
}

}  // namespace

std::optional<std::uint8_t> watchKeymap(xcb_connection_t *connection) {
    std::uint8_t firstEvent = 0;
    if (xkb_x11_setup_xkb_extension(
            connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
            XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent, nullptr) == 0)
        return std::nullopt;
    constexpr std::uint16_t kEvents =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t kParts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                     XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_KEY_ACTIONS |
                                     XCB_XKB_MAP_PART_VIRTUAL_MODS |
                                     XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
    xcb_xkb_select_events(connection, XCB_XKB_ID_USE_CORE_KBD, kEvents, 0, kEvents, kParts, kParts,
                          nullptr);
    return firstEvent;
}

void watchLayoutInUse(xcb_connection_t *connection) {
    xcb_xkb_select_events_details_t details{};
    details.affectState = XCB_XKB_STATE_PART_GROUP_STATE;
    details.stateDetails = XCB_XKB_STATE_PART_GROUP_STATE;
    xcb_xkb_select_events_aux(connection, XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_EVENT_TYPE_STATE_NOTIFY,
                              0, 0, 0, 0, &details);
}

std::optional<std::uint16_t> coreKeyboard(xcb_connection_t *connection) {
    const std::int32_t device = xkb_x11_get_core_keyboard_device_id(connection);
    return device < 0 ? std::nullopt : std::optional(static_cast<std::uint16_t>(device));
}

std::optional<KeyboardModel> readKeyboardModel(xcb_connection_t *connection) {
    const XkbOwner<xkb_keymap> keymap = readKeymap(connection);
    if (!keymap)
        return std::nullopt;

    KeyboardModel model;
    for (unsigned code = 8; code < model.modifiersOfKey.size(); ++code)
        pressEverywhere(*keymap, code, model);
    return model;
}

std::map<KeyCode, QString> readKeyCaps(xcb_connection_t *connection) {
    return ofLayoutInUse(connection, keyCaps);
}

std::map<KeyCode, QString> readSymbolNames(const QString &displayName) {
    const XConnection connection(displayName);
    // Watched only because XKB is spoken from then on.
    if (connection.isUsable() && watchKeymap(connection.get()))
        return ofLayoutInUse(connection.get(), symbolNames);
    const XkbOwner<xkb_context> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    const XkbOwner<xkb_keymap> keymap(
        context ? xkb_keymap_new_from_names(context.get(), nullptr, XKB_KEYMAP_COMPILE_NO_FLAGS)
                : nullptr);
    return keymap ? symbolNames(*keymap, 0) : std::map<KeyCode, QString>();
}

std::optional<KeySet> readDownKeys(xcb_connection_t *connection) {
    const Reply<xcb_query_keymap_reply_t> keymap(
        xcb_query_keymap_reply(connection, xcb_query_keymap(connection), nullptr));
    if (!keymap)
        return std::nullopt;
    const std::span<const std::uint8_t, 32> bits(keymap->keys);
    KeySet down;
    for (std::size_t keycode = 0; keycode < down.size(); ++keycode)
        down[keycode] = (bits[keycode / 8] >> (keycode % 8) & 1U) != 0;
    return down;
}

bool contains(const KeySet &keys, KeyCode code) {
    const std::optional<XKeycode> keycode = toXKeycode(code);
    return keycode && keys.test(*keycode);
}

}  // namespace kestrelbay::x11
