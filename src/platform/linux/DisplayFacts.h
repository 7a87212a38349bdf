#pragma once

#include <QString>

namespace kestrelbay {

/// What there is to show windows on.
struct DisplayFacts {
    /// DISPLAY; empty where it is not set.
    QString xName{};
    /// WAYLAND_DISPLAY.
    QString waylandName{};
    /// The user's session is one of Wayland, with or without an X server in it.
    bool isWaylandSession = false;
    bool doesXAnswer = false;
    /// Not asked where the X server answers.
    bool doesWaylandAnswer = false;
    bool hasQtWaylandPlugin = false;
    /// QT_QPA_PLATFORM names Qt's platform.
    bool isQtPlatformNamed = false;
};

/// Those of the environment. Connects to the X server, or else to the Wayland compositor, for a
/// moment.
[[nodiscard]] DisplayFacts readDisplayFacts();

/// Why no window can be shown, as one line for the user; empty when one can.
[[nodiscard]] QString displayProblem(const DisplayFacts &facts);

/// The platform of Qt (as its option -platform takes it) for this program's windows; empty where
/// Qt's own choice, or the user's, is the right one.
///
/// On X a toast is put in its corner and leaves the focus where it is; Wayland lets no program do
/// either. So an X server within a Wayland session is preferred, which Qt by itself does not.
[[nodiscard]] QString qtPlatformFor(const DisplayFacts &facts);

}  // namespace kestrelbay
