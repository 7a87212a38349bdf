#include "platform/linux/wayland/sway/UserBindings.h"

#include <cstdarg>
#include <memory>
#include <optional>

#include <xkbcommon/xkbcommon.h>

#include "keys/KeyCode.h"

namespace kestrelbay::sway {

namespace {

struct Release {
    void operator()(xkb_context *context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap *keymap) const { xkb_keymap_unref(keymap); }
};

struct ModifiersAndKey {
    Modifiers modifiers = 0;
    QByteArray key;
};

std::optional<ModifiersAndKey> split(const QByteArray &keys) {
    ModifiersAndKey result;
    for (const QByteArray &part : keys.split('+')) {
        // "Group2": of one layout only.
        if (part.startsWith("Group"))
            continue;
        if (const std::optional<Modifiers> modifiers = modifierNamed(part))
            result.modifiers |= *modifiers;
        else if (result.key.isEmpty())
            result.key = part;
        else
            return std::nullopt;
    }
    return result;
}

/// What the keys of a keyboard type.
class Keyboard {
public:
    explicit Keyboard(const SwayConfiguration::Keyboard &names)
        : context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
        const xkb_rule_names asked{
            .rules = names.rules.constData(),
            .model = names.model.constData(),
            .layout = names.layout.constData(),
            .variant = names.variant.constData(),
            .options = names.options.isNull() ? nullptr : names.options.constData()};
        if (!context_)
            return;
        // It would write to standard error what sway has said already.
        xkb_context_set_log_fn(context_.get(),
                               [](xkb_context *, xkb_log_level, const char *, va_list) {});
        keymap_.reset(
            names.keymap.isEmpty()
                ? xkb_keymap_new_from_names(context_.get(), &asked, XKB_KEYMAP_COMPILE_NO_FLAGS)
                : xkb_keymap_new_from_string(context_.get(), names.keymap.constData(),
                                             XKB_KEYMAP_FORMAT_TEXT_V1,
                                             XKB_KEYMAP_COMPILE_NO_FLAGS));
    }

    /// Calls for each place where a binding of what keys type is. sway compares with what a key
    /// types without any modifier, and with what it types with Shift, which then is no modifier of
    /// the binding.
    template <class Add>
    void forEachPosition(Modifiers modifiers, xkb_keysym_t symbol, const Add &add) const {
        if (!keymap_ || symbol == XKB_KEY_NoSymbol)
            return;
        for (unsigned code = 0; code <= UINT8_MAX; ++code) {
            const auto key = static_cast<XKeycode>(code);
            if (!toKeyCode(key))
                continue;
            const xkb_layout_index_t layouts = xkb_keymap_num_layouts_for_key(keymap_.get(), key);
            for (xkb_layout_index_t layout = 0; layout < layouts; ++layout) {
                if (types(key, layout, 0, symbol))
                    add(Position{.modifiers = modifiers, .key = key});
                if (types(key, layout, 1, symbol))
                    add(Position{.modifiers = static_cast<Modifiers>(modifiers | kShift),
                                 .key = key});
            }
        }
    }

private:
    [[nodiscard]] bool types(XKeycode key, xkb_layout_index_t layout, xkb_level_index_t level,
                             xkb_keysym_t symbol) const {
        const xkb_keysym_t *symbols = nullptr;
        const int count =
            xkb_keymap_key_get_syms_by_level(keymap_.get(), key, layout, level, &symbols);
        return count == 1 && *symbols == symbol;
    }

    std::unique_ptr<xkb_context, Release> context_;
    std::unique_ptr<xkb_keymap, Release> keymap_;
};

}  // namespace

UserBindings userBindings(const SwayConfiguration &configuration) {
    // It takes a few milliseconds, which bindings by code do not need.
    std::unique_ptr<const Keyboard> keyboard;
    UserBindings bindings;
    for (const WrittenBinding &binding : configuration.bindings) {
        const std::optional<ModifiersAndKey> parts = split(binding.keys);
        if (!parts)
            continue;
        const auto add = [&](const Position &position) { bindings[position] = binding.command; };
        if (binding.isByCode) {
            bool isNumber = false;
            const unsigned key = parts->key.toUInt(&isNumber);
            if (isNumber && key <= UINT8_MAX)
                add({.modifiers = parts->modifiers, .key = static_cast<XKeycode>(key)});
        } else {
            if (!keyboard)
                keyboard = std::make_unique<const Keyboard>(configuration.keyboard);
            keyboard->forEachPosition(
                parts->modifiers,
                xkb_keysym_from_name(parts->key.constData(), XKB_KEYSYM_CASE_INSENSITIVE), add);
        }
    }
    return bindings;
}

}  // namespace kestrelbay::sway
