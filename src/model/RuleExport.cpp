#include "model/RuleExport.h"

#include <QFileInfo>

#include "model/RuleFile.h"

namespace kestrelbay {

namespace {

/// Two names of one file, which need not be there.
bool isSameFile(const QString &path, const QString &other) {
    const QFileInfo info(path);
    const QFileInfo otherInfo(other);
    return info.exists() ? info.canonicalFilePath() == otherInfo.canonicalFilePath()
                         : info.absoluteFilePath() == otherInfo.absoluteFilePath();
}

/// Is there something that is neither a list of rules nor empty?
bool holdsSomethingElse(RuleFile &file, const QString &path) {
    return QFileInfo::exists(path) && file.load().status == RuleFile::LoadStatus::Unusable &&
           !DataFile(path).read().isBlank();
}

}  // namespace

RuleExport exportRules(const std::vector<ShortcutRule> &rules, const QString &ownFile,
                       const QString &path) {
    if (rules.empty())
        return RuleExport::NoRules;
    RuleFile file(path);
    if (isSameFile(path, ownFile) || holdsSomethingElse(file, path))
        return RuleExport::OtherFile;
    return file.save(rules) ? RuleExport::Done : RuleExport::NotWritten;
}

}  // namespace kestrelbay
