#include <gtest/gtest.h>

#include "launcher/LauncherFixture.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

using enum RepeatAction;

/// A later press changes what is in front when this one has asked that often.
class AppLauncherOvertaken : public LauncherFixture {
protected:
    QStringList requestsOf(const ShortcutRule &rule, int askedBefore = 0) {
        launcher_.handle(rule, [askedBefore]() mutable { return askedBefore-- > 0; });
        return workspace_.requests().take();
    }
};

TEST_F(AppLauncherOvertaken, NothingIsBroughtForward) {
    runNotes({u"A"_s});
    EXPECT_EQ(requestsOf(notes()), QStringList());
    EXPECT_EQ(requestsOf(notes(CycleWindows)), QStringList());
    EXPECT_EQ(requestsOf(notes(ToggleVisibility)), QStringList());
}

TEST_F(AppLauncherOvertaken, WindowsThatWereBeingRestoredStayBehind) {
    runNotes({u"A"_s})->windows.front()->isMinimized = true;
    EXPECT_EQ(requestsOf(notes(), 1), QStringList{u"unminimize A"_s});
}

TEST_F(AppLauncherOvertaken, NothingIsReopened) {
    runNotes({});
    EXPECT_EQ(requestsOf(notes()), QStringList());
}

TEST_F(AppLauncherOvertaken, NothingIsHiddenOrCycled) {
    runNotes({u"A"_s, u"B"_s}, true);
    EXPECT_EQ(requestsOf(notes(ToggleVisibility)), QStringList());
    EXPECT_EQ(requestsOf(notes(CycleWindows)), QStringList());
}

TEST_F(AppLauncherOvertaken, WhatWasToBeOpenedIsOpened) {
    EXPECT_EQ(requestsOf(notes()), QStringList{u"open file:///Applications/Notes.app"_s});
    EXPECT_EQ(requestsOf(notes(KeepOpen, ArgumentKind::UrlScheme, u"a:b"_s)),
              QStringList{u"openUrl a:b"_s});
    EXPECT_EQ(requestsOf(notes(KeepOpen, ArgumentKind::LaunchArgs, u"-x"_s)),
              QStringList{u"openApplication file:///Applications/Notes.app [-x]"_s});
    runNotes({u"A"_s});
    EXPECT_EQ(requestsOf(notes(KeepOpen, ArgumentKind::FilePath, u"/x"_s)),
              QStringList{u"openFiles file:///x with file:///Applications/Notes.app"_s});
}

}  // namespace

}  // namespace kestrelbay
