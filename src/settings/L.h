#pragma once

#include <QString>
#include <QStringView>

namespace kestrelbay {

struct LText;

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

private:
    static QString resolved(QStringView english, QStringView chinese);
    static QString resolved(const LText &text);
};

}  // namespace kestrelbay
