#pragma once

#include <functional>

#include <QString>

#include "keys/KeyCode.h"

namespace kestrelbay {

/// The layout that the user types with just now. Main thread.
class KeyboardLayout {
public:
    virtual ~KeyboardLayout() = default;

    /// What the layout prints on a key by which it types a character, as keyCap() has it.
    /// Empty for any other key, and where the layout is not known.
    [[nodiscard]] virtual QString printedOn(KeyCode keyCode) const = 0;

    /// Called whenever printedOn() may have other answers than before.
    virtual void setChangeHandler(std::function<void()> handler) = 0;
};

}  // namespace kestrelbay
