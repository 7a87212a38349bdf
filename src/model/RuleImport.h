#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QString>

#include "model/ShortcutRule.h"

namespace kestrelbay {

/// What rules that come from elsewhere add to a list. Nothing of the list is replaced.
struct RuleImport {
    struct Addition {
        /// With the id that it came with, or a new one where a rule of the list has that.
        ShortcutRule rule;
        /// Its hotkey is that of a rule before it, so it has none.
        bool lostHotkey = false;
    };
    enum class Reason : std::uint8_t {
        AlreadyThere,   ///< the same in everything but its id
        NoApplication,  ///< it could never do anything
    };
    struct LeftOut {
        ShortcutRule rule;
        Reason reason;
    };

    /// In their order, to be put behind the list.
    std::vector<Addition> additions;
    std::vector<LeftOut> leftOut;
};

/// What `rules` would add to `present`. What has been added once is left out the next time.
[[nodiscard]] RuleImport planImport(const std::vector<ShortcutRule> &present,
                                    const std::vector<ShortcutRule> &rules);

/// The rules of a file that others may have written. Any file is safe, and none when it is no
/// list of rules, or one of more than 10,000 rules or 4 MiB, which nobody has made by hand: then
/// `problem` says why, as half a sentence. Blocks on the disk.
[[nodiscard]] std::optional<std::vector<ShortcutRule>> readRulesToImport(const QString &path,
                                                                         QString &problem);

}  // namespace kestrelbay
