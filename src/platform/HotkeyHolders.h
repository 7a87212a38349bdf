#pragma once

#include <QString>

#include "platform/EventTap.h"

namespace kestrelbay {

/// The program that probably keeps a hotkey from this one. What is not known is empty.
struct HotkeyHolder {
    /// Its name, as the user may know it.
    QString program{};
    /// What the hotkey does there, as the desktop's own settings call it.
    QString action{};
    /// What frees the hotkey: a command, or a file and the line to put there.
    QString remedy{};

    bool operator==(const HotkeyHolder &) const = default;
};

/// Who holds the hotkeys that a tap was refused. Systems do not tell, so this is what
/// the settings of the running desktop make likely.
class HotkeyHolders {
public:
    virtual ~HotkeyHolders() = default;

    /// Reads the settings as they are now, which may take a few tenths of a second. Any
    /// thread.
    [[nodiscard]] virtual HotkeyHolder holderOf(const RefusedHotkey &refused) = 0;
};

}  // namespace kestrelbay
