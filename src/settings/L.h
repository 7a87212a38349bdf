#pragma once

#include <cstdint>

#include <QString>
#include <QStringView>

namespace kestrelbay {

struct LText;
enum class TapProblem : std::uint8_t;

/// The texts of the user interface, in the language in force at each call (see
/// Language::current). What is on screen already stays as it is until its owner
/// builds it again. Names are put in as they are given.
class L {
public:
    L() = delete;

    // In several places.
    static QString programName();
    static QString cancel();
    static QString aboutKestrelBay();
    static QString preferencesTitle();
    static QString deleteConfirmMsg(const QString &name);
    static QString advancedPanelTitle(const QString &appName);

    // The field that records a hotkey.
    static QString recorderEmpty();
    static QString recorderPrompt();
    static QString recorderNoAccess();
    static QString recorderGrantAccess();
    static QString recorderClear();
    static QString recorderKeyboardHeld();
    static QString recorderRecording();
    static QString clearHotkeyOf(const QString &appName);
    static QString hotkeyOf(const QString &appName);
    static QString noHotkey();

    // Keys as they are spoken.
    /// What is printed on a key as a word; unchanged when it is none of the signs
    /// that screen readers leave out.
    static QString spokenKey(const QString &printed);
    static QString leftKey(const QString &name);
    static QString rightKey(const QString &name);
    static QString keypadKey(const QString &name);
    /// Between the keys of a hotkey.
    static QString keySeparator();

    // The menu of the status item.
    static QString disableAllShortcuts();
    static QString enableAllShortcuts();
    static QString preferencesEntry();
    static QString welcomeGuideEntry();
    static QString quit();

    // The About window.
    static QString aboutVersion(const QString &version);
    static QString checkForUpdates();
    static QString contactFeedback();

    // The first-run guide, step by step.
    static QString welcomeTitle();
    static QString welcomeBody();
    static QString welcomeTip();
    static QString welcomeStart();
    static QString welcomeDismiss();

    static QString permissionTitle();
    static QString permissionBody();
    static QString permissionOpenSettings();
    static QString permissionWaitingButton();
    static QString permissionWaiting();
    static QString permissionGranted();
    static QString skipForNow();

    static QString doneTitle();
    static QString doneBody();
    static QString doneAddShortcut();
    static QString doneWithoutPermissionTitle();
    static QString doneWithoutPermissionBody();
    static QString doneOpenPreferences();

    // What the guide says when it goes.
    static QString guideFinishedToast();
    static QString guideSkippedToast();

    // The preferences window.
    static QString rulesTab();
    static QString advancedTab();

    // Its list of rules. The names are what screen readers say.
    static QString rulesEmpty();
    static QString rulesCount(qsizetype count);
    static QString addRuleName();

    // One rule in it.
    static QString noAppSelected();
    static QString advancedOptions();
    static QString ruleDeleteName();
    static QString ruleDragName();
    static QString enableRule(const QString &appName);
    static QString advancedOptionsOf(const QString &appName);
    static QString deleteRule(const QString &appName);
    static QString hotkeyConflict();
    static QString hotkeyRefused();
    static QString deleteConfirmTitle();
    static QString deleteConfirmButton();

    // The panel of a rule's advanced options.
    static QString repeatHeader();
    static QString repeatKeepOpen();
    static QString repeatKeepOpenText();
    static QString repeatToggleVisibility();
    static QString repeatToggleVisibilityText();
    static QString repeatCycleWindows();
    static QString repeatCycleWindowsText();
    static QString argumentHeader();
    static QString argumentSubtitle();
    static QString argumentKindName();
    static QString argumentValueName();
    static QString argumentNone();
    static QString argumentLaunchArgs();
    static QString argumentUrlScheme();
    static QString argumentFilePath();
    static QString argumentNoneHint();
    static QString argumentLaunchArgsHint();
    static QString argumentUrlSchemeHint();
    static QString argumentFilePathHint();
    static QString argumentPasteHint();
    static QString deepLaunchHelp();
    static QString helpName();
    static QString save();

    // The choice of an application.
    static QString appPickerTitle();
    static QString appPickerSearch();
    static QString appPickerBrowse();
    static QString appPickerSelect();
    static QString appPickerLoading();
    static QString appPickerNothingFound();
    /// What files to choose from, by the pattern of their names.
    static QString appPickerFilter(const QString &pattern);

    // The settings of the whole program.
    static QString launchAtLogin();
    static QString launchAtLoginText();
    static QString language();
    static QString languageText();
    static QString languageNameChinese();
    static QString languageNameEnglish();
    static QString sound();
    static QString soundText();
    static QString soundNone();
    static QString launchToast();
    static QString launchToastText();
    static QString launchToastNone();
    static QString launchToastShort();
    static QString launchToastMedium();
    static QString launchToastLong();
    static QString configFolder();
    static QString configFolderShow();
    static QString accessTitle();
    static QString accessGranted();
    /// Why hotkeys do not work, and what to do about it.
    static QString accessMissing(TapProblem problem);
    static QString accessOpenSettings();
    static QString restartTitle();
    static QString restartText();
    static QString restartNow();
    static QString restartLater();

private:
    static QString resolved(QStringView english, QStringView chinese);
    static QString resolved(const LText &text);
};

}  // namespace kestrelbay
