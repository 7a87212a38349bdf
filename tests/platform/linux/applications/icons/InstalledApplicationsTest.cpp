#include <gtest/gtest.h>

#include <QColor>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "platform/linux/applications/entries/ApplicationFolders.h"
#include "platform/linux/applications/entries/ApplicationIndex.h"
#include "platform/linux/applications/entries/DesktopEntry.h"
#include "platform/linux/applications/icons/LinuxApplicationCatalog.h"

namespace kestrelbay {
namespace {

/// Puts a variable of the environment back at the end.
class ScopedVariable {
public:
    ScopedVariable(const char *name, const QString &value) : name_(name), before_(qgetenv(name)) {
        wasSet_ = qEnvironmentVariableIsSet(name);
        qputenv(name, QFile::encodeName(value));
    }
    ~ScopedVariable() {
        if (wasSet_)
            qputenv(name_, before_);
        else
            qunsetenv(name_);
    }
    ScopedVariable(const ScopedVariable &) = delete;
    ScopedVariable &operator=(const ScopedVariable &) = delete;

private:
    const char *name_;
    QByteArray before_;
    bool wasSet_ = false;
};

/// Folders of a user and of a system without icons or applications.
class InstalledApplications : public ::testing::Test {
protected:
    QString write(const QString &relative, const QByteArray &content) const {
        QString path = root_.filePath(relative);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return path;
    }
    QString writeEntry(const QString &relative, const QByteArray &lines) const {
        return write(relative.section(u'/', 0, 0) + QStringLiteral("/applications/") +
                         relative.section(u'/', 1),
                     "[Desktop Entry]\nType=Application\nExec=true\n" + lines + '\n');
    }
    void writeIcon(const QString &relative, const QColor &color, QSize size) const {
        const QString path = root_.filePath(relative);
        QDir().mkpath(QFileInfo(path).path());
        QImage image(size, QImage::Format_ARGB32);
        image.fill(color);
        EXPECT_TRUE(image.save(path));
    }
    [[nodiscard]] std::vector<InstalledApplication> list() const {
        return catalog_.installedApplications();
    }
    [[nodiscard]] QStringList names() const {
        QStringList result;
        for (const InstalledApplication &each : list())
            result.append(each.name);
        return result;
    }
    [[nodiscard]] QImage onlyIcon(const QByteArray &icon, int pixels = 24) const {
        const QString path = writeEntry(QStringLiteral("user/a.desktop"), "Name=A\nIcon=" + icon);
        return catalog_.listIcons({path},
                                  {.pixels = pixels, .themes = {QStringLiteral("chosen")}})[0];
    }

    QTemporaryDir root_;
    ScopedVariable home_{"HOME", root_.path()};
    ScopedVariable dataHome_{"XDG_DATA_HOME", root_.filePath(QStringLiteral("user"))};
    ScopedVariable dataDirs_{"XDG_DATA_DIRS", root_.filePath(QStringLiteral("system"))};
    ScopedVariable desktop_{"XDG_CURRENT_DESKTOP", QStringLiteral("Special:Plain")};
    /// Entries that are known wherever they are.
    QStringList namedPaths_;
    LinuxApplicationCatalog catalog_{[this] {
        return std::make_shared<const ApplicationIndex>(
            readDesktopEntries(applicationFolders(), namedPaths_));
    }};
};

TEST_F(InstalledApplications, OnlyAbsoluteFoldersCount) {
    const ScopedVariable home("XDG_DATA_HOME", QStringLiteral("relative"));
    const ScopedVariable dirs("XDG_DATA_DIRS", QStringLiteral("relative:/shared//"));
    EXPECT_EQ(catalog_.applicationDirectories(),
              QStringList({root_.filePath(QStringLiteral(".local/share/applications")),
                           QStringLiteral("/shared/applications")}));
}

TEST_F(InstalledApplications, InTheOrderOfTheFolders) {
    writeEntry(QStringLiteral("system/b.desktop"), "Name=B\nIcon=x");
    writeEntry(QStringLiteral("system/a.desktop"), "Name=A\nIcon=x");
    const QString path = writeEntry(QStringLiteral("user/org.example.Z.desktop"), "Name=Z\nIcon=x");
    const std::vector<InstalledApplication> all = list();
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[0].name, QStringLiteral("Z"));
    EXPECT_EQ(all[0].fileName, QStringLiteral("org.example.Z"));
    EXPECT_EQ(all[0].path, path);
    EXPECT_EQ(all[1].name, QStringLiteral("A"));
    EXPECT_EQ(all[2].name, QStringLiteral("B"));
}

TEST_F(InstalledApplications, WhatOnlyARuleNamesIsNotInstalled) {
    writeEntry(QStringLiteral("user/a.desktop"), "Name=A\nIcon=x");
    namedPaths_ = {write(QStringLiteral("elsewhere/b.desktop"),
                         "[Desktop Entry]\nType=Application\nExec=true\nName=B\nIcon=x\n")};
    EXPECT_EQ(names(), QStringList(QStringLiteral("A")));
}

TEST_F(InstalledApplications, ListingThemReadsNoFile) {
    const QString path = writeEntry(QStringLiteral("user/a.desktop"), "Name=A\nIcon=x");
    auto index =
        std::make_shared<const ApplicationIndex>(readDesktopEntries(applicationFolders(), {}));
    QFile::remove(path);
    const auto found = LinuxApplicationCatalog([&index] { return index; }).installedApplications();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].name, QStringLiteral("A"));
}

