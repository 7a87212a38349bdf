#pragma once

#include <optional>

#include <QString>

#include "app/RuleList.h"

namespace kestrelbay {

/// What the command line asks for.
struct Request {
    /// One of actions::kAll; empty for a plain start.
    QString action;
    /// With actions::kRunRule: an id as ruleIdFromText() takes it.
    QString ruleId;
    bool diagnose = false;
    /// A style of Qt is named, which Qt reads for itself.
    bool isStyleNamed = false;
    /// The platform plugin of Qt that is named; empty when none is.
    QString qtPlatform;
    /// Tell how long each step of the start takes.
    bool tracesStartup = false;
    /// Print the rules, and how.
    std::optional<RuleListFormat> listRules;
    /// Files to write the rules to or to add rules from; empty where that is not asked for.
    QString exportFile;
    QString importFile;
    /// Add them without asking.
    bool isImportConfirmed = false;
};

/// Answers --help and --version and refuses what it does not know or what does not go together,
/// each by ending the program. Works without a display.
[[nodiscard]] Request readCommandLine(int argc, char **argv);

/// Tells the user why the program ends; returns the code to end with.
int fail(const QString &problem);

}  // namespace kestrelbay
