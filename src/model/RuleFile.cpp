#include "model/RuleFile.h"

#include <optional>
#include <utility>

#include "model/RuleJson.h"

namespace kestrelbay {

RuleFile::LoadResult RuleFile::load() {
    DataFile::Content content = file_.read();
    LoadResult result{content.status, {}, std::move(content.problem)};
    if (content.status == DataFile::Status::Ok) {
        if (std::optional<std::vector<ShortcutRule>> rules = decodeRules(content.bytes))
            result.rules = std::move(*rules);
        else
            result = {DataFile::Status::Unusable, {}, QStringLiteral("it is not a list of rules")};
    }
    oldFile_ = result.status == DataFile::Status::Unusable ? DataFile::OldFile::Keep
                                                           : DataFile::OldFile::Replace;
    return result;
}

bool RuleFile::save(const std::vector<ShortcutRule> &rules) {
    const bool saved = file_.replace(encodeRules(rules), oldFile_);
    if (saved)
        oldFile_ = DataFile::OldFile::Replace;
    return saved;
}

}  // namespace kestrelbay
