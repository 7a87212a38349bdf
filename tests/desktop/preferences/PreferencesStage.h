#pragma once

#include <functional>
#include <vector>

#include <QJsonObject>
#include <QPoint>
#include <QString>
#include <QStringList>

#include "desktop/preferences/PreferencesPlaces.h"
#include "desktop/stage/ShellStage.h"

namespace kestrelbay::desktop {

/// The stage for the preferences: what is in their window, and what is on disk.
class PreferencesStage : public ShellStage {
public:
    explicit PreferencesStage(StageOptions options) : ShellStage(std::move(options)) {}

    /// KestrelBay anew with these rules and settings, its preferences open.
    void begin(std::vector<RuleSpec> rules, const QJsonObject &settings = {});
    /// Throws NotPrepared when they do not come forward.
    void openPreferences();
    /// Throws NotPrepared when it is not there.
    [[nodiscard]] Window preferences();
    [[nodiscard]] QPoint onScreen(const QPoint &place);
    void click(const QPoint &place) { pointer().click(onScreen(place)); }
    void click(int row, places::RowPart part) { click(places::inRow(row, part)); }
    void showAdvancedTab();
    /// Waits until nothing moves in them. To be called between a click and a key: window
    /// managers look at clicks first, and a key can overtake one meanwhile.
    void settle();
    [[nodiscard]] QColor colorAtPlace(const QPoint &place);

    /// Clicks the recorder and waits until it has the keyboard; throws NotPrepared.
    void startRecording(const QPoint &recorder);
    void startRecording(int row) { startRecording(places::inRow(row, places::RowPart::Recorder)); }
    [[nodiscard]] bool isRecording() { return view().client().keyboardIsTaken(); }

    /// On disk at this moment, each as "Marker 40 100008 toggleVisibility urlScheme
    /// “text” off": the usual repeat action, no argument and "on" are not said.
    [[nodiscard]] QStringList rules();
    /// A step after which exactly these rules are on disk.
    void seesRules(const QString &done, const QStringList &expected,
                   const std::function<void()> &act);
    /// A step of which nothing is told but what was expected.
    void sees(
        const QString &done, const QString &expected, const std::function<void()> &act,
        const std::function<bool()> &seen,
        const std::function<QString()> &objection = [] { return QString(); });
    /// The chord starts the marker once more; the program in front keeps its place.
    void startsMarker(const QString &done, const Chord &chord);
    /// The chord reaches the program in front, and starts nothing.
    void passesToFront(const QString &done, const Chord &chord);
    /// The chord does nothing at all, which is known when the marker's key has worked.
    void isHeldBack(const QString &done, const Chord &chord, const Chord &markerChord);
};

/// A rule that starts something that can be counted, on L⌘ with this key.
[[nodiscard]] RuleSpec markerRule(const HomeFolder &home, const Key &key);
/// A rule for an ordinary program, without a hotkey.
[[nodiscard]] RuleSpec ruleWithoutHotkey(const QString &name, const QString &entry);
/// A rule for a program with one window, on L⌘E.
[[nodiscard]] RuleSpec editorRule();

/// Two rules as they are told when they are new.
inline const QString kMarkerRule = QStringLiteral("Marker 40 100008 launchArgs “--marker”");
inline const QString kEditorRule = QStringLiteral("Editor 14 100008");

}  // namespace kestrelbay::desktop
