#include "platform/linux/wayland/portal/PreferredTrigger.h"

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace kestrelbay::portal {

namespace {

// By the "shortcuts" specification of freedesktop.org.
constexpr std::array kModifiers{
    std::pair{modifier::kControl, "CTRL+"_L1},
    std::pair{modifier::kOption, "ALT+"_L1},
    std::pair{modifier::kShift, "SHIFT+"_L1},
    std::pair{modifier::kCommand, "LOGO+"_L1},
};

}  // namespace

QString preferredTrigger(const Hotkey &hotkey, const SymbolNames &names) {
    const auto key = names.find(hotkey.keyCode);
    if (key == names.end())
        return {};
    QString trigger;
    for (const auto &[flag, name] : kModifiers) {
        if (hotkey.modifierFlags.contains(flag))
            trigger += name;
    }
    return trigger + key->second;
}

}  // namespace kestrelbay::portal
