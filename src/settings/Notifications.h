#pragma once

#include <QObject>

namespace kestrelbay {

/// News between parts of the program that do not know each other. Main thread. Whoever
/// hears of one may destroy anything but this.
class Notifications final : public QObject {
    Q_OBJECT

Q_SIGNALS:
    /// The system now lets the program see keys.
    void accessibilityGranted();
    /// The program no longer sees keys, or the system now withholds them for a while, or has
    /// ended that.
    void keyAccessDidChange();
    /// A wish: show the preferences at the row of that permission.
    void openPreferencesToAccessibility();
    /// Texts now come out in the chosen language, which may be the one from before.
    void languageDidChange();
    /// The rules are now those of a file that somebody else has changed, or some were added from
    /// outside.
    void rulesWereTakenIn();
    /// Other programs hold other hotkeys of the rules than before.
    void refusedHotkeysDidChange();
    /// The keyboard's layout now prints other characters on keys than before.
    void keyboardLayoutDidChange();
};

}  // namespace kestrelbay
