#pragma once

#include <QString>

namespace kestrelbay {

/// The instance of the program that this session already has, as the session bus
/// knows it.
class RunningInstance {
public:
    /// Has it carry out an action; an empty name is what starting the program once
    /// more means. Waits for its answer, a few seconds at most. False when there is
    /// no such instance or it does not answer.
    [[nodiscard]] static bool request(const QString &action);
};

}  // namespace kestrelbay
