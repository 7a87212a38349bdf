#pragma once

#include <QString>
#include <QStringList>

#include "keys/KeyCode.h"
#include "keys/ModifierFlags.h"
#include "settings/Language.h"

namespace kestrelbay {

class KeyboardLayout;
struct HotkeyHolder;
struct RefusedHotkey;
struct ShortcutRule;

/// The application's name, or words for that there is none.
[[nodiscard]] QString shownAppName(const ShortcutRule &rule);

/// The path with "~" for the home folder at its beginning. No path stays none.
[[nodiscard]] QString abbreviatedPath(const QString &path, const QString &homeFolder);

/// What the badge says of a rule's argument: its end, up to nine characters behind "…"
/// where there are ten or more. Empty when there is no badge. A character is what the
/// reader takes for one.
[[nodiscard]] QString argsBadgeText(const ShortcutRule &rule);

/// The modifiers as they are spoken, e.g. "right Shift, left Super" on Linux; empty for none.
[[nodiscard]] QString modifiersInWords(ModifierFlags flags);

/// The hotkey as it is spoken, e.g. "left Super, T" on Linux, by what the layout prints on its key.
/// Names the key A, which is not shown. "none" where no hotkey is set.
[[nodiscard]] QString hotkeyInWords(KeyCode keyCode, ModifierFlags flags,
                                    const KeyboardLayout &layout);

/// Who holds a hotkey, what it does there and how to free it, a line each as far as that
/// is known.
[[nodiscard]] QStringList refusalInWords(const RefusedHotkey &refused, const HotkeyHolder &holder,
                                         Language language);

}  // namespace kestrelbay
