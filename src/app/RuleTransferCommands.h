#pragma once

#include <functional>
#include <iosfwd>
#include <vector>

#include <QString>

#include "app/instance/RunningInstance.h"
#include "model/ShortcutRule.h"

namespace kestrelbay {

class ApplicationCatalog;

/// Writes the rules of the rule file to another file. Returns the code to end with; why it is
/// not 0 has been said on standard error, which also holds below.
[[nodiscard]] int exportRulesCommand(const QString &storageDirectory, const QString &file);

/// What an import works with.
struct ImportCommand {
    QString storageDirectory;
    const ApplicationCatalog &catalog;
    /// RunningInstance::importRules(): of a file that two programs write at a time, the changes
    /// of one would be lost.
    std::function<RunningInstance::ImportAnswer(const QString &rules)> handOver;
    std::istream &in;
    std::ostream &out;
    /// Is there a user to answer?
    bool canAsk;
    /// The user has said yes beforehand.
    bool isConfirmed;

    /// Shows what the rules of the file would add, and adds them when the user says so.
    [[nodiscard]] int run(const QString &file) const;

private:
    [[nodiscard]] bool isWanted() const;
    [[nodiscard]] int add(const std::vector<ShortcutRule> &rules) const;
    [[nodiscard]] int addToFile(const std::vector<ShortcutRule> &rules) const;
};

}  // namespace kestrelbay
