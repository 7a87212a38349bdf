#include <QDir>

#include "launcher/LauncherFixture.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

using enum RepeatAction;

class DeepLaunch : public LauncherFixture {
protected:
    QStringList requestsOfUrl(const QString &text) {
        return requestsOf(notes(KeepOpen, ArgumentKind::UrlScheme, text));
    }
};

TEST_F(DeepLaunch, ArgumentsOfNothingButQuotesAreAPlainLaunch) {
    const QStringList plain{u"open file:///Applications/Notes.app"_s};
    EXPECT_EQ(requestsOf(notes(KeepOpen, ArgumentKind::LaunchArgs, u"\"\""_s)), plain);
    EXPECT_EQ(requestsOf(notes(KeepOpen, ArgumentKind::LaunchArgs, u"\\"_s)), plain);
    runNotes({u"A"_s}, true);
    EXPECT_EQ(requestsOf(notes(ToggleVisibility, ArgumentKind::LaunchArgs, u"''"_s)), plain);
}

TEST_F(DeepLaunch, FailedLaunchWithArgumentsIsLogged) {
    workspace_.setLaunchError(u"no such application"_s);
    requestsOf(notes(KeepOpen, ArgumentKind::LaunchArgs, u"-a"_s));
    EXPECT_EQ(log_.lines(),
              QStringList{u"KestrelBay: launch with args failed: no such application"_s});
}

TEST_F(DeepLaunch, SuccessfulLaunchWithArgumentsIsSilent) {
    requestsOf(notes(KeepOpen, ArgumentKind::LaunchArgs, u"-a"_s));
    EXPECT_EQ(log_.lines(), QStringList());
}

TEST_F(DeepLaunch, TextThatIsNoUrlDoesNothing) {
    for (const QString &text : {u"things:///a b"_s, u"not a url"_s, u"http://[bad"_s,
                                u"a://b/%zz"_s, u"http://a:port/"_s, u"a b://c"_s})
        EXPECT_EQ(requestsOfUrl(text), QStringList()) << text.toStdString();
    runNotes({u"A"_s}, true);
    EXPECT_EQ(requestsOfUrl(u"not a url"_s), QStringList());
}

TEST_F(DeepLaunch, UrlIsOpenedAsItWasTyped) {
    for (const QString &text :
         {u"things:///add?title=Buy%20milk%2C%20now%26then%23x&list=a+b"_s,
          u"raycast://x/y?arguments=%7B%22a%22%3A%22b%2Fc%22%7D"_s, u"file:///tmp/a%20b%25.txt"_s,
          u"obsidian://open?vault=v&file=a%2Fb%20c"_s, u"mailto:a@example.com?subject=%C3%A9"_s,
          u"tel://5551234"_s, u"shortcuts://RunMe/Do?Name=X"_s, u"foo:Bar%7ebaz"_s,
          u"message://%3CAb%40c%3E"_s, u"foo://h:99999/"_s})
        EXPECT_EQ(requestsOfUrl(text), QStringList{u"openUrl "_s + text});
}

TEST_F(DeepLaunch, UrlGoesToTheSystemWhetherOrNotTheApplicationRuns) {
    const QStringList expected{u"openUrl https://example.com/"_s};
    EXPECT_EQ(requestsOfUrl(u"https://example.com/"_s), expected);
    runNotes({});
    EXPECT_EQ(requestsOfUrl(u"https://example.com/"_s), expected);
}

TEST_F(DeepLaunch, FinderShowsTheFolderOnEveryPress) {
    const ShortcutRule rule = finder(KeepOpen, ArgumentKind::FilePath, u"~/Downloads"_s);
    runFinder({u"A"_s}, true);
    const QStringList expected{u"showFolder "_s + QDir::homePath() + u"/Downloads"_s};
    EXPECT_EQ(requestsOf(rule), expected);
    EXPECT_EQ(requestsOf(rule), expected);
}

TEST_F(DeepLaunch, FinderThatIsNotRunningOpensTheFolderLikeAnyFile) {
    EXPECT_EQ(requestsOf(finder(KeepOpen, ArgumentKind::FilePath, u"/tmp"_s)),
              QStringList{u"openFiles file:///tmp with file:///System/Finder.app"_s});
}

TEST_F(DeepLaunch, TildeIsExpandedForEveryApplication) {
    const QString expected = u"openFiles "_s +
                             QUrl::fromLocalFile(QDir::homePath() + u"/x"_s).toString() +
                             u" with file:///Applications/Notes.app"_s;
    const ShortcutRule rule = notes(KeepOpen, ArgumentKind::FilePath, u"~/x"_s);
    EXPECT_EQ(requestsOf(rule), QStringList{expected});
    runNotes({u"A"_s});
    EXPECT_EQ(requestsOf(rule), QStringList{expected});
}

TEST_F(DeepLaunch, PathThatBeginsWithAColonIsAFileLikeAnyOther) {
    const QString file =
        QString::fromLatin1(QUrl::fromLocalFile(QDir::currentPath() + u"/:/x"_s).toEncoded());
    EXPECT_EQ(requestsOf(notes(KeepOpen, ArgumentKind::FilePath, u":/x"_s)),
              QStringList{u"openFiles "_s + file + u" with file:///Applications/Notes.app"_s});
}

TEST_F(DeepLaunch, OnlyAFileRuleAsksForTheFileManager) {
    runNotes({u"A"_s});
    requestsOf(notes(KeepOpen, ArgumentKind::LaunchArgs, u"-a"_s));
    EXPECT_EQ(asked(u"fileManagerIdentifier"_s), 0);
    requestsOf(notes(KeepOpen, ArgumentKind::UrlScheme, u"a:b"_s));
    EXPECT_EQ(asked(u"fileManagerIdentifier"_s), 0);
    requestsOf(notes(KeepOpen, ArgumentKind::FilePath, u"/tmp"_s));
    EXPECT_EQ(asked(u"fileManagerIdentifier"_s), 1);
}

TEST_F(DeepLaunch, WithoutAFileManagerNoApplicationIsIt) {
    workspace_.setFileManagerIdentifier(QString());
    runNotes({u"A"_s})->bundleIdentifier.clear();
    EXPECT_EQ(requestsOf(notes(KeepOpen, ArgumentKind::FilePath, u"/tmp"_s)),
              QStringList{u"openFiles file:///tmp with file:///Applications/Notes.app"_s});
}

}  // namespace

}  // namespace kestrelbay
