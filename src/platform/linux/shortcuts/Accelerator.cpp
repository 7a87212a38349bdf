#include "platform/linux/shortcuts/Accelerator.h"

#include <algorithm>
#include <array>
#include <span>

#include <xkbcommon/xkbcommon.h>

namespace kestrelbay {

namespace {

struct ModifierName {
    QLatin1StringView name;
    ModifierFlags flag;
};

constexpr std::array kGtkModifiers{
    ModifierName{QLatin1StringView("Super"), modifier::kCommand},
    ModifierName{QLatin1StringView("Mod4"), modifier::kCommand},
    ModifierName{QLatin1StringView("Alt"), modifier::kOption},
    ModifierName{QLatin1StringView("Mod1"), modifier::kOption},
    ModifierName{QLatin1StringView("Primary"), modifier::kControl},
    ModifierName{QLatin1StringView("Control"), modifier::kControl},
    ModifierName{QLatin1StringView("Ctrl"), modifier::kControl},
    ModifierName{QLatin1StringView("Ctl"), modifier::kControl},
    ModifierName{QLatin1StringView("Shift"), modifier::kShift},
};

constexpr std::array kQtModifiers{
    ModifierName{QLatin1StringView("Meta"), modifier::kCommand},
    ModifierName{QLatin1StringView("Alt"), modifier::kOption},
    ModifierName{QLatin1StringView("Ctrl"), modifier::kControl},
    ModifierName{QLatin1StringView("Shift"), modifier::kShift},
};

struct KeyName {
    QLatin1StringView name;
    Keysym keysym;
};

// Names that are not those of X.
constexpr std::array kOtherNames{
    KeyName{QLatin1StringView("Above_Tab"), XKB_KEY_grave},
    KeyName{QLatin1StringView("PgUp"), XKB_KEY_Prior},
    KeyName{QLatin1StringView("PgDown"), XKB_KEY_Next},
    KeyName{QLatin1StringView("Del"), XKB_KEY_Delete},
    KeyName{QLatin1StringView("Ins"), XKB_KEY_Insert},
    KeyName{QLatin1StringView("Esc"), XKB_KEY_Escape},
    KeyName{QLatin1StringView("Backspace"), XKB_KEY_BackSpace},
    KeyName{QLatin1StringView("Enter"), XKB_KEY_KP_Enter},
};

std::optional<ModifierFlags> modifierCalled(QStringView name, std::span<const ModifierName> names) {
    const auto found = std::ranges::find_if(names, [&](const ModifierName &one) {
        return name.compare(one.name, Qt::CaseInsensitive) == 0;
    });
    return found == names.end() ? std::nullopt : std::optional(found->flag);
}

std::optional<Accelerator> accelerator(ModifierFlags modifiers, const QString &keyName) {
    const auto *const other = std::ranges::find(kOtherNames, keyName, &KeyName::name);
    Keysym keysym = XKB_KEY_NoSymbol;
    if (other != kOtherNames.end())
        keysym = other->keysym;
    else if (keyName.size() == 1)
        keysym = xkb_utf32_to_keysym(keyName.front().toLower().unicode());
    else
        keysym = xkb_keysym_from_name(keyName.toUtf8().constData(), XKB_KEYSYM_CASE_INSENSITIVE);
    if (keysym == XKB_KEY_NoSymbol)
        return std::nullopt;
    return Accelerator{modifiers, keysym};
}

}  // namespace

bool LookedForKey::isMeantBy(const std::optional<Accelerator> &accelerator) const {
    return accelerator && accelerator->modifiers == modifiers &&
           std::ranges::find(keysyms, accelerator->keysym) != keysyms.end();
}

std::optional<Accelerator> gtkAccelerator(const QString &text) {
    ModifierFlags modifiers;
    QStringView rest = text;
    while (rest.startsWith(u'<')) {
        const qsizetype end = rest.indexOf(u'>');
        const auto flag =
            end < 0 ? std::nullopt : modifierCalled(rest.sliced(1, end - 1), kGtkModifiers);
        if (!flag)
            return std::nullopt;
        modifiers |= *flag;
        rest = rest.sliced(end + 1);
    }
    return accelerator(modifiers, rest.toString());
}

std::optional<Accelerator> qtAccelerator(const QString &text) {
    ModifierFlags modifiers;
    QStringView rest = text;
    // The key itself may be a plus.
    for (qsizetype end = rest.indexOf(u'+'); end > 0; end = rest.indexOf(u'+')) {
        const auto flag = modifierCalled(rest.first(end), kQtModifiers);
        if (!flag)
            return std::nullopt;
        modifiers |= *flag;
        rest = rest.sliced(end + 1);
    }
    return accelerator(modifiers, rest.toString());
}

}  // namespace kestrelbay
