#include "desktop/stage/ManagerTraits.h"

#include <algorithm>
#include <array>

namespace kestrelbay::desktop {

namespace {

struct Limit {
    QLatin1String windowManager;
    Ability ability;
    const char *reason;
};

constexpr const char *kGrabsByXInput = "it grabs keys by XInput 2, which shuts no other grab out";

constexpr std::array kLimits{
    Limit{QLatin1String("i3"), Ability::Minimises, "it has no minimised windows"},
    Limit{QLatin1String("muffin"), Ability::RefusesHeldKeys, kGrabsByXInput},
    Limit{QLatin1String("mutter"), Ability::RefusesHeldKeys, kGrabsByXInput},
};

}  // namespace

std::optional<QString> whyNot(const QString &windowManager, Ability ability) {
    const auto *const limit = std::ranges::find_if(kLimits, [&](const Limit &each) {
        return each.ability == ability && windowManager == each.windowManager;
    });
    if (limit == kLimits.end())
        return std::nullopt;
    return QStringLiteral("%1 cannot: %2").arg(windowManager, QLatin1String(limit->reason));
}

Key heldKey(const QString &windowManager) {
    if (windowManager == u"fluxbox")
        return keys::k1;
    if (windowManager == u"icewm")
        return keys::kP;
    if (windowManager == u"kwin_x11" || windowManager == u"muffin")
        return keys::kD;
    return keys::kTab;
}

}  // namespace kestrelbay::desktop
