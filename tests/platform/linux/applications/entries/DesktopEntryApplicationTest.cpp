#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

#include "platform/linux/applications/entries/ApplicationFolders.h"
#include "platform/linux/applications/entries/ApplicationIndex.h"
#include "platform/linux/applications/entries/DesktopEntry.h"

namespace kestrelbay {
namespace {

QByteArray entryText(const QByteArray &lines) {
    return "[Desktop Entry]\nType=Application\nName=Thing\n" + lines + '\n';
}

DesktopEntry parsed(const QByteArray &lines) {
    const auto entry = parseDesktopEntry(entryText(lines), QStringLiteral("/a/thing.desktop"),
                                         QStringLiteral("thing.desktop"));
    EXPECT_TRUE(entry.has_value());
    return entry.value_or(DesktopEntry());
}

TEST(DesktopEntryApplication, KeepsWhatRecognisingNeeds) {
    const DesktopEntry entry = parsed(
        "Exec=/opt/thing/bin/thing --new %U\nTryExec=thing-check\nStartupWMClass=Thing App\n"
        "X-Flatpak=org.example.Thing\nX-SnapInstanceName=thing_snap\nHidden=true");
    EXPECT_EQ(entry.path, QStringLiteral("/a/thing.desktop"));
    EXPECT_EQ(entry.id, QStringLiteral("thing.desktop"));
    EXPECT_EQ(entry.startupWmClass, QStringLiteral("Thing App"));
    EXPECT_EQ(entry.flatpakId, QStringLiteral("org.example.Thing"));
    EXPECT_EQ(entry.snapName, QStringLiteral("thing_snap"));
    EXPECT_EQ(entry.executableNames,
              QStringList({QStringLiteral("thing"), QStringLiteral("thing-check")}));
    EXPECT_TRUE(entry.hidden);
}

TEST(DesktopEntryApplication, IsNothingButAnApplication) {
    const QString path = QStringLiteral("/a/b.desktop");
    for (const char *text :
         {"", "garbage", "[Desktop Entry]\nType=Link\nURL=http://a\n", "[Desktop Entry]\nName=A\n",
          "[Other]\nType=Application\n", "[Desktop Entry\nType=Application\n", "\xff\xfe\0"})
        EXPECT_FALSE(parseDesktopEntry(text, path, path).has_value()) << text;
}

TEST(DesktopEntryApplication, TakesNoNameFromInterpretersAndWrappers) {
    for (const char *exec :
         {"sh thing", "sh -c 'thing | x'", "/usr/bin/python3.11 /opt/x.py", "env A=b python3 x",
          "flatpak run org.x", "/usr/bin/electron25 /opt/app", "java -jar x.jar", "gtk-launch x",
          "perl5.36 x", "snap run x", "", "\"unclosed"})
        EXPECT_EQ(parsed(QByteArray("Exec=") + exec).executableNames, QStringList()) << exec;
    EXPECT_EQ(parsed("Exec=env -u HOME GDK_BACKEND=x11 thing %f").executableNames,
              QStringList(QStringLiteral("thing")));
    EXPECT_EQ(parsed("Exec=\"/opt/my thing/run\" x").executableNames,
              QStringList(QStringLiteral("run")));
}

TEST(DesktopEntryApplication, NeverOpensAPipe) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("pipe.desktop"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    EXPECT_FALSE(readDesktopEntry(path, QStringLiteral("pipe.desktop")).has_value());
}

class FoldersOfApplications : public ::testing::Test {
protected:
    QString write(const QString &relative, const QByteArray &lines = "Exec=true") {
        QString path = root_.filePath(relative);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(entryText(lines));
        return path;
    }
    [[nodiscard]] QStringList folders() const {
        return {root_.filePath(QStringLiteral("home")), root_.filePath(QStringLiteral("system")),
                root_.filePath(QStringLiteral("missing"))};
    }

    QTemporaryDir root_;
};

TEST_F(FoldersOfApplications, PrecedenceShadowingAndIds) {
    const QString system = write(QStringLiteral("system/a.desktop"));
    const QString home = write(QStringLiteral("home/a.desktop"));
    write(QStringLiteral("system/kde/sub/b.desktop"));
    write(QStringLiteral("home/not-an-entry.txt"));
    const std::vector<DesktopEntry> entries = readDesktopEntries(folders(), {});
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0].path, home);
    EXPECT_FALSE(entries[0].shadowed);
    EXPECT_EQ(entries[1].path, system);
    EXPECT_TRUE(entries[1].shadowed);
    EXPECT_EQ(entries[2].id, QStringLiteral("kde-sub-b.desktop"));
    EXPECT_FALSE(entries[2].named);
}

TEST_F(FoldersOfApplications, NamedFilesCountWhereverTheyAre) {
    const QString inside = write(QStringLiteral("system/a.desktop"));
    const QString outside = write(QStringLiteral("elsewhere/a.desktop"));
    const std::vector<DesktopEntry> entries = readDesktopEntries(
        folders(), {root_.filePath(QStringLiteral("elsewhere/../elsewhere/a.desktop")), inside,
                    QStringLiteral("relative.desktop"), QStringLiteral("/gone.desktop")});
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_TRUE(entries[0].named);
    EXPECT_EQ(entries[1].path, outside);
    EXPECT_EQ(entries[1].id, QStringLiteral("a.desktop"));
    EXPECT_TRUE(entries[1].named);
    EXPECT_FALSE(entries[1].shadowed);
}

TEST_F(FoldersOfApplications, ADeletedEntryTakesThoseBelowAlong) {
    write(QStringLiteral("home/a.desktop"), "Exec=true\nHidden=true");
    const QString system = write(QStringLiteral("system/a.desktop"));
    const QString id = QStringLiteral("a.desktop");
    EXPECT_TRUE(ApplicationIndex(readDesktopEntries(folders(), {})).withId(id).empty());
    const ApplicationIndex named(readDesktopEntries(folders(), {system}));
    ASSERT_EQ(named.withId(id).size(), 1U);
    EXPECT_EQ(named.entries()[named.withId(id)[0]].path, system);
}

TEST_F(FoldersOfApplications, LinksInACircleEnd) {
    write(QStringLiteral("home/a.desktop"));
    QFile::link(root_.filePath(QStringLiteral("home")),
                root_.filePath(QStringLiteral("home/loop")));
    EXPECT_GE(readDesktopEntries(folders(), {}).size(), 1U);
}

TEST(ApplicationIndexLookUps, FoldCaseAndForgiveTheSuffix) {
    DesktopEntry entry;
    entry.path = QStringLiteral("/x/org.Example.Editor.desktop");
    entry.id = QStringLiteral("org.Example.Editor.desktop");
    const ApplicationIndex index({entry}, QStringLiteral("files.desktop"));
    EXPECT_EQ(index.withId(QStringLiteral("ORG.example.editor")).size(), 1U);
    EXPECT_EQ(index.withId(QStringLiteral("org.Example.Editor.desktop")).size(), 1U);
    EXPECT_EQ(index.withLastPartOfId(QStringLiteral("EDITOR")).size(), 1U);
    EXPECT_TRUE(index.withLastPartOfId(QStringLiteral("Example")).empty());
    EXPECT_EQ(index.withPath(entry.path).size(), 1U);
    EXPECT_EQ(index.fileManagerId(), QStringLiteral("files.desktop"));
    // An absent property must not find entries that lack the key.
    EXPECT_TRUE(index.withStartupWmClass(QString()).empty());
    EXPECT_TRUE(index.withExecutableName(QString()).empty());
}

}  // namespace
}  // namespace kestrelbay
