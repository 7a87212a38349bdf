#include "platform/linux/desktop/AutostartLoginItem.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <string>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "fixtures/QtPrinters.h"
#include "platform/LoginItemContract.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

const QString &entryName() {
    static const QString name = u"org.kestrelbay.KestrelBay.desktop"_s;
    return name;
}

void write(const QString &path, const QByteArray &content) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QByteArray read(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no such file)");
}

/// A home of its own, with a program in it.
class Login {
public:
    Login() {
        write(program(), "#!/bin/sh\n");
        QFile::setPermissions(program(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    [[nodiscard]] QString path(const QString &name) const { return folder_.filePath(name); }
    [[nodiscard]] QString program() const { return path(u"bin/kestrelbay"_s); }
    [[nodiscard]] QString userFolder() const { return path(u"config/autostart"_s); }
    [[nodiscard]] QString userEntry() const { return userFolder() + u'/' + entryName(); }
    [[nodiscard]] QString systemEntry() const { return path(u"etc/autostart/"_s + entryName()); }
    [[nodiscard]] QByteArray valid() const {
        return "[Desktop Entry]\nType=Application\nName=K\nIcon=i\nExec=" + program().toUtf8() +
               "\n";
    }
    [[nodiscard]] QStringList userEntries() const {
        return QDir(userFolder())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    LoginItem &item() { return item_; }
    void setRefusing(bool refusing) const {
        if (refusing)
            write(userFolder(), "in the way");
        else
            QFile::remove(userFolder());
    }

private:
    QTemporaryDir folder_;
    AutostartLoginItem item_{{
        .userFolder = userFolder(),
        .systemFolders = {path(u"etc/autostart"_s), path(u"vendor/autostart"_s)},
        .context = {.executable = program(), .desktops = {u"GNOME"_s}},
    }};
};

class AutostartLoginItemTest : public ::testing::Test {
protected:
    LoginItem &item() { return login_.item(); }

    Login login_;
};

TEST_F(AutostartLoginItemTest, EnablingWritesAPlainFileAndItsFolders) {
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_EQ(read(login_.userEntry()),
              "[Desktop Entry]\nType=Application\nName=KestrelBay\n"
              "Icon=org.kestrelbay.KestrelBay\nExec=" +
                  login_.program().toUtf8() + "\n");
    EXPECT_EQ(login_.userEntries(), QStringList{entryName()});
    EXPECT_FALSE(QFileInfo(login_.userEntry()).isSymLink());
}

TEST_F(AutostartLoginItemTest, DisablingDeletesTheFileAlone) {
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    write(login_.userFolder() + u"/another.desktop"_s, "another's");
    EXPECT_EQ(item().setEnabled(false), std::nullopt);
    EXPECT_EQ(login_.userEntries(), QStringList{u"another.desktop"_s});
}

TEST_F(AutostartLoginItemTest, DisablingWithoutAFileLeavesNothingBehind) {
    EXPECT_EQ(item().setEnabled(false), std::nullopt);
    EXPECT_FALSE(QFileInfo::exists(login_.userFolder()));
}

TEST_F(AutostartLoginItemTest, WhatTheUserDidElsewhereIsSeen) {
    write(login_.userEntry(), login_.valid());
    EXPECT_TRUE(item().isEnabled());
    write(login_.userEntry(), login_.valid() + "Hidden=true\n");
    EXPECT_FALSE(item().isEnabled());
    write(login_.userEntry(), login_.valid() + "X-GNOME-Autostart-enabled=false\n");
    EXPECT_FALSE(item().isEnabled());
    ASSERT_TRUE(QFile::remove(login_.userEntry()));
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, AnEntryThatWasSwitchedOffIsSwitchedOnAgain) {
    for (const char *line : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n"}) {
        write(login_.userEntry(), "# mine\n\n" + login_.valid() + "X-Other=1\n" + line);
        EXPECT_EQ(item().setEnabled(true), std::nullopt);
        EXPECT_TRUE(item().isEnabled());
        EXPECT_EQ(read(login_.userEntry()), "# mine\n\n" + login_.valid() + "X-Other=1\n");
    }
}

TEST_F(AutostartLoginItemTest, AnEntryThatStartsTheProgramIsNotTouched) {
    const QByteArray text = login_.valid() + "\n\n# mine\n  X-Other = 1\n";
    write(login_.userEntry(), text);
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_EQ(read(login_.userEntry()), text);
}

TEST_F(AutostartLoginItemTest, AFileThatIsNoEntryIsKeptBesideTheNewOne) {
    write(login_.userEntry(), "not an entry");
    EXPECT_FALSE(item().isEnabled());
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(item().isEnabled());
    EXPECT_EQ(read(login_.userEntry() + u".unreadable"_s), "not an entry");
}

TEST_F(AutostartLoginItemTest, AnEmptyFileIsSimplyFilled) {
    write(login_.userEntry(), "\n");
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(item().isEnabled());
    EXPECT_EQ(login_.userEntries(), QStringList{entryName()});
}

TEST_F(AutostartLoginItemTest, AFolderInTheEntrysPlaceIsAReasonToRefuse) {
    ASSERT_TRUE(QDir().mkpath(login_.userEntry()));
    EXPECT_FALSE(item().isEnabled());
    const std::optional<QString> reason = item().setEnabled(true);
    ASSERT_TRUE(reason);
    EXPECT_TRUE(reason->contains(login_.userEntry()));
    EXPECT_TRUE(QFileInfo(login_.userEntry()).isDir());
}

TEST_F(AutostartLoginItemTest, AProgramThatIsGoneCannotBeStarted) {
    ASSERT_TRUE(QFile::remove(login_.program()));
    const std::optional<QString> reason = item().setEnabled(true);
    ASSERT_TRUE(reason);
    EXPECT_TRUE(reason->contains(login_.program()));
    EXPECT_FALSE(QFileInfo::exists(login_.userEntry()));
}

TEST_F(AutostartLoginItemTest, AnEntryForAPlaceTheProgramHasLeftIsMended) {
    write(login_.userEntry(),
          "[Desktop Entry]\nType=Application\nName=K\nIcon=i\n"
          "Exec=/nowhere/KestrelBay.AppImage\n");
    EXPECT_FALSE(item().isEnabled());
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_EQ(read(login_.userEntry()), login_.valid());
}

TEST_F(AutostartLoginItemTest, ALinkStaysALinkWhenItsEntryIsSwitchedOn) {
    const QString target = login_.path(u"dotfiles/keys.desktop"_s);
    write(target, login_.valid() + "Hidden=true\n");
    ASSERT_TRUE(QDir().mkpath(login_.userFolder()));
    ASSERT_TRUE(QFile::link(target, login_.userEntry()));
    EXPECT_FALSE(item().isEnabled());
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(QFileInfo(login_.userEntry()).isSymLink());
    EXPECT_EQ(read(target), login_.valid());
}

TEST_F(AutostartLoginItemTest, DisablingDeletesALinkAndLeavesWhatItLeadsTo) {
    const QString target = login_.path(u"applications/kestrelbay.desktop"_s);
    write(target, login_.valid());
    ASSERT_TRUE(QDir().mkpath(login_.userFolder()));
    ASSERT_TRUE(QFile::link(target, login_.userEntry()));
    EXPECT_TRUE(item().isEnabled());
    EXPECT_EQ(item().setEnabled(false), std::nullopt);
    EXPECT_FALSE(item().isEnabled());
    EXPECT_EQ(login_.userEntries(), QStringList());
    EXPECT_EQ(read(target), login_.valid());
}

TEST_F(AutostartLoginItemTest, ADanglingLinkGetsItsTarget) {
    const QString target = login_.path(u"not/yet/keys.desktop"_s);
    ASSERT_TRUE(QDir().mkpath(login_.userFolder()));
    ASSERT_TRUE(QFile::link(target, login_.userEntry()));
    EXPECT_FALSE(item().isEnabled());
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(item().isEnabled());
    EXPECT_TRUE(QFileInfo(login_.userEntry()).isSymLink());
    EXPECT_TRUE(QFileInfo(target).isFile());
}

TEST_F(AutostartLoginItemTest, ALinkToWhatIsNoFileIsReplacedByAFile) {
    // The usual one leads to /dev/null, which must survive.
    const QString pipe = login_.path(u"pipe"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    ASSERT_TRUE(QDir().mkpath(login_.userFolder()));
    ASSERT_TRUE(QFile::link(pipe, login_.userEntry()));
    EXPECT_FALSE(item().isEnabled());
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(item().isEnabled());
    EXPECT_FALSE(QFileInfo(login_.userEntry()).isSymLink());
    struct stat status {};
    ASSERT_EQ(::stat(QFile::encodeName(pipe).constData(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
    EXPECT_EQ(login_.userEntries(), QStringList{entryName()});
}

TEST_F(AutostartLoginItemTest, AnEntryOfTheSystemCounts) {
    write(login_.systemEntry(), login_.valid());
    EXPECT_TRUE(item().isEnabled());
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_FALSE(QFileInfo::exists(login_.userEntry()));
}

TEST_F(AutostartLoginItemTest, AnEntryOfTheSystemIsOverruledNotTouched) {
    write(login_.systemEntry(), login_.valid());
    EXPECT_EQ(item().setEnabled(false), std::nullopt);
    EXPECT_FALSE(item().isEnabled());
    EXPECT_EQ(read(login_.userEntry()),
              "[Desktop Entry]\nType=Application\nName=KestrelBay\nHidden=true\n");
    EXPECT_EQ(read(login_.systemEntry()), login_.valid());
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(item().isEnabled());
    EXPECT_EQ(item().setEnabled(false), std::nullopt);
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, AnEntryOfTheUsersHidesTheSystemsAndKeepsItsKeys) {
    write(login_.systemEntry(), login_.valid());
    write(login_.userEntry(), "# mine\n\n" + login_.valid() + "X-Other=1\n");
    EXPECT_EQ(item().setEnabled(false), std::nullopt);
    EXPECT_EQ(read(login_.userEntry()), "# mine\n\n" + login_.valid() + "X-Other=1\nHidden=true\n");
}

TEST_F(AutostartLoginItemTest, ABrokenEntryOfTheUsersRulesOverTheSystems) {
    write(login_.systemEntry(), login_.valid());
    write(login_.userEntry(), "");
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, ALinkToNowhereRulesOverTheSystemsEntry) {
    write(login_.systemEntry(), login_.valid());
    ASSERT_TRUE(QDir().mkpath(login_.userFolder()));
    ASSERT_TRUE(QFile::link(login_.path(u"nowhere"_s), login_.userEntry()));
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, TheFirstFolderOfTheSystemDecides) {
    write(login_.systemEntry(), login_.valid() + "Hidden=true\n");
    write(login_.path(u"vendor/autostart/"_s + entryName()), login_.valid());
    EXPECT_FALSE(item().isEnabled());
    ASSERT_TRUE(QFile::remove(login_.systemEntry()));
    EXPECT_TRUE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, AnEntryOfTheSystemThatCannotBeOverruledStaysOn) {
    write(login_.systemEntry(), login_.valid());
    login_.setRefusing(true);
    const std::optional<QString> reason = item().setEnabled(false);
    ASSERT_TRUE(reason);
    EXPECT_FALSE(reason->isEmpty());
    EXPECT_TRUE(item().isEnabled());
}

class PlacesTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::ranges::transform(kNames, before_.begin(),
                               [](const char *name) { return qgetenv(name); });
    }
    void TearDown() override {
        for (std::size_t i = 0; i < kNames.size(); ++i) {
            if (before_[i].isNull())
                qunsetenv(kNames[i]);
            else
                qputenv(kNames[i], before_[i]);
        }
    }

    static AutostartLoginItem::Places places() { return AutostartLoginItem::placesOfThisProgram(); }

private:
    static constexpr std::array kNames{"XDG_CONFIG_HOME", "XDG_CONFIG_DIRS", "XDG_CURRENT_DESKTOP",
                                       "APPIMAGE", "APPDIR"};
    std::array<QByteArray, kNames.size()> before_;
    int argumentCount_ = 1;
    std::string name_ = "test";
    std::array<char *, 2> arguments_{name_.data(), nullptr};
    QCoreApplication application_{argumentCount_, arguments_.data()};

protected:
    const QString self_ = QCoreApplication::applicationFilePath();
};

TEST_F(PlacesTest, AreThoseOfTheEnvironment) {
    qputenv("XDG_CONFIG_HOME", "/home/u/conf");
    qputenv("XDG_CONFIG_DIRS", "/etc/a:/etc/b");
    qputenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
    qunsetenv("APPIMAGE");
    qunsetenv("APPDIR");
    EXPECT_EQ(places().userFolder, u"/home/u/conf/autostart"_s);
    EXPECT_EQ(places().systemFolders, (QStringList{u"/etc/a/autostart"_s, u"/etc/b/autostart"_s}));
    EXPECT_EQ(places().context.desktops, (QStringList{u"ubuntu"_s, u"GNOME"_s}));
    EXPECT_EQ(places().context.executable, self_);
}

TEST_F(PlacesTest, HaveTheUsualDefaults) {
    qunsetenv("XDG_CONFIG_HOME");
    qunsetenv("XDG_CONFIG_DIRS");
    qunsetenv("XDG_CURRENT_DESKTOP");
    EXPECT_EQ(places().userFolder, QDir::homePath() + u"/.config/autostart"_s);
    EXPECT_EQ(places().systemFolders, QStringList{u"/etc/xdg/autostart"_s});
    EXPECT_EQ(places().context.desktops, QStringList());
}

TEST_F(PlacesTest, AnAppImageIsStartedByItsImage) {
    qputenv("APPIMAGE", "/home/u/KestrelBay 1.0.AppImage");
    qputenv("APPDIR", QFile::encodeName(QFileInfo(self_).path()));
    EXPECT_EQ(places().context.executable, u"/home/u/KestrelBay 1.0.AppImage"_s);
}

TEST_F(PlacesTest, TheImageOfAnotherProgramIsNotMeant) {
    qputenv("APPIMAGE", "/home/u/Terminal.AppImage");
    qputenv("APPDIR", "/tmp/.mount_TermXYZ");
    EXPECT_EQ(places().context.executable, self_);
    qputenv("APPDIR", "");
    EXPECT_EQ(places().context.executable, self_);
}

}  // namespace

namespace testing {

namespace {

INSTANTIATE_TYPED_TEST_SUITE_P(Autostart, LoginItemContract, Login);

}  // namespace

}  // namespace testing

}  // namespace kestrelbay
