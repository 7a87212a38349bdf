#pragma once

#include <vector>

#include <QString>

#include "platform/linux/applications/matching/ApplicationMatch.h"

namespace kestrelbay {

/// What a report of a problem has to say of a window: what kind it is, what it says of itself, its
/// program, and the entries that it was matched with and why. No titles, which belong to the user.
[[nodiscard]] QString describeWindow(const WindowFacts &facts,
                                     const std::vector<ApplicationMatch> &matches,
                                     const ApplicationIndex &index);

}  // namespace kestrelbay
