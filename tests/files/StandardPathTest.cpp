#include "files/StandardPath.h"

#include <gtest/gtest.h>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

TEST(StandardPath, DotSegmentsAreResolved) {
    EXPECT_EQ(standardPath(u"/Applications/./Notes.app"_s), u"/Applications/Notes.app"_s);
    EXPECT_EQ(standardPath(u"/Applications/Utilities/../Notes.app"_s),
              u"/Applications/Notes.app"_s);
    EXPECT_EQ(standardPath(u"/a/.../.b/..c"_s), u"/a/.../.b/..c"_s);
}

TEST(StandardPath, NeedlessSlashesGo) {
    EXPECT_EQ(standardPath(u"/Applications//Notes.app/"_s), u"/Applications/Notes.app"_s);
    EXPECT_EQ(standardPath(u"/"_s), u"/"_s);
}

TEST(StandardPath, NothingIsAboveTheRoot) {
    EXPECT_EQ(standardPath(u"/../Applications"_s), u"/Applications"_s);
    EXPECT_EQ(standardPath(u"/../../x/../.././y/"_s), u"/y"_s);
    EXPECT_EQ(standardPath(u"/.."_s), u"/"_s);
    EXPECT_EQ(standardPath(u"/a/../.."_s), u"/"_s);
    EXPECT_EQ(standardPath(u"/..a/b"_s), u"/..a/b"_s);
}

TEST(StandardPath, OtherNamesStayOthers) {
    EXPECT_EQ(standardPath(u"/Caf\u00e9"_s), u"/Caf\u00e9"_s);
    EXPECT_EQ(standardPath(u"/Cafe\u0301"_s), u"/Cafe\u0301"_s);
    EXPECT_EQ(standardPath(u"org.kde.kate"_s), u"org.kde.kate"_s);
    EXPECT_EQ(standardPath(QString()), QString());
}

}  // namespace

}  // namespace kestrelbay
