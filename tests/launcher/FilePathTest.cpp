#include "launcher/FilePath.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

#include <QDir>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

TEST(ExpandingTilde, TildeAloneIsTheHomeFolder) {
    EXPECT_EQ(expandingTilde(u"~"_s), QDir::homePath());
    EXPECT_EQ(expandingTilde(u"~/Downloads"_s), QDir::homePath() + u"/Downloads"_s);
}

TEST(ExpandingTilde, FollowsTheEnvironment) {
    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", "/elsewhere");
    EXPECT_EQ(expandingTilde(u"~/x"_s), u"/elsewhere/x"_s);
    qputenv("HOME", home);
}

TEST(ExpandingTilde, NameOfAUserIsThatUsersHome) {
    const passwd *const root = getpwnam("root");
    ASSERT_NE(root, nullptr);
    const QString home = QString::fromLocal8Bit(root->pw_dir);
    EXPECT_EQ(expandingTilde(u"~root"_s), home);
    EXPECT_EQ(expandingTilde(u"~root/x y"_s), home + u"/x y"_s);
}

TEST(ExpandingTilde, UnknownUserLeavesTheTextAlone) {
    EXPECT_EQ(expandingTilde(u"~nobody-has-this-name/x"_s), u"~nobody-has-this-name/x"_s);
}

TEST(ExpandingTilde, OnlyALeadingTildeCounts) {
    EXPECT_EQ(expandingTilde(u"/a/~"_s), u"/a/~"_s);
    EXPECT_EQ(expandingTilde(u" ~"_s), u" ~"_s);
    EXPECT_EQ(expandingTilde(QString()), QString());
}

TEST(FileUrl, SpecialCharactersBelongToThePath) {
    EXPECT_EQ(fileUrl(u"/a b%20#?.txt"_s).toLocalFile(), u"/a b%20#?.txt"_s);
}

TEST(FileUrl, RelativePathStartsAtTheCurrentFolder) {
    EXPECT_EQ(fileUrl(u"notes.txt"_s).toLocalFile(), QDir::currentPath() + u"/notes.txt"_s);
}

TEST(FileUrl, LeadingColonIsPartOfARelativePath) {
    for (const QString &path : {u":/x"_s, u":"_s, u":x/y"_s})
        EXPECT_EQ(fileUrl(path).toEncoded(),
                  QUrl::fromLocalFile(QDir::currentPath() + u'/' + path).toEncoded());
    EXPECT_EQ(fileUrl(u"/:/x"_s).toLocalFile(), u"/:/x"_s);
}

TEST(FileUrl, DoubleSlashIsNoHost) {
    EXPECT_EQ(fileUrl(u"//host/x"_s).host(), QString());
    EXPECT_EQ(fileUrl(u"//host/x"_s).toLocalFile(), u"/host/x"_s);
}

}  // namespace

}  // namespace kestrelbay
