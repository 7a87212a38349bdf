#include "launcher/AppLauncher.h"

#include <QDir>

#include "launcher/LauncherFixture.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

using enum RepeatAction;

const auto kOpenNotes = u"open file:///Applications/Notes.app"_s;
const auto kActivateNotes = u"activate Notes"_s;
const auto kHideNotes = u"hide Notes"_s;
const auto kOpenUrl = u"openUrl things:///add?title=x"_s;
const auto kOpenFile = u"openFiles file:///tmp/a%20b with file:///Applications/Notes.app"_s;
const auto kNewInstance = u"openApplication file:///Applications/Notes.app [-a|b c]"_s;

class AppLauncherTest : public LauncherFixture {};

struct Row {
    ArgumentKind kind;
    RepeatAction action;
    QStringList whenActive;
    QStringList whenActiveWithOneWindow;
    QStringList whenRunning;
    QStringList whenNotRunning;
};

QString textFor(ArgumentKind kind) {
    switch (kind) {
        case ArgumentKind::None:
            return {};
        case ArgumentKind::LaunchArgs:
            return u" -a 'b c' "_s;
        case ArgumentKind::UrlScheme:
            return u"\tthings:///add?title=x "_s;
        case ArgumentKind::FilePath:
            return u"\u00A0/tmp/a b\u3000"_s;
    }
    return {};
}

QList<Row> rows() {
    const QStringList front{kActivateNotes};
    const QStringList open{kOpenNotes};
    const QStringList hide{kHideNotes};
    const QStringList cycle{u"setMain B"_s, u"setFocused B"_s, kActivateNotes};
    const QStringList url{kOpenUrl};
    const QStringList file{kOpenFile};
    const QStringList instance{kNewInstance};
    return {
        {ArgumentKind::LaunchArgs, KeepOpen, instance, instance, instance, instance},
        {ArgumentKind::LaunchArgs, ToggleVisibility, instance, instance, instance, instance},
        {ArgumentKind::LaunchArgs, CycleWindows, instance, instance, instance, instance},
        {ArgumentKind::None, KeepOpen, front, front, front, open},
        {ArgumentKind::None, ToggleVisibility, hide, hide, front, open},
        {ArgumentKind::None, CycleWindows, cycle, front, front, open},
        {ArgumentKind::UrlScheme, KeepOpen, url, url, url, url},
        {ArgumentKind::UrlScheme, ToggleVisibility, hide, hide, url, url},
        {ArgumentKind::UrlScheme, CycleWindows, cycle, url, url, url},
        {ArgumentKind::FilePath, KeepOpen, file, file, file, file},
        {ArgumentKind::FilePath, ToggleVisibility, hide, hide, file, file},
        {ArgumentKind::FilePath, CycleWindows, cycle, file, file, file},
    };
}

class DecisionTable : public LauncherFixture, public testing::WithParamInterface<Row> {
protected:
    [[nodiscard]] static ShortcutRule ruleOfRow() {
        const Row &row = GetParam();
        return notes(row.action, row.kind, textFor(row.kind));
    }
};

TEST_P(DecisionTable, RunningAndActive) {
    runNotes({u"A"_s, u"B"_s}, true);
    EXPECT_EQ(requestsOf(ruleOfRow()), GetParam().whenActive);
}

TEST_P(DecisionTable, RunningAndActiveWithOneWindow) {
    runNotes({u"A"_s}, true);
    EXPECT_EQ(requestsOf(ruleOfRow()), GetParam().whenActiveWithOneWindow);
}

TEST_P(DecisionTable, RunningButNotActive) {
    runNotes({u"A"_s, u"B"_s}, false);
    EXPECT_EQ(requestsOf(ruleOfRow()), GetParam().whenRunning);
}

TEST_P(DecisionTable, KnownNotToBeActive) {
    workspace_.setKnowsInactive(true);
    runNotes({u"A"_s, u"B"_s}, false);
    EXPECT_EQ(requestsOf(ruleOfRow()), GetParam().whenRunning);
    EXPECT_EQ(asked(u"runningApplications"_s), 0);
}

