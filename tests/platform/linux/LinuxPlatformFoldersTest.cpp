#include <map>
#include <memory>

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "fixtures/QtPrinters.h"
#include "platform/Platform.h"
#include "platform/UserDefaults.h"

namespace kestrelbay {
namespace {

/// With variables of its own, for the time of a test.
class LinuxPlatformFolders : public testing::Test {
protected:
    LinuxPlatformFolders() {
        for (const char *name : {"HOME", "XDG_CONFIG_HOME"})
            before_[name] = qgetenv(name);
    }
    ~LinuxPlatformFolders() override {
        for (const auto &[name, value] : before_)
            qputenv(name, value);
    }

    static QString support() { return makePlatform()->applicationSupportDirectory(); }

private:
    std::map<const char *, QByteArray> before_;
};

TEST_F(LinuxPlatformFolders, AreThoseOfTheUser) {
    qputenv("HOME", "/home/me");
    qunsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(support(), QStringLiteral("/home/me/.config"));
    qputenv("XDG_CONFIG_HOME", "/else/where");
    EXPECT_EQ(support(), QStringLiteral("/else/where"));
    qunsetenv("HOME");
    EXPECT_EQ(support(), QStringLiteral("/else/where"));
}

TEST_F(LinuxPlatformFolders, AreNotMadeUp) {
    const QTemporaryDir folder;
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(folder.path()));
    for (const char *home : {"", "here"}) {
        qputenv("HOME", home);
        qputenv("XDG_CONFIG_HOME", home);
        EXPECT_EQ(support(), QString()) << home;
        makePlatform()->userDefaults().setBoolean(QStringLiteral("launchAtLogin"), true);
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList());
    QDir::setCurrent(before);
}

}  // namespace
}  // namespace kestrelbay
