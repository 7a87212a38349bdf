#include <gtest/gtest.h>

#include <QImage>
#include <QThread>

#include "platform/linux/applications/entries/ApplicationIndex.h"
#include "platform/linux/applications/icons/LinuxApplicationCatalog.h"
#include "platform/linux/apps/desktop.h"

namespace kestrelbay::testing {
namespace {

class CatalogApplication : public ::testing::Test {
protected:
    void SetUp() override { PrivateHome::instance().removeEntries(); }

    static QString entryWithIcon(const QByteArray &icon) {
        return PrivateHome::instance().writeEntry(QStringLiteral("thing.desktop"),
                                                  "Exec=true\nName[de]=Ding\nIcon=" + icon);
    }
    [[nodiscard]] QImage icon(const QString &path, int side) const {
        return catalog_.listIcons({path}, {.pixels = side, .themes = {}}).at(0);
    }
    static QColor middle(const QImage &image) {
        return image.pixelColor(image.width() / 2, image.height() / 2);
    }

    LinuxApplicationCatalog catalog_{
        [] { return std::make_shared<const ApplicationIndex>(std::vector<DesktopEntry>()); }};
};

TEST_F(CatalogApplication, NamesAreInTheUsersLanguage) {
    EXPECT_EQ(catalog_.nameOfFile(entryWithIcon("x")), QStringLiteral("Ding"));
    EXPECT_EQ(catalog_.nameOfFile(QStringLiteral("/gone.desktop")), QString());
    EXPECT_EQ(catalog_.nameOfFile(QStringLiteral("/")), QString());
}

TEST_F(CatalogApplication, WhatIsNoApplicationHasNoName) {
    const PrivateHome &home = PrivateHome::instance();
    for (const QByteArray &type :
         {QByteArray("Type=Link\n"), QByteArray("Type=Directory\n"), QByteArray()}) {
        home.write(QStringLiteral("home/applications/other.desktop"),
                   "[Desktop Entry]\nName=Other\nURL=file:///\n" + type);
        EXPECT_EQ(catalog_.nameOfFile(home.path(QStringLiteral("home/applications/other.desktop"))),
                  QString())
            << type.constData();
    }
}

TEST_F(CatalogApplication, AnApplicationWithoutANameIsCalledAfterItsFile) {
    const PrivateHome &home = PrivateHome::instance();
    home.write(QStringLiteral("home/applications/org.x.tool.desktop"),
               "[Desktop Entry]\nType=Application\nExec=true\n");
    EXPECT_EQ(
        catalog_.nameOfFile(home.path(QStringLiteral("home/applications/org.x.tool.desktop"))),
        QStringLiteral("org.x.tool"));
}

TEST_F(CatalogApplication, FoldersInOrderOfPrecedence) {
    const PrivateHome &home = PrivateHome::instance();
    EXPECT_EQ(catalog_.applicationDirectories(),
              QStringList({home.path(QStringLiteral("home/applications")),
                           home.path(QStringLiteral("system/applications")),
                           QStringLiteral("/usr/share/applications")}));
}

TEST_F(CatalogApplication, IconsComeInEverySize) {
    QImage red(32, 32, QImage::Format_ARGB32);
    red.fill(Qt::red);
    const PrivateHome &home = PrivateHome::instance();
    home.write(QStringLiteral("home/pixmaps/x"), {});
    const QString file = home.path(QStringLiteral("home/pixmaps/red-thing.png"));
    ASSERT_TRUE(red.save(file));
    for (const QByteArray &name :
         {file.toUtf8(), QByteArray("red-thing"), QByteArray("red-thing.png")}) {
        for (const int side : {16, 24, 48, 512}) {
            const QImage image = icon(entryWithIcon(name), side);
            EXPECT_EQ(image.size(), QSize(side, side)) << name.constData();
            EXPECT_EQ(middle(image), QColor(Qt::red)) << name.constData();
        }
    }
}

TEST_F(CatalogApplication, SomethingIsAlwaysShown) {
    for (const char *name : {"", "no-such-icon-anywhere", "/no/such/file.png", "../x"})
        EXPECT_GT(middle(icon(entryWithIcon(name), 64)).alpha(), 0) << name;
    EXPECT_GT(middle(icon(QStringLiteral("/gone.desktop"), 24)).alpha(), 0);
}

TEST_F(CatalogApplication, IconsMayBeAskedForOnAnyThread) {
    const QString path = entryWithIcon("no-such-icon");
    QImage image;
    const std::unique_ptr<QThread> thread(QThread::create([&] { image = icon(path, 48); }));
    thread->start();
    thread->wait();
    EXPECT_GT(middle(image).alpha(), 0);
}

}  // namespace
}  // namespace kestrelbay::testing
