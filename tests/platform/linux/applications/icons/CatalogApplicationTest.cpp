#include <gtest/gtest.h>

#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QThread>

#include "platform/linux/appsDesktop.h"
#include "platform/linux/applications/icons/LinuxApplicationCatalog.h"

namespace kestrelbay::testing {
namespace {

class CatalogApplication : public ::testing::Test {
protected:
    void SetUp() override { PrivateHome::instance().removeEntries(); }

    static QString entryWithIcon(const QByteArray &icon) {
        return PrivateHome::instance().writeEntry(QStringLiteral("thing.desktop"),
                                                  "Exec=true\nName[de]=Ding\nIcon=" + icon);
    }
    static QColor middle(const QIcon &icon, int size) {
        const QImage image = icon.pixmap(size, size).toImage();
        return image.pixelColor(image.width() / 2, image.height() / 2);
    }

    LinuxApplicationCatalog catalog_;
};

TEST_F(CatalogApplication, NamesAreInTheUsersLanguage) {
    EXPECT_EQ(catalog_.displayName(entryWithIcon("x")), QStringLiteral("Ding"));
    EXPECT_EQ(catalog_.displayName(QStringLiteral("/gone.desktop")), QString());
    EXPECT_EQ(catalog_.displayName(QStringLiteral("/")), QString());
}

TEST_F(CatalogApplication, WhatIsNoApplicationHasNoName) {
    const PrivateHome &home = PrivateHome::instance();
    for (const QByteArray &type :
         {QByteArray("Type=Link\n"), QByteArray("Type=Directory\n"), QByteArray()}) {
        home.write(QStringLiteral("home/applications/other.desktop"),
                   "[Desktop Entry]\nName=Other\nURL=file:///\n" + type);
        EXPECT_EQ(
            catalog_.displayName(home.path(QStringLiteral("home/applications/other.desktop"))),
            QString())
            << type.constData();
    }
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
        const QIcon icon = catalog_.icon(entryWithIcon(name));
        for (const int size : {16, 24, 48, 512}) {
            EXPECT_EQ(icon.pixmap(size, size).size(), QSize(size, size)) << name.constData();
            EXPECT_EQ(middle(icon, size), QColor(Qt::red)) << name.constData();
        }
    }
    // Painted into a rectangle it stays inside and upright.
    QImage canvas(100, 60, QImage::Format_ARGB32);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    catalog_.icon(entryWithIcon("red-thing")).paint(&painter, QRect(20, 10, 40, 40));
    painter.end();
    EXPECT_EQ(canvas.pixelColor(40, 30), QColor(Qt::red));
    EXPECT_EQ(canvas.pixelColor(10, 30).alpha(), 0);
}

TEST_F(CatalogApplication, SomethingIsAlwaysShown) {
    for (const char *name : {"", "no-such-icon-anywhere", "/no/such/file.png", "../x"}) {
        const QIcon icon = catalog_.icon(entryWithIcon(name));
        EXPECT_FALSE(icon.isNull());
        EXPECT_FALSE(icon.pixmap(64, 64).isNull()) << name;
        EXPECT_GT(middle(icon, 64).alpha(), 0) << name;
    }
    EXPECT_FALSE(catalog_.icon(QStringLiteral("/gone.desktop")).pixmap(24, 24).isNull());
}

TEST_F(CatalogApplication, IconsMayBeAskedForOnAnyThread) {
    const QString path = entryWithIcon("no-such-icon");
    QIcon icon;
    const std::unique_ptr<QThread> thread(QThread::create([&] { icon = catalog_.icon(path); }));
    thread->start();
    thread->wait();
    EXPECT_FALSE(icon.pixmap(48, 48).isNull());
}

}  // namespace
}  // namespace kestrelbay::testing
