#include "launcher/FilePath.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

#include <QDir>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

bool same(const QString &first, const QString &second) {
    return isSameFile(fileUrl(first), fileUrl(second));
}

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

TEST(FileUrl, DoubleSlashIsNoHost) {
    EXPECT_EQ(fileUrl(u"//host/x"_s).host(), QString());
    EXPECT_EQ(fileUrl(u"//host/x"_s).toLocalFile(), u"/host/x"_s);
}

TEST(SameFile, DotSegmentsAreResolved) {
    EXPECT_TRUE(same(u"/Applications/./Notes.app"_s, u"/Applications/Notes.app"_s));
    EXPECT_TRUE(same(u"/Applications/Utilities/../Notes.app"_s, u"/Applications/Notes.app"_s));
    EXPECT_TRUE(same(u"/Applications/Notes.app/"_s, u"/Applications/Notes.app"_s));
}

TEST(SameFile, OtherPathsDiffer) {
    EXPECT_FALSE(same(u"/Applications/Notes.app"_s, u"/Users/x/Applications/Notes.app"_s));
    EXPECT_FALSE(same(u"/Applications/notes.app"_s, u"/Applications/Notes.app"_s));
}

TEST(SameFile, OnlyFilesCount) {
    EXPECT_FALSE(isSameFile(QUrl(), QUrl()));
    EXPECT_FALSE(isSameFile(QUrl(), fileUrl(u"/x"_s)));
    EXPECT_FALSE(isSameFile(QUrl(u"http://a/x"_s), QUrl(u"http://a/x"_s)));
}

}  // namespace

}  // namespace kestrelbay
