#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <QString>

#include "platform/linux/applications/entries/ApplicationIndex.h"
#include "platform/linux/applications/matching/ProcessFacts.h"

namespace kestrelbay {

enum class WindowType : std::uint8_t {
    Normal,
    Dialog,
    /// Tool palettes, torn-off menus, tool bars.
    Utility,
    /// Never an application's window to switch to: desktops, panels, splash
    /// screens, notifications, menus.
    Decoration,
};

/// What is known of a window as long as it tells nothing new. Everything in it is
/// somebody else's claim, of any length and content.
struct WindowFacts {
    QString gtkApplicationId;
    QString kdeDesktopFile;
    /// The two parts of WM_CLASS.
    QString instance;
    QString className;
    /// WM_WINDOW_ROLE.
    QString role;
    /// Below 1 when the client isn't a process of this machine, or nobody tells which.
    std::int64_t pid = 0;
    ProcessFacts process;
    WindowType type = WindowType::Normal;
    /// The window that it is a dialog of; 0 when it is none.
    std::uint32_t transientFor = 0;
    /// It is a dialog of the whole application.
    bool transientForGroup = false;

    [[nodiscard]] bool isTransient() const { return transientFor != 0 || transientForGroup; }
    [[nodiscard]] bool isAnonymous() const {
        return pid < 1 && instance.isEmpty() && className.isEmpty() && gtkApplicationId.isEmpty() &&
               kdeDesktopFile.isEmpty();
    }
};

/// Why a window belongs to an entry, the most trusted reason first.
enum class MatchReason : std::uint8_t {
    CommandInTerminal,
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
    Executable,
    InterpretedProgram,
    AppImage,
    ExecutableName,
    CallingScript,
    LaunchedSession,
};

/// As one phrase, that ends "it belongs to the entry by".
[[nodiscard]] QLatin1String description(MatchReason reason);

struct ApplicationMatch {
    /// Index into the entries of the index.
    std::size_t entry;
    MatchReason reason;
};

/// The entries that a window belongs to: all that the most trusted reason gives.
[[nodiscard]] std::vector<ApplicationMatch> matchWindow(const WindowFacts &facts,
                                                        const ApplicationIndex &index);

}  // namespace kestrelbay
