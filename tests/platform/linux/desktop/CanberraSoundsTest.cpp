#include "platform/linux/desktop/CanberraSounds.h"

#include <chrono>
#include <memory>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace kestrelbay {

namespace {

class SoundsTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(QDir(folder_.path()).mkdir(QStringLiteral("own")));
        ASSERT_TRUE(QDir(folder_.path()).mkdir(QStringLiteral("theme")));
    }

    void addFile(const QString &name, const QByteArray &content = "x") const {
        QFile file(folder_.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    [[nodiscard]] QString find(const QString &name) const {
        return QDir(folder_.path()).relativeFilePath(findSoundFile(directories_, name));
    }

    QTemporaryDir folder_;
    const QStringList directories_{folder_.filePath(QStringLiteral("own")),
                                   folder_.filePath(QStringLiteral("absent")),
                                   folder_.filePath(QStringLiteral("theme"))};
};

constexpr std::chrono::milliseconds kNoticeable{50};

}  // namespace

TEST_F(SoundsTest, TheFirstFolderAndThenTheFirstSuffixWins) {
    addFile(QStringLiteral("theme/bell.oga"));
    addFile(QStringLiteral("theme/bell.wav"));
    EXPECT_EQ(find(QStringLiteral("bell")), QStringLiteral("theme/bell.oga"));
    addFile(QStringLiteral("own/bell.wav"));
    EXPECT_EQ(find(QStringLiteral("bell")), QStringLiteral("own/bell.wav"));
    addFile(QStringLiteral("own/bell.ogg"));
    EXPECT_EQ(find(QStringLiteral("bell")), QStringLiteral("own/bell.ogg"));
}

TEST_F(SoundsTest, OnlyFilesOfTheFoldersAreFound) {
    addFile(QStringLiteral("secret.wav"));
    addFile(QStringLiteral("own/.wav"));
    addFile(QStringLiteral("own/a.b.wav"));
    ASSERT_TRUE(QDir(folder_.path()).mkdir(QStringLiteral("own/folder.wav")));
    for (const QString &name :
         {QString(), QStringLiteral(".."), QStringLiteral("../secret"),
          QStringLiteral("/etc/passwd"), folder_.filePath(QStringLiteral("secret")),
          QStringLiteral("folder"), QStringLiteral("nobody knows"),
          QStringLiteral("a.b") + QChar(u'\0')}) {
        EXPECT_EQ(findSoundFile(directories_, name), QString()) << name.toStdString();
    }
    EXPECT_EQ(find(QStringLiteral("a.b")), QStringLiteral("own/a.b.wav"));
}

TEST_F(SoundsTest, FoldersThatDoNotExistAreNotNamed) {
    const CanberraSounds sounds(directories_);
    EXPECT_EQ(sounds.directories(), (QStringList{directories_[0], directories_[2]}));
    EXPECT_EQ(sounds.suffixes(), (QStringList{QStringLiteral(".oga"), QStringLiteral(".ogg"),
                                              QStringLiteral(".wav")}));
}

TEST_F(SoundsTest, OurOwnSoundIsFoundFromABuildTree) {
    const QString path = findSoundFile(standardSoundDirectories(), QStringLiteral("Jump"));
    EXPECT_TRUE(path.endsWith(QStringLiteral("/share/kestrelbay/sounds/Jump.wav")))
        << path.toStdString();
}

TEST_F(SoundsTest, WithoutASoundServerPlayingIsSilentAndQuick) {
    // Neither a server to talk to nor a machine-wide one to start.
    qputenv("PULSE_SERVER", "unix:/nonexistent");
    qputenv("PIPEWIRE_REMOTE", "nonexistent");
    ASSERT_TRUE(QFile::copy(QStringLiteral(KESTRELBAY_JUMP_WAV),
                            folder_.filePath(QStringLiteral("own/Jump.wav"))));
    addFile(QStringLiteral("own/broken.wav"), "no sound at all");
    auto sounds = std::make_unique<CanberraSounds>(directories_);
    const auto start = std::chrono::steady_clock::now();
    for (const char *name : {"Jump", "broken", "unknown", "", "../Jump", "Jump"}) {
        sounds->play(QString::fromLatin1(name));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, kNoticeable);
    sounds.reset();
}

TEST_F(SoundsTest, AnObjectThatNeverPlayedEndsAtOnce) {
    const auto start = std::chrono::steady_clock::now();
    std::make_unique<CanberraSounds>(directories_).reset();
    EXPECT_LT(std::chrono::steady_clock::now() - start, kNoticeable);
}

}  // namespace kestrelbay
