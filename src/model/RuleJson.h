#pragma once

#include <optional>
#include <set>
#include <vector>

#include <QByteArray>
#include <QString>
#include <QUuid>

#include "model/ShortcutRule.h"

namespace kestrelbay {

/// Reads a JSON array of rules. Only a text that is not JSON, not an array, or
/// has an element that is not an object yields nothing; a field that cannot be
/// read takes its default, and unknown keys are skipped. Any bytes are safe. To
/// `madeUpIds` are added the ids of rules that the text gives none.
[[nodiscard]] std::optional<std::vector<ShortcutRule>> decodeRules(
    const QByteArray &text, std::set<QUuid> *madeUpIds = nullptr);

/// The id of a rule as the rule file writes it, in upper or lower case; QUuid itself also
/// takes braces, missing hyphens and trailing text.
[[nodiscard]] std::optional<QUuid> ruleIdFromText(const QString &text);

/// Writes the rules as one compact JSON array, all fields of each in the order
/// of their declaration.
[[nodiscard]] QByteArray encodeRules(const std::vector<ShortcutRule> &rules);

}  // namespace kestrelbay