TEST_P(DecisionTable, NotRunning) {
    EXPECT_EQ(requestsOf(ruleOfRow()), GetParam().whenNotRunning);
}

INSTANTIATE_TEST_SUITE_P(AllRows, DecisionTable, testing::ValuesIn(rows()), [](const auto &row) {
    return (rawValue(row.param.kind) + u'_' + rawValue(row.param.action)).toStdString();
});

TEST_F(AppLauncherTest, EmptyPathDoesNothingAtAll) {
    EXPECT_EQ(requestsOf(rule(u"", KeepOpen, ArgumentKind::LaunchArgs, u"-a"_s)), QStringList());
    EXPECT_EQ(workspace_.reads().lines(), QStringList());
    EXPECT_EQ(log_.lines(), QStringList());
}

TEST_F(AppLauncherTest, ArgumentOfOnlySpacesIsNoArgument) {
    const QString spaces = u" \t\u00A0\u2003\u3000"_s;
    for (const ArgumentKind kind :
         {ArgumentKind::UrlScheme, ArgumentKind::FilePath, ArgumentKind::LaunchArgs})
        EXPECT_EQ(requestsOf(notes(KeepOpen, kind, spaces)), QStringList{kOpenNotes});
    runNotes({u"A"_s});
    EXPECT_EQ(requestsOf(notes(KeepOpen, ArgumentKind::UrlScheme, spaces)),
              QStringList{kActivateNotes});
}

TEST_F(AppLauncherTest, LineBreaksAreNotTrimmedFromTheArgument) {
    EXPECT_EQ(requestsOf(notes(KeepOpen, ArgumentKind::FilePath, u" /tmp/a\n "_s)),
              QStringList{u"openFiles file:///tmp/a%0A with file:///Applications/Notes.app"_s});
}

TEST_F(AppLauncherTest, ArgumentOfKindNoneIsIgnored) {
    EXPECT_EQ(requestsOf(notes(KeepOpen, ArgumentKind::None, u"-a"_s)), QStringList{kOpenNotes});
}

TEST_F(AppLauncherTest, WhatIsNotKnownIsAskedFor) {
    workspace_.setKnowsInactive(true);
    EXPECT_EQ(requestsOf(notes()), QStringList{kOpenNotes});
    EXPECT_EQ(asked(u"runningApplications"_s), 1);
    runNotes({u"A"_s}, true);
    EXPECT_EQ(requestsOf(notes(ToggleVisibility)), QStringList{kHideNotes});
    EXPECT_EQ(asked(u"runningApplications"_s), 1);
}

TEST_F(AppLauncherTest, LaunchArgumentsStartANewInstanceOnEveryPress) {
    runNotes({u"A"_s, u"B"_s}, true);
    const ShortcutRule rule = notes(ToggleVisibility, ArgumentKind::LaunchArgs, u"-a 'b c'"_s);
    EXPECT_EQ(requestsOf(rule), QStringList{kNewInstance});
    EXPECT_EQ(requestsOf(rule), QStringList{kNewInstance});
}

TEST_F(AppLauncherTest, ToggleHidesThenBringsBack) {
    runNotes({u"A"_s}, true);
    EXPECT_EQ(requestsOf(notes(ToggleVisibility)), QStringList{kHideNotes});
    EXPECT_EQ(requestsOf(notes(ToggleVisibility)), QStringList{kActivateNotes});
    EXPECT_EQ(requestsOf(notes(ToggleVisibility)), QStringList{kHideNotes});
}

TEST_F(AppLauncherTest, ToggleHidesWithoutLookingAtWindows) {
    runNotes({}, true);
    EXPECT_EQ(requestsOf(notes(ToggleVisibility)), QStringList{kHideNotes});
    EXPECT_EQ(asked(u"windows Notes"_s), 0);
}

TEST_F(AppLauncherTest, NoWindowsReopenTheApplicationWithoutActivatingIt) {
    runNotes({}, true);
    EXPECT_EQ(requestsOf(notes(KeepOpen)), QStringList{kOpenNotes});
    EXPECT_EQ(requestsOf(notes(CycleWindows)), QStringList{kOpenNotes});
}