TEST_F(InstalledApplications, BackgroundProgramsAndDeletedOnesAreLeftOut) {
    for (const char *lines :
         {"NoDisplay=true", "Hidden=true", "TryExec=/no/such/program", "TryExec=no-such-program",
          "OnlyShowIn=Other;", "OnlyShowIn=", "NotShowIn=Plain;", "NotShowIn=Other;Special;"}) {
        writeEntry(QStringLiteral("user/a.desktop"), QByteArray("Name=A\nIcon=x\n") + lines);
        EXPECT_EQ(names(), QStringList()) << lines;
    }
    for (const char *lines : {"NoDisplay=false", "Hidden=false", "TryExec=sh", "TryExec=/bin/sh",
                              "TryExec=", "OnlyShowIn=Other;Plain;", "NotShowIn=Other;",
                              // The more particular name of the desktop counts.
                              "OnlyShowIn=Special;\nNotShowIn=Plain;", "Terminal=true"}) {
        writeEntry(QStringLiteral("user/a.desktop"), QByteArray("Name=A\nIcon=x\n") + lines);
        EXPECT_EQ(names(), QStringList(QStringLiteral("A"))) << lines;
    }
}

TEST_F(InstalledApplications, OutsideOfADesktopOnlyShowInShowsNowhere) {
    const ScopedVariable none("XDG_CURRENT_DESKTOP", {});
    writeEntry(QStringLiteral("user/a.desktop"), "Name=A\nIcon=x\nOnlyShowIn=Plain;");
    writeEntry(QStringLiteral("user/b.desktop"), "Name=B\nIcon=x\nNotShowIn=Plain;");
    EXPECT_EQ(names(), QStringList(QStringLiteral("B")));
}

