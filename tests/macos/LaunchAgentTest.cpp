#include "platform/macos/desktop/MacLoginItem.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "fakes/FakeUserDefaults.h"
#include "fixtures/QtPrinters.h"
#include "settings/LaunchAtLogin.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::macos {

namespace {

constexpr const char *kPropertyList =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\""
    " \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n"
    "<dict>\n"
    "    <key>Label</key>\n"
    "    <string>%LABEL%</string>\n"
    "    <key>ProgramArguments</key>\n"
    "    <array>\n"
    "        <string>/usr/bin/open</string>\n"
    "        <string>-a</string>\n"
    "        <string>%PATH%</string>\n"
    "    </array>\n"
    "    <key>RunAtLoad</key>\n"
    "    <true/>\n"
    "    <key>KeepAlive</key>\n"
    "    <false/>\n"
    "</dict>\n"
    "</plist>";

QByteArray propertyList(const QByteArray &label, const QByteArray &path) {
    return QByteArray(kPropertyList).replace("%LABEL%", label).replace("%PATH%", path);
}

TEST(LaunchAgentPropertyList, IsTheTemplateByteForByte) {
    EXPECT_EQ(launchAgentPropertyList(u"org.example.A"_s, u"/Applications/KestrelBay.app"_s),
              propertyList("org.example.A", "/Applications/KestrelBay.app"));
}

TEST(LaunchAgentPropertyList, EscapesWhatXmlWouldMisread) {
    EXPECT_EQ(launchAgentPropertyList(u"a&b"_s, u"/A <B> & \"C\" 'D' &amp; ]]>.app"_s),
              propertyList("a&amp;b", "/A &lt;B&gt; &amp; \"C\" 'D' &amp;amp; ]]&gt;.app"));
}

TEST(LaunchAgentPropertyList, IsUtf8) {
    EXPECT_EQ(launchAgentPropertyList(u"l"_s, u"/应用/é🐦.app"_s),
              propertyList("l", "/\xE5\xBA\x94\xE7\x94\xA8/\xC3\xA9\xF0\x9F\x90\xA6.app"));
}

class LegacyLoginItemTest : public ::testing::Test {
protected:
    static QByteArray read(const QString &path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no such file)");
    }
    static void write(const QString &path, const QByteArray &content) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    [[nodiscard]] QStringList inHome() const {
        return QDir(home_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    const QTemporaryDir home_;
    const QString bundle_ = u"/Applications/KestrelBay & Co.app"_s;
    const QString path_ = home_.filePath(u"Library/LaunchAgents/org.kestrelbay.KestrelBay.plist"_s);
    const QByteArray content_ =
        propertyList("org.kestrelbay.KestrelBay", "/Applications/KestrelBay &amp; Co.app");
    LegacyLoginItem item_{home_.path(), bundle_};
};

TEST_F(LegacyLoginItemTest, TheFileIsNamedByTheLabel) {
    EXPECT_EQ(launchAgentPath(home_.path()), path_);
}

TEST_F(LegacyLoginItemTest, EnablingWritesTheFileAndItsFolders) {
    setLaunchAtLoginLegacy(true, home_.path(), bundle_);
    EXPECT_EQ(read(path_), content_);
    EXPECT_EQ(QDir(QFileInfo(path_).path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(LegacyLoginItemTest, EnablingReplacesAnOlderFile) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path_).path()));
    write(path_, QByteArray(4000, 'x'));
    setLaunchAtLoginLegacy(true, home_.path(), bundle_);
    EXPECT_EQ(read(path_), content_);
}

TEST_F(LegacyLoginItemTest, WhoeverReadsTheOldFileMeanwhileHasItWhole) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path_).path()));
    write(path_, "the old one");
    QFile reader(path_);
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
    setLaunchAtLoginLegacy(true, home_.path(), bundle_);
    EXPECT_EQ(reader.readAll(), "the old one");
    EXPECT_EQ(read(path_), content_);
}

TEST_F(LegacyLoginItemTest, DisablingDeletesTheFileAlone) {
    setLaunchAtLoginLegacy(true, home_.path(), bundle_);
    write(QFileInfo(path_).path() + u"/another.plist"_s, "another's");
    setLaunchAtLoginLegacy(false, home_.path(), bundle_);
    EXPECT_EQ(QDir(QFileInfo(path_).path()).entryList(QDir::Files),
              QStringList{u"another.plist"_s});
}

TEST_F(LegacyLoginItemTest, DisablingWithoutAFileLeavesNothingBehind) {
    setLaunchAtLoginLegacy(false, home_.path(), bundle_);
    EXPECT_EQ(inHome(), QStringList());
}

TEST_F(LegacyLoginItemTest, AFolderThatCannotBeMadeIsIgnored) {
    write(home_.filePath(u"Library"_s), "in the way");
    EXPECT_EQ(item_.setEnabled(true), std::nullopt);
    EXPECT_EQ(item_.setEnabled(false), std::nullopt);
    EXPECT_FALSE(item_.isEnabled());
    EXPECT_EQ(inHome(), QStringList{u"Library"_s});
}

TEST_F(LegacyLoginItemTest, IsEnabledExactlyWhileTheFileExists) {
    EXPECT_FALSE(item_.isEnabled());
    EXPECT_EQ(item_.setEnabled(true), std::nullopt);
    EXPECT_TRUE(item_.isEnabled());
    EXPECT_EQ(read(path_), content_);
    write(path_, "whatever it holds");
    EXPECT_TRUE(item_.isEnabled());
    EXPECT_EQ(item_.setEnabled(false), std::nullopt);
    EXPECT_FALSE(item_.isEnabled());
}

TEST_F(LegacyLoginItemTest, ServesTheSwitchWithoutAnyReport) {
    FakeUserDefaults defaults;
    LaunchAtLogin launchAtLogin(item_, defaults,
                                [](const LaunchAtLogin::Failure &) { ADD_FAILURE(); });
    launchAtLogin.setLaunchAtLogin(true);
    EXPECT_TRUE(launchAtLogin.isLaunchAtLoginEnabled());
    launchAtLogin.setLaunchAtLogin(false);
    launchAtLogin.setLaunchAtLogin(false);
    EXPECT_FALSE(launchAtLogin.isLaunchAtLoginEnabled());
    EXPECT_EQ(defaults.boolean(u"launchAtLogin"_s), false);
}

}  // namespace

}  // namespace kestrelbay::macos
