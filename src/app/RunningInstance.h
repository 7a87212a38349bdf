#pragma once

#include <optional>

#include <QString>

namespace kestrelbay {

/// The instance of the program that this session already has, as the session bus
/// knows it. Calls wait for its answer, a few seconds at most.
class RunningInstance {
public:
    /// Has it carry out an action; an empty name is what starting the program once
    /// more means. False when there is no such instance or it does not answer.
    [[nodiscard]] static bool request(const QString &action);

    /// What it has to say for a report of a problem. None when there is no such
    /// instance or it does not answer.
    [[nodiscard]] static std::optional<QString> diagnosticReport();
};

}  // namespace kestrelbay
