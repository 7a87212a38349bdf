#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <QLatin1String>

#include "platform/linux/applications/entries/ApplicationIndex.h"
#include "platform/linux/applications/matching/WindowFacts.h"

namespace kestrelbay {

/// Why a window belongs to an entry, the most trusted reason first.
enum class MatchReason : std::uint8_t {
    GtkApplicationId,
    KdeDesktopFile,
    Flatpak,
    Snap,
    Scope,
    LaunchedEntry,
    StartupWmClassInstance,
    StartupWmClassClass,
    ClassIsId,
    ClassIsLastPartOfId,
    ExecutablePath,
    ExecutableName,
};

/// As one phrase for a log or a report.
[[nodiscard]] QLatin1String description(MatchReason reason);

struct ApplicationMatch {
    /// Index into the entries of the index.
    std::size_t entry;
    MatchReason reason;

    friend bool operator==(const ApplicationMatch &, const ApplicationMatch &) = default;
};

/// The entries that a window belongs to: all that the most trusted reason gives.
[[nodiscard]] std::vector<ApplicationMatch> matchWindow(const WindowFacts &facts,
                                                        const ApplicationIndex &index);

}  // namespace kestrelbay
