#include "hotkeys/TapProblems.h"

namespace kestrelbay {

bool canChange(TapProblem problem) {
    switch (problem) {
        case TapProblem::None:
        case TapProblem::WaylandSession:
        case TapProblem::NoInputExtension:
            return false;
        case TapProblem::NotPermitted:
        case TapProblem::NoDisplay:
        case TapProblem::ExtensionMissing:
        case TapProblem::OtherInstance:
            return true;
    }
    return false;
}

QString inWords(TapProblem problem) {
    switch (problem) {
        case TapProblem::None:
            break;
        case TapProblem::NotPermitted:
            return QStringLiteral("the user has not permitted it");
        case TapProblem::WaylandSession:
            return QStringLiteral("this Wayland session gives programs no hotkeys");
        case TapProblem::NoDisplay:
            return QStringLiteral("the display server does not answer");
        case TapProblem::NoInputExtension:
            return QStringLiteral("the X server lacks XInput 2.1 or XKB");
        case TapProblem::ExtensionMissing:
            return QStringLiteral("KestrelBay's extension of GNOME Shell is not enabled");
        case TapProblem::OtherInstance:
            return QStringLiteral("another instance has it");
    }
    return {};
}

}  // namespace kestrelbay
