#include "settings/FeedbackSounds.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

QStringList suffixes() {
    return {u".aiff"_s, u".aif"_s};
}

QStringList names(const QStringList &entries) {
    return feedbackSoundNames(entries, suffixes());
}

void touch(const QTemporaryDir &folder, const QStringList &entries) {
    for (const QString &entry : entries) {
        QFile file(folder.filePath(entry));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
}

TEST(FeedbackSounds, FeaturedSoundFirstThenTheRestInOrder) {
    EXPECT_EQ(names({u"Pop.aif"_s, u"readme.txt"_s, u"Jump.aiff"_s, u"Basso.aiff"_s}),
              (QStringList{u"Jump"_s, u"Basso"_s, u"Pop"_s}));
}

TEST(FeedbackSounds, WithoutTheFeaturedSoundAllAreInOrder) {
    EXPECT_EQ(names({u"Pop.aif"_s, u"Basso.aiff"_s}), (QStringList{u"Basso"_s, u"Pop"_s}));
}

TEST(FeedbackSounds, CaseOfTheSuffixCounts) {
    EXPECT_EQ(names({u"Ping.AIFF"_s}), QStringList());
}

TEST(FeedbackSounds, OnlyTheLastExtensionIsRemoved) {
    EXPECT_EQ(names({u"a.b.aiff"_s, u"c.aiff.aif"_s}), (QStringList{u"a.b"_s, u"c.aiff"_s}));
}

TEST(FeedbackSounds, NameThatIsOnlyASuffixIsNoExtension) {
    EXPECT_EQ(names({u".aiff"_s}), QStringList{u".aiff"_s});
}

TEST(FeedbackSounds, EachNameIsOfferedOnce) {
    EXPECT_EQ(names({u"Pop.aif"_s, u"Pop.aiff"_s, u"Jump.aif"_s, u"Jump.aiff"_s}),
              (QStringList{u"Jump"_s, u"Pop"_s}));
}

TEST(FeedbackSounds, OrderIsByCodePointNotByLocale) {
    EXPECT_EQ(names({u"b.aif"_s, u"a.aif"_s, u"B.aif"_s, u"é.aif"_s, u"Z.aif"_s}),
              (QStringList{u"B"_s, u"Z"_s, u"a"_s, u"b"_s, u"é"_s}));
    EXPECT_EQ(names({u"\U0001F600.aif"_s, u"\uFF21.aif"_s}),
              (QStringList{u"\uFF21"_s, u"\U0001F600"_s}));
}

TEST(FeedbackSounds, SimilarNamesAreNotFeatured) {
    EXPECT_EQ(names({u"jump.aif"_s, u"Jumper.aif"_s, u"A.aif"_s}),
              (QStringList{u"A"_s, u"Jumper"_s, u"jump"_s}));
}

TEST(FeedbackSounds, FoldersAreMerged) {
    const QTemporaryDir first;
    const QTemporaryDir second;
    touch(first, {u"Pop.aiff"_s, u"Basso.aiff"_s});
    touch(second, {u"Pop.aif"_s, u"Jump.aiff"_s, u"readme.txt"_s});
    EXPECT_EQ(feedbackSounds({first.path(), second.path()}, suffixes()),
              (QStringList{u"Jump"_s, u"Basso"_s, u"Pop"_s}));
}

TEST(FeedbackSounds, FoldersAreNotSearchedBelow) {
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"below"_s));
    touch(folder, {u"below/Pop.aiff"_s});
    EXPECT_EQ(feedbackSounds({folder.path()}, suffixes()), QStringList());
}

TEST(FeedbackSounds, FolderThatCannotBeListedHasNone) {
    const QTemporaryDir folder;
    touch(folder, {u"Pop.aiff"_s});
    EXPECT_EQ(feedbackSounds({u"/nowhere/at/all"_s}, suffixes()), QStringList());
    EXPECT_EQ(feedbackSounds({u"/nowhere/at/all"_s, folder.path()}, suffixes()),
              QStringList{u"Pop"_s});
    EXPECT_EQ(feedbackSounds({}, suffixes()), QStringList());
}

}  // namespace

}  // namespace kestrelbay
