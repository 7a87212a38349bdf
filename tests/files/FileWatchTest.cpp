#include "files/FileWatch.h"

#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "fixtures/QtPrinters.h"
#include "support/Poll.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {
namespace {

class FileWatchTest : public ::testing::Test {
protected:
    [[nodiscard]] QString path(const QString &name) const { return folder_.filePath(name); }
    void write(const QString &name, const QByteArray &content) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    void replace(const QString &name, const QByteArray &content) const {
        write(name + u".new"_s, content);
        ASSERT_EQ(::rename(QFile::encodeName(path(name + u".new"_s)).constData(),
                           QFile::encodeName(path(name)).constData()),
                  0);
    }
    /// Replaces what is there, as `ln -sfn` does.
    void link(const QString &target, const QString &name) const {
        ASSERT_TRUE(QFile::link(target, path(name + u".new"_s)));
        ASSERT_EQ(::rename(QFile::encodeName(path(name + u".new"_s)).constData(),
                           QFile::encodeName(path(name)).constData()),
                  0);
    }
    [[nodiscard]] QByteArray content() const {
        QFile file(path(u"here/file"_s));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "(no file)";
    }
    void watch() {
        watch_.emplace(path(u"here/file"_s), [this] { told_ = content(); });
        told_ = content();
    }
    /// Is the content of this moment told of, and nothing missed before it?
    [[nodiscard]] bool tells(const QByteArray &wanted) {
        return testing::waitUntil([&] { return told_ == wanted; });
    }

    QTemporaryDir folder_;
    std::optional<FileWatch> watch_;
    QByteArray told_;
};

TEST_F(FileWatchTest, TellsOfAFileThatIsWrittenReplacedRemovedAndMade) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"here"_s));
    watch();
    EXPECT_EQ(told_, "(no file)");
    for (int round = 0; round < 3; ++round) {
        const QByteArray number = QByteArray::number(round);
        write(u"here/file"_s, "made " + number);
        EXPECT_TRUE(tells("made " + number));
        write(u"here/file"_s, "written " + number);
        EXPECT_TRUE(tells("written " + number));
        replace(u"here/file"_s, "replaced " + number);
        EXPECT_TRUE(tells("replaced " + number));
        write(u"here/file"_s, "written again " + number);
        EXPECT_TRUE(tells("written again " + number));
        ASSERT_TRUE(QFile::remove(path(u"here/file"_s)));
        EXPECT_TRUE(tells("(no file)"));
    }
}

TEST_F(FileWatchTest, TellsOfAFolderThatComesAndGoes) {
    watch();
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(QDir(folder_.path()).mkdir(u"here"_s));
        write(u"here/file"_s, "made");
        EXPECT_TRUE(tells("made"));
        ASSERT_TRUE(QDir(path(u"here"_s)).removeRecursively());
        EXPECT_TRUE(tells("(no file)"));
    }
}

TEST_F(FileWatchTest, TellsOfAFolderThatIsMovedAwayAndPutBack) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"here"_s));
    write(u"here/file"_s, "first");
    watch();
    ASSERT_TRUE(QDir(folder_.path()).rename(u"here"_s, u"away"_s));
    EXPECT_TRUE(tells("(no file)"));
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"here"_s));
    write(u"here/file"_s, "second");
    EXPECT_TRUE(tells("second"));
}

TEST_F(FileWatchTest, TellsOfWhatLinksLeadTo) {
    for (const QString &name : {u"here"_s, u"dotfiles"_s, u"other"_s})
        ASSERT_TRUE(QDir(folder_.path()).mkdir(name));
    write(u"dotfiles/real"_s, "first");
    write(u"other/real"_s, "other");
    link(u"../dotfiles/middle"_s, u"here/file"_s);
    link(u"real"_s, u"dotfiles/middle"_s);
    watch();
    EXPECT_EQ(told_, "first");
    write(u"dotfiles/real"_s, "written");
    EXPECT_TRUE(tells("written"));
    replace(u"dotfiles/real"_s, "replaced");
    EXPECT_TRUE(tells("replaced"));
    link(path(u"other/real"_s), u"dotfiles/middle"_s);
    EXPECT_TRUE(tells("other"));
    write(u"other/real"_s, "other, written");
    EXPECT_TRUE(tells("other, written"));
    link(u"nowhere"_s, u"here/file"_s);
    EXPECT_TRUE(tells("(no file)"));
    write(u"here/nowhere"_s, "somewhere");
    EXPECT_TRUE(tells("somewhere"));
}

TEST_F(FileWatchTest, TellsOfALinkedFolderThatIsSwitched) {
    for (const QString &name : {u"first"_s, u"second"_s}) {
        ASSERT_TRUE(QDir(folder_.path()).mkdir(name));
        write(name + u"/file"_s, name.toUtf8());
    }
    link(u"first"_s, u"here"_s);
    watch();
    EXPECT_EQ(told_, "first");
    link(u"second"_s, u"here"_s);
    EXPECT_TRUE(tells("second"));
    replace(u"second/file"_s, "replaced");
    EXPECT_TRUE(tells("replaced"));
}

TEST_F(FileWatchTest, LinksInACircleEndSomewhere) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"here"_s));
    link(u"file"_s, u"here/file"_s);
    watch();
    replace(u"here/file"_s, "a file");
    EXPECT_TRUE(tells("a file"));
}

}  // namespace
}  // namespace kestrelbay
