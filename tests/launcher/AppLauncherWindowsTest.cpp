#include "launcher/LauncherFixture.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

using enum RepeatAction;

const auto kActivateNotes = u"activate Notes"_s;
const auto kActivateFinder = u"activate Finder"_s;

class AppLauncherWindows : public LauncherFixture {};

TEST_F(AppLauncherWindows, CyclingWalksThroughAllWindows) {
    runNotes({u"A"_s, u"B"_s, u"C"_s}, true);
    for (const QString &expected : {u"C"_s, u"B"_s, u"A"_s, u"C"_s})
        EXPECT_EQ(
            requestsOf(notes(CycleWindows)),
            (QStringList{u"setMain "_s + expected, u"setFocused "_s + expected, kActivateNotes}));
}

TEST_F(AppLauncherWindows, CyclingListsTheWindowsOnce) {
    runNotes({u"A"_s, u"B"_s}, true);
    requestsOf(notes(CycleWindows));
    EXPECT_EQ(asked(u"windows Notes"_s), 1);
    EXPECT_EQ(asked(u"isMinimized A"_s), 0);
    EXPECT_EQ(asked(u"fileManagerIdentifier"_s), 1);
}

TEST_F(AppLauncherWindows, CyclingOneWindowBringsItForwardAndRestoresIt) {
    runNotes({u"A"_s}, true)->windows[0]->isMinimized = true;
    EXPECT_EQ(requestsOf(notes(CycleWindows)), (QStringList{u"unminimize A"_s, kActivateNotes}));
}

TEST_F(AppLauncherWindows, ApplicationThatIsNotActiveIsNotCycled) {
    runNotes({u"A"_s, u"B"_s}, false);
    EXPECT_EQ(requestsOf(notes(CycleWindows)), QStringList{kActivateNotes});
}

TEST_F(AppLauncherWindows, EveryWindowOfOtherApplicationsCounts) {
    auto process = runNotes({u"A"_s, u"B"_s}, true);
    process->windows[1]->subrole = u"AXDialog"_s;
    EXPECT_EQ(requestsOf(notes(CycleWindows)),
              (QStringList{u"setMain B"_s, u"setFocused B"_s, kActivateNotes}));
    EXPECT_EQ(asked(u"subrole B"_s), 0);
}

TEST_F(AppLauncherWindows, FinderWithOnlyItsDesktopHasNoWindows) {
    runFinder({u"Desktop"_s})->windows[0]->subrole = u"AXUnknown"_s;
    EXPECT_EQ(requestsOf(finder()), QStringList{u"showFolder "_s + qEnvironmentVariable("HOME")});
}

TEST_F(AppLauncherWindows, FinderCyclesOnlyItsStandardWindows) {
    auto process = runFinder({u"A"_s, u"Unreadable"_s, u"B"_s, u"Desktop"_s}, true);
    process->windows[1]->subrole = std::nullopt;
    process->windows[3]->subrole = u"AXUnknown"_s;
    EXPECT_EQ(requestsOf(finder(CycleWindows)),
              (QStringList{u"setMain B"_s, u"setFocused B"_s, kActivateFinder}));
}

TEST_F(AppLauncherWindows, FinderComesForwardWithItsFirstStandardWindow) {
    auto process = runFinder({u"Desktop"_s, u"A"_s, u"B"_s});
    process->windows[0]->subrole = u"AXUnknown"_s;
    EXPECT_EQ(requestsOf(finder()), (QStringList{u"setMain A"_s, u"raise A"_s, kActivateFinder}));
    EXPECT_EQ(asked(u"windows Finder"_s), 2);
    EXPECT_EQ(asked(u"isMinimized A"_s), 1);
    EXPECT_EQ(asked(u"fileManagerIdentifier"_s), 1);
}

TEST_F(AppLauncherWindows, FinderRestoresWindowsOfEveryKind) {
    auto process = runFinder({u"Panel"_s, u"A"_s});
    process->windows[0]->subrole = u"AXDialog"_s;
    process->windows[0]->isMinimized = true;
    process->windows[1]->isMinimized = true;
    EXPECT_EQ(requestsOf(finder()), (QStringList{u"unminimize Panel"_s, u"unminimize A"_s,
                                                 u"setMain A"_s, u"raise A"_s, kActivateFinder}));
}

TEST_F(AppLauncherWindows, OnlyWindowsKnownToBeMinimisedAreRestoredInOrder) {
    auto process = runNotes({u"A"_s, u"B"_s, u"C"_s, u"D"_s});
    process->windows[0]->isMinimized = true;
    process->windows[1]->isMinimized = std::nullopt;
    process->windows[3]->isMinimized = true;
    EXPECT_EQ(requestsOf(notes()),
              (QStringList{u"unminimize A"_s, u"unminimize D"_s, kActivateNotes}));
}

TEST_F(AppLauncherWindows, BringingForwardListsTheWindowsAndReadsEachFlagOnce) {
    runNotes({u"A"_s, u"B"_s});
    requestsOf(notes());
    EXPECT_EQ(asked(u"windows Notes"_s), 1);
    EXPECT_EQ(asked(u"isMinimized A"_s), 1);
    EXPECT_EQ(asked(u"isMinimized B"_s), 1);
}

TEST_F(AppLauncherWindows, MinimisedWindowCountsAsAWindow) {
    runNotes({u"A"_s})->windows[0]->isMinimized = true;
    EXPECT_EQ(requestsOf(notes()), (QStringList{u"unminimize A"_s, kActivateNotes}));
}

TEST_F(AppLauncherWindows, FailedRequestsToWindowsAreIgnored) {
    auto process = runNotes({u"A"_s, u"B"_s}, true);
    process->windows[1]->isGone = true;
    EXPECT_EQ(requestsOf(notes(CycleWindows)),
              (QStringList{u"setMain B"_s, u"setFocused B"_s, kActivateNotes}));
    EXPECT_EQ(log_.lines(), QStringList());
}

TEST_F(AppLauncherWindows, WithoutAProcessThereAreNoWindows) {
    auto process = runNotes({u"A"_s, u"B"_s}, true);
    process->processIdentifier = ProcessIdentifier{0};
    EXPECT_EQ(requestsOf(notes(CycleWindows)),
              QStringList{u"open file:///Applications/Notes.app"_s});
    EXPECT_EQ(asked(u"windows Notes"_s), 0);
}

TEST_F(AppLauncherWindows, EmptyIdentifiersAreNotTheFileManager) {
    workspace_.setFileManagerIdentifier(QString());
    auto process = runNotes({u"A"_s});
    process->bundleIdentifier.clear();
    process->windows[0]->subrole = std::nullopt;
    EXPECT_EQ(requestsOf(notes()), QStringList{kActivateNotes});
}

TEST_F(AppLauncherWindows, OtherFileManagerIsTreatedLikeTheFinder) {
    workspace_.setFileManagerIdentifier(u"com.example.notes"_s);
    runNotes({u"A"_s});
    EXPECT_EQ(requestsOf(notes()), (QStringList{u"setMain A"_s, u"raise A"_s, kActivateNotes}));
}

}  // namespace

}  // namespace kestrelbay
