#pragma once

#include <cstdint>

#include <QString>
#include <QStringList>

namespace kestrelbay {

/// What the kernel and the sandboxes say of one process.
struct ProcessFacts {
    QString flatpakId;
    QString snapName;
    /// The application that an `app-*.scope` (or service) of systemd is named
    /// after, in every reading that the name allows.
    QStringList scopeIds;
    /// The entry file that this very process was launched with.
    QString launchedEntryPath;
    QString executablePath;
    /// What the process calls itself; interpreters and wrappers are left out.
    QStringList executableNames;

    friend bool operator==(const ProcessFacts &, const ProcessFacts &) = default;
};

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
    /// Below 1 when the client isn't a process of this machine.
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

}  // namespace kestrelbay
