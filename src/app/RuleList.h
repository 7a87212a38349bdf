#pragma once

#include <cstdint>

#include <QByteArray>

#include "model/RuleFile.h"

namespace kestrelbay {

enum class RuleListFormat : std::uint8_t {
    /// One line a rule: id, application and hotkey, with tabs between them and "-" for what
    /// there is not.
    Text,
    /// One array, an object a rule, with the members id, appName, appPath, hotkey and
    /// isEnabled. The id is null where the file has none.
    Json,
};

/// The rules of a file for other programs to read, in their order, as UTF-8. Users' scripts
/// rely on both formats: members may be added, no more.
[[nodiscard]] QByteArray ruleList(const RuleFile::LoadResult &loaded, RuleListFormat format);

}  // namespace kestrelbay
