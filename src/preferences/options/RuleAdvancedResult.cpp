#include "preferences/options/RuleAdvancedResult.h"

#include <algorithm>

#include "model/TrimmedText.h"

namespace kestrelbay {

namespace {

RepeatAction repeatActionOf(int tag) {
    switch (tag) {
        case 1:
            return RepeatAction::ToggleVisibility;
        case 2:
            return RepeatAction::CycleWindows;
        default:
            return RepeatAction::KeepOpen;
    }
}

}  // namespace

ArgumentKind argumentKindAt(int index) {
    const auto at = static_cast<std::size_t>(index);
    return index >= 0 && at < kArgumentKindOrder.size() ? kArgumentKindOrder[at]
                                                        : ArgumentKind::None;
}

int indexOfArgumentKind(ArgumentKind kind) {
    const auto *const found = std::find(kArgumentKindOrder.begin(), kArgumentKindOrder.end(), kind);
    return found == kArgumentKindOrder.end() ? 0
                                             : static_cast<int>(found - kArgumentKindOrder.begin());
}

ShortcutRule ruleWith(ShortcutRule rule, const RuleAdvancedInput &input) {
    rule.repeatAction = repeatActionOf(input.repeatTag);
    rule.argumentKind = argumentKindAt(input.kindIndex);
    rule.launchArguments =
        rule.argumentKind == ArgumentKind::None ? QString() : trimmedSpacesAndTabs(input.argument);
    return rule;
}

}  // namespace kestrelbay
