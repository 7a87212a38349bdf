#include "platform/linux/wayland/gnome/ShellAccelerator.h"

#include <array>
#include <optional>
#include <utility>

#include <QLatin1StringView>

#include "platform/linux/keycodes/KeyCodeTable.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::gnome {

namespace {

constexpr std::array kModifiers{
    std::pair{modifier::kCommand, "<Super>"_L1},
    std::pair{modifier::kControl, "<Control>"_L1},
    std::pair{modifier::kOption, "<Alt>"_L1},
    std::pair{modifier::kShift, "<Shift>"_L1},
};

}  // namespace

QString acceleratorOf(const Hotkey &hotkey) {
    const std::optional<XKeycode> key = toXKeycode(hotkey.keyCode);
    if (!key)
        return {};
    QString text;
    for (const auto &[flag, name] : kModifiers) {
        if (hotkey.modifierFlags.contains(flag))
            text += name;
    }
    // mutter takes it for the name of a key unless there are two digits.
    return text + u"0x%1"_s.arg(*key, 2, 16, QLatin1Char('0'));
}

}  // namespace kestrelbay::gnome
