#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include <QString>

#include "model/ShortcutRule.h"

namespace kestrelbay {

/// The file that holds the rules. Where its path is a symbolic link, the link
/// stays and the file it leads to is read and replaced.
class RuleFile {
public:
    enum class LoadStatus : std::uint8_t {
        Ok,
        Missing,   ///< there is no file, which is how every user begins
        Unusable,  ///< there is one, but it cannot be read or is not a rule list
    };
    struct LoadResult {
        LoadStatus status = LoadStatus::Missing;
        std::vector<ShortcutRule> rules;  ///< empty unless Ok
        QString problem;                  ///< why it is Unusable, as half a sentence
    };

    explicit RuleFile(QString path) : path_(std::move(path)) {}

    [[nodiscard]] LoadResult load();

    /// Replaces the file in one step. A file that the last load() could not use is
    /// first kept beside it, with ".unreadable" (then ".unreadable.2" and so on)
    /// added to its name. False when the rules could not be written; then the old
    /// file is still in place, whole.
    bool save(const std::vector<ShortcutRule> &rules);

private:
    QString path_;
    bool keepsOldFile_ = false;
};

}  // namespace kestrelbay
