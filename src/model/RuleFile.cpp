#include "model/RuleFile.h"

#include <set>
#include <utility>

#include "model/RuleJson.h"

namespace kestrelbay {

RuleFile::LoadResult RuleFile::load() {
    return decode(file_.read());
}

std::optional<RuleFile::LoadResult> RuleFile::loadIfChanged() {
    DataFile::Content content = file_.read();
    return content == known_ ? std::nullopt : std::optional(decode(std::move(content)));
}

RuleFile::LoadResult RuleFile::decode(DataFile::Content content) {
    known_ = content;
    LoadResult result{content.status, {}, std::move(content.problem)};
    if (content.status == DataFile::Status::Ok) {
        std::optional<std::vector<ShortcutRule>> rules =
            decodeRules(content.bytes, &result.madeUpIds);
        if (rules)
            result.rules = std::move(*rules);
        else
            result = {DataFile::Status::Unusable, {}, QStringLiteral("it is not a list of rules")};
    }
    oldFile_ = result.status == DataFile::Status::Unusable ? DataFile::OldFile::Keep
                                                           : DataFile::OldFile::Replace;
    return result;
}

bool RuleFile::save(const std::vector<ShortcutRule> &rules) {
    QByteArray bytes = encodeRules(rules);
    if (!file_.replace(bytes, oldFile_))
        return false;
    oldFile_ = DataFile::OldFile::Replace;
    known_ = {DataFile::Status::Ok, std::move(bytes), {}};
    return true;
}

void keepKnownIds(RuleFile::LoadResult &loaded, const std::vector<ShortcutRule> &known) {
    std::set<QUuid> taken;
    for (const ShortcutRule &rule : loaded.rules)
        taken.insert(rule.id);
    for (ShortcutRule &rule : loaded.rules) {
        if (!loaded.madeUpIds.contains(rule.id))
            continue;
        for (const ShortcutRule &candidate : known) {
            ShortcutRule same = rule;
            same.id = candidate.id;
            if (same == candidate && taken.insert(candidate.id).second) {
                rule.id = candidate.id;
                break;
            }
        }
    }
}

}  // namespace kestrelbay
