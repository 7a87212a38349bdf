#pragma once

#include <optional>
#include <set>
#include <utility>
#include <vector>

#include <QString>
#include <QUuid>

#include "files/DataFile.h"
#include "model/ShortcutRule.h"

namespace kestrelbay {

/// The file that holds the rules. Not for several threads at a time.
class RuleFile {
public:
    using LoadStatus = DataFile::Status;

    struct LoadResult {
        LoadStatus status = LoadStatus::Missing;  ///< Unusable also when it is no rule list
        std::vector<ShortcutRule> rules;          ///< empty unless Ok
        QString problem;                          ///< why it is Unusable, as half a sentence
        std::set<QUuid> madeUpIds{};  ///< of rules that have none in the file; new at each load
    };

    explicit RuleFile(QString path) : file_(std::move(path)) {}

    /// The program's own, in its folder.
    [[nodiscard]] static QString pathIn(const QString &folder) {
        return folder + QStringLiteral("/rules.json");
    }

    /// Creates the folder of the file (DataFile::makeFolder()).
    bool makeFolder() const { return file_.makeFolder(); }

    [[nodiscard]] LoadResult load();
    /// Nothing while the file is as it was when it was loaded or saved last.
    [[nodiscard]] std::optional<LoadResult> loadIfChanged();

    /// Replaces the file in one step; one that the last load could not use is
    /// first kept beside it (DataFile::OldFile::Keep). False when the rules could
    /// not be written; then the old file is still in place, whole.
    bool save(const std::vector<ShortcutRule> &rules);

private:
    [[nodiscard]] LoadResult decode(DataFile::Content content);

    DataFile file_;
    /// As it was loaded or saved last.
    DataFile::Content known_;
    DataFile::OldFile oldFile_ = DataFile::OldFile::Replace;
};

/// Gives rules that the file has no id for those of the known ones that are equal otherwise,
/// so that they stay the same rules.
void keepKnownIds(RuleFile::LoadResult &loaded, const std::vector<ShortcutRule> &known);

}  // namespace kestrelbay
