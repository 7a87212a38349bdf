#pragma once

#include <optional>
#include <vector>

#include <QByteArray>

#include "model/ShortcutRule.h"

namespace kestrelbay {

/// Reads a JSON array of rules. Only a text that is not JSON, not an array, or
/// has an element that is not an object yields nothing; a field that cannot be
/// read takes its default, and unknown keys are skipped. Any bytes are safe.
[[nodiscard]] std::optional<std::vector<ShortcutRule>> decodeRules(const QByteArray &text);

/// Writes the rules as one compact JSON array, all fields of each in the order
/// of their declaration.
[[nodiscard]] QByteArray encodeRules(const std::vector<ShortcutRule> &rules);

}  // namespace kestrelbay
