#pragma once

#include <cstdint>
#include <optional>

#include <QString>

namespace kestrelbay {

/// The instance of the program that this session already has, as the session bus
/// knows it. Calls wait for its answer, a few seconds at most; they need a
/// QCoreApplication, but no display.
class RunningInstance {
public:
    enum class Answer : std::uint8_t {
        Done,
        Nobody,      ///< there is no such instance
        NoBus,       ///< nor can there be one that is reached
        NoAnswer,    ///< there is one, but it hangs
        NoSuchRule,  ///< there is one, but it has no rule with that id
    };

    /// Has it carry out an action; an empty name is what starting the program once
    /// more means. `ruleId` goes with actions::kRunRule. The desktop's leave to come forward, if
    /// this process was given it, goes with it.
    [[nodiscard]] static Answer request(const QString &action, const QString &ruleId = {});

    enum class ImportAnswer : std::uint8_t {
        Added,
        NotAdded,  ///< it could not read or save them
        NoAnswer,  ///< there is one, but it hangs
        Nobody,    ///< there is none, or none that can be reached or knows of imports
    };
    /// Has it add rules, in the form of the rule file, as ShortcutManager::importRules() does.
    [[nodiscard]] static ImportAnswer importRules(const QString &rules);

    /// What it has to say for a report of a problem. None when there is no such
    /// instance or it does not answer.
    [[nodiscard]] static std::optional<QString> diagnosticReport();
};

}  // namespace kestrelbay
