#pragma once

#include <array>

#include <QString>

#include "model/ShortcutRule.h"

namespace kestrelbay {

/// The kinds of arguments in the order in which the user is offered them.
inline constexpr std::array kArgumentKindOrder{ArgumentKind::None, ArgumentKind::LaunchArgs,
                                               ArgumentKind::UrlScheme, ArgumentKind::FilePath};

/// The kind at this place; none outside of the order.
[[nodiscard]] ArgumentKind argumentKindAt(int index);
/// The place of a kind.
[[nodiscard]] int indexOfArgumentKind(ArgumentKind kind);

/// What the controls of the advanced options say.
struct RuleAdvancedInput {
    /// Number of the repeat action's radio button, as the cases of RepeatAction are
    /// counted; -1 when none is on.
    int repeatTag = -1;
    /// Place in the popup; -1 when nothing is selected.
    int kindIndex = -1;
    QString argument{};
};

/// The rule with what was chosen for it, and all else as it was.
[[nodiscard]] ShortcutRule ruleWith(ShortcutRule rule, const RuleAdvancedInput &input);

}  // namespace kestrelbay
