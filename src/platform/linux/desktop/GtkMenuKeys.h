#pragma once

namespace kestrelbay {

/// Menus that Qt hands to panels name their keys as panels made with GTK read them: those look
/// a key up by its X name ("comma") and show no shortcut when there is none, while Qt writes
/// the character, but for "plus" and "minus". Counts until Qt registers its own way, which it
/// does once, when the first icon for such panels is made. Main thread.
void nameMenuKeysForGtk();

}  // namespace kestrelbay