TEST_F(AppLauncherTest, FinderWithoutWindowsShowsTheHomeFolder) {
    runFinder({}, true);
    EXPECT_EQ(requestsOf(finder(KeepOpen)), QStringList{u"showFolder "_s + QDir::homePath()});
}

TEST_F(AppLauncherTest, CopyAtAnotherPathIsNotTheTarget) {
    auto copy = workspace_.run(u"Copy"_s, u"/Users/x/Applications/Notes.app"_s);
    copy->bundleIdentifier = u"com.example.notes"_s;
    copy->addWindow(u"A"_s);
    EXPECT_EQ(requestsOf(notes()), QStringList{kOpenNotes});
}

TEST_F(AppLauncherTest, DotSegmentsOnEitherSideStillFindTheApplication) {
    auto process = runNotes({u"A"_s});
    EXPECT_EQ(requestsOf(rule(u"/Applications/./Utilities/../Notes.app")),
              QStringList{kActivateNotes});
    process->bundleURL = QUrl(u"file:///Applications/x/../Notes.app/"_s);
    EXPECT_EQ(requestsOf(notes()), QStringList{kActivateNotes});
}

TEST_F(AppLauncherTest, ApplicationsWithoutAPlaceAreSkipped) {
    workspace_.run(u"Daemon"_s, QString())->bundleURL = QUrl();
    runNotes({u"A"_s});
    EXPECT_EQ(requestsOf(notes()), QStringList{kActivateNotes});
}

TEST_F(AppLauncherTest, AnApplicationRunsWhereALinkLeads) {
    workspace_.link(u"/Applications/Notes.app"_s, u"/System/Volumes/Cryptex/Notes.app"_s);
    workspace_.link(u"/System/Cryptex/Notes.app"_s, u"/System/Volumes/Cryptex/Notes.app"_s);
    workspace_.run(u"Daemon"_s, QString())->bundleURL = QUrl();
    workspace_.run(u"Copy"_s, u"/Users/me/Notes.app"_s)->addWindow(u"A"_s);
    EXPECT_EQ(requestsOf(notes()), QStringList{kOpenNotes});
    workspace_.run(u"Linked"_s, u"/System/Cryptex/Notes.app"_s)->addWindow(u"A"_s);
    EXPECT_EQ(requestsOf(notes()), QStringList{u"activate Linked"_s});
    // One that is there by its own name comes first, wherever it is listed.
    workspace_.run(u"Named"_s, u"/Applications/Notes.app"_s)->addWindow(u"A"_s);
    EXPECT_EQ(requestsOf(notes()), QStringList{u"activate Named"_s});
}

TEST_F(AppLauncherTest, WhereNoLinksAreFollowedNobodyAsksWhereTheyLead) {
    workspace_.run(u"Copy"_s, u"/Users/me/Notes.app"_s)->addWindow(u"A"_s);
    EXPECT_EQ(requestsOf(notes()), QStringList{kOpenNotes});
    EXPECT_EQ(asked(u"resolved"_s), 2) << "of the rule's and of the one that runs";
    workspace_.setFollowsLinks(false);
    EXPECT_EQ(requestsOf(notes()), QStringList{kOpenNotes});
    EXPECT_EQ(asked(u"resolved"_s), 0);
}

TEST_F(AppLauncherTest, FirstOfSeveralProcessesIsTaken) {
    runNotes({u"A"_s})->name = u"First"_s;
    runNotes({u"A"_s})->name = u"Second"_s;
    EXPECT_EQ(requestsOf(notes()), QStringList{u"activate First"_s});
}

TEST_F(AppLauncherTest, RunningApplicationsAreListedOnce) {
    runNotes({u"A"_s}, true);
    requestsOf(notes(CycleWindows));
    EXPECT_EQ(asked(u"runningApplications"_s), 1);
}

TEST_F(AppLauncherTest, NothingIsLogged) {
    runNotes({}, true);
    requestsOf(notes());
    requestsOf(notes(KeepOpen, ArgumentKind::LaunchArgs, u"-a"_s));
    EXPECT_EQ(log_.lines(), QStringList());
}

}  // namespace

}  // namespace kestrelbay
