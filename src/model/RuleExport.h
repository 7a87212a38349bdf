#pragma once

#include <cstdint>
#include <vector>

#include <QString>

#include "model/ShortcutRule.h"

namespace kestrelbay {

enum class RuleExport : std::uint8_t {
    Done,
    NoRules,     ///< an earlier copy is worth more than an empty one
    OtherFile,   ///< what is there is the program's own file, or no list of rules
    NotWritten,  ///< as on a full disk; what was there is still there, whole
};

/// Writes the rules to a file in the form of the rule file, which may replace an earlier copy but
/// nothing else. A new file is for the user only. Blocks until it is on disk.
[[nodiscard]] RuleExport exportRules(const std::vector<ShortcutRule> &rules, const QString &ownFile,
                                     const QString &path);

}  // namespace kestrelbay