TEST_F(InstalledApplications, AnIconMayLieBesideTheEntryOrTheProgram) {
    const QString image = write(QStringLiteral("unpacked/Thing.AppImage"), "image");
    QFile::setPermissions(image, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    writeIcon(QStringLiteral("unpacked/icons/thing.png"), Qt::red, {24, 24});
    writeIcon(QStringLiteral("unpacked/other.png"), Qt::green, {24, 24});
    writeIcon(QStringLiteral("user/applications/own/here.png"), Qt::blue, {24, 24});
    const QByteArray exec = "\nExec=\"" + QFile::encodeName(image) + "\" %U";
    EXPECT_EQ(onlyIcon("icons/thing.png" + exec).pixelColor(12, 12), QColor(Qt::red));
    EXPECT_EQ(onlyIcon("./icons/../other.png" + exec).pixelColor(12, 12), QColor(Qt::green));
    EXPECT_EQ(onlyIcon("other" + exec).pixelColor(12, 12), QColor(Qt::green));
    EXPECT_EQ(onlyIcon("own/here.png" + exec).pixelColor(12, 12), QColor(Qt::blue));
    EXPECT_NE(onlyIcon("other.png\nExec=env").pixelColor(12, 12), QColor(Qt::green));
}

TEST_F(InstalledApplications, WithoutADeclaredIconThereIsNoEntry) {
    writeEntry(QStringLiteral("user/a.desktop"), "Name=A");
    writeEntry(QStringLiteral("user/b.desktop"), "Name=B\nIcon=");
    writeEntry(QStringLiteral("user/c.desktop"), "Name=C\nIcon=no-such-icon");
    EXPECT_EQ(names(), QStringList(QStringLiteral("C")));
}

TEST_F(InstalledApplications, AShadowedIdIsListedOnce) {
    writeEntry(QStringLiteral("system/a.desktop"), "Name=System\nIcon=x");
    writeEntry(QStringLiteral("user/a.desktop"), "Name=User\nIcon=x");
    EXPECT_EQ(names(), QStringList(QStringLiteral("User")));
    // The winning entry speaks for the other one, too.
    for (const char *lines : {"Hidden=true", "NoDisplay=true"}) {
        writeEntry(QStringLiteral("user/a.desktop"), QByteArray("Name=User\nIcon=x\n") + lines);
        EXPECT_EQ(names(), QStringList()) << lines;
    }
}

TEST_F(InstalledApplications, SubfoldersArePartOfTheId) {
    writeEntry(QStringLiteral("user/kde/a.desktop"), "Name=Inner\nIcon=x");
    writeEntry(QStringLiteral("system/kde-a.desktop"), "Name=Shadowed\nIcon=x");
    writeEntry(QStringLiteral("system/a.desktop"), "Name=Other\nIcon=x");
    EXPECT_EQ(names(), QStringList({QStringLiteral("Inner"), QStringLiteral("Other")}));
}

TEST_F(InstalledApplications, WhatIsNoEntryIsSkipped) {
    write(QStringLiteral("user/applications/empty.desktop"), {});
    write(QStringLiteral("user/applications/broken.desktop"), "[Desktop Entry\nType=Application");
    write(QStringLiteral("user/applications/link.desktop"),
          "[Desktop Entry]\nType=Link\nName=L\nIcon=x\nURL=http://a");
    write(QStringLiteral("user/applications/text.txt"),
          "[Desktop Entry]\nType=Application\nName=T\nIcon=x\n");
    QDir().mkpath(root_.filePath(QStringLiteral("user/applications/folder.desktop")));
    writeEntry(QStringLiteral("user/nameless.desktop"), "Icon=x");
    EXPECT_EQ(names(), QStringList(QStringLiteral("nameless")));
}

TEST_F(InstalledApplications, IconsAreSquaresOfTheWantedSize) {
    writeIcon(QStringLiteral("user/pixmaps/wide.png"), Qt::red, {64, 16});
    for (const int pixels : {24, 36, 48}) {
        const QImage icon = onlyIcon("wide", pixels);
        EXPECT_EQ(icon.size(), QSize(pixels, pixels));
        EXPECT_EQ(icon.pixelColor(pixels / 2, pixels / 2), QColor(Qt::red));
        EXPECT_EQ(icon.pixelColor(pixels / 2, 1).alpha(), 0);
    }
    EXPECT_EQ(onlyIcon(root_.filePath(QStringLiteral("user/pixmaps/wide.png")).toUtf8())
                  .pixelColor(12, 12),
              QColor(Qt::red));
}

TEST_F(InstalledApplications, WhatCannotBeReadIsAGenericIcon) {
    write(QStringLiteral("user/pixmaps/broken.png"), "no image");
    for (const char *name : {"broken", "no-such-icon", "/no/such/file.png", "/dev/zero", "../x"}) {
        const QImage icon = onlyIcon(name);
        EXPECT_EQ(icon.size(), QSize(24, 24)) << name;
        EXPECT_GT(icon.pixelColor(12, 12).alpha(), 0) << name;
    }
    writeIcon(QStringLiteral("user/icons/hicolor/24x24/apps/application-x-executable.png"),
              Qt::blue, {24, 24});
    write(QStringLiteral("user/icons/hicolor/index.theme"),
          "[Icon Theme]\nName=H\nDirectories=24x24/apps\n[24x24/apps]\nSize=24\n");
    EXPECT_EQ(onlyIcon("broken").pixelColor(12, 12), QColor(Qt::blue));
}

TEST_F(InstalledApplications, IconsComeFromTheChosenThemeThenFromWhatItInherits) {
    const auto writeTheme = [&](const char *name, const char *inherits) {
        write(QStringLiteral("system/icons/%1/index.theme").arg(QLatin1String(name)),
              QByteArray("[Icon Theme]\nName=T\nInherits=") + inherits +
                  "\nDirectories=16,24,32,vector\n[16]\nSize=16\nType=Fixed\n[24]\nSize=24\n"
                  "[32]\nSize=32\n[vector]\nSize=64\nMinSize=8\nMaxSize=512\nType=Scalable\n");
    };
    writeTheme("chosen", "parent");
    writeTheme("parent", "chosen");  // in a circle
    writeTheme("hicolor", "");
    const auto put = [&](const char *place, const QColor &color, int size) {
        writeIcon(QStringLiteral("system/icons/") + QLatin1String(place), color, {size, size});
    };
    put("hicolor/24/x.png", Qt::red, 24);
    EXPECT_EQ(onlyIcon("x").pixelColor(12, 12), QColor(Qt::red));
    put("parent/16/x.png", Qt::green, 16);
    EXPECT_EQ(onlyIcon("x").pixelColor(12, 12), QColor(Qt::green));
    put("chosen/16/x.png", Qt::blue, 16);
    EXPECT_EQ(onlyIcon("x.png").pixelColor(12, 12), QColor(Qt::blue));
    // Rather reduced than enlarged, and best in the very size.
    put("chosen/32/x.png", Qt::yellow, 32);
    EXPECT_EQ(onlyIcon("x").pixelColor(12, 12), QColor(Qt::yellow));
    write(QStringLiteral("system/icons/chosen/vector/x.svg"),
          "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'>"
          "<rect width='9' height='9' fill='#ff00ff'/></svg>");
    EXPECT_EQ(onlyIcon("x").pixelColor(12, 12), QColor(Qt::magenta));
    put("chosen/24/x.png", Qt::cyan, 24);
    EXPECT_EQ(onlyIcon("x").pixelColor(12, 12), QColor(Qt::cyan));
    // The user's own folder wins over the system's.
    writeIcon(QStringLiteral("user/icons/chosen/24/x.png"), Qt::white, {24, 24});
    EXPECT_EQ(onlyIcon("x").pixelColor(12, 12), QColor(Qt::white));
}

TEST_F(InstalledApplications, IconsOfSingleOnesComeInTheOrderOfTheirPaths) {
    writeIcon(QStringLiteral("user/pixmaps/red.png"), Qt::red, {48, 48});
    writeIcon(QStringLiteral("user/pixmaps/blue.png"), Qt::blue, {16, 16});
    const QString red = writeEntry(QStringLiteral("user/red.desktop"), "Icon=red");
    // One that has no place in a menu may have a rule.
    const QString blue =
        writeEntry(QStringLiteral("user/blue.desktop"), "NoDisplay=true\nIcon=blue");
    const std::vector<QImage> icons = catalog_.listIcons(
        {blue, QStringLiteral("/gone.desktop"), red}, {.pixels = 28, .themes = {}});
    ASSERT_EQ(icons.size(), 3U);
    for (const QImage &icon : icons)
        EXPECT_EQ(icon.size(), QSize(28, 28));
    EXPECT_EQ(icons[0].pixelColor(14, 14), QColor(Qt::blue));
    EXPECT_EQ(icons[2].pixelColor(14, 14), QColor(Qt::red));
    QImage nothing(28, 28, QImage::Format_ARGB32_Premultiplied);
    nothing.fill(Qt::transparent);
    EXPECT_NE(icons[1], nothing);
}

TEST_F(InstalledApplications, FilesOfApplications) {
    EXPECT_TRUE(QDir::match(catalog_.applicationFilePattern(), QStringLiteral("a.b.desktop")));
    EXPECT_FALSE(QDir::match(catalog_.applicationFilePattern(), QStringLiteral("a.txt")));
}

}  // namespace
}  // namespace kestrelbay
