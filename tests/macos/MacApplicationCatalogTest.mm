#include <thread>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QTemporaryDir>

#include "fakes/Bundles.h"
#include "fakes/MacJournal.h"
#include "fixtures/QtPrinters.h"
#include "platform/macos/applications/MacApplicationCatalog.h"

namespace kestrelbay::macos {
namespace {

const QString kIconFile = QStringLiteral("<key>CFBundleIconFile</key><string>App</string>");

class MacApplicationCatalogTest : public ::testing::Test {
protected:
    MacApplicationCatalogTest() { replaceDisplayNames(); }

    /// The path of a bundle with these entries in its dictionary.
    QString install(const QString &folder, const QString &name, const QString &entries) {
        QString path = folder_.filePath(folder + u'/' + name);
        EXPECT_TRUE(QDir().mkpath(path + QStringLiteral("/Contents")));
        QFile file(path + QStringLiteral("/Contents/Info.plist"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" +
                   entries.toUtf8() + "</dict></plist>\n");
        return path;
    }
    [[nodiscard]] bool isListed(const QString &entries) {
        install(QStringLiteral("one"), QStringLiteral("Tried.app"), entries);
        return catalog().installedApplications().size() == 1;
    }
    [[nodiscard]] MacApplicationCatalog catalog() const {
        return MacApplicationCatalog({folder_.filePath(QStringLiteral("one")),
                                      folder_.filePath(QStringLiteral("missing")),
                                      folder_.filePath(QStringLiteral("two"))});
    }

    const QTemporaryDir folder_;
};

bool isRed(const QImage &image, int side) {
    return image.size() == QSize(side, side) && image.pixelColor(0, 0) == QColor(Qt::red) &&
           image.pixelColor(side - 1, side - 1) == QColor(Qt::red);
}

TEST_F(MacApplicationCatalogTest, LooksInTheFoldersOfSystemAndUser) {
    EXPECT_EQ(MacApplicationCatalog().applicationDirectories(),
              (QStringList{QStringLiteral("/Applications"), QStringLiteral("/System/Applications"),
                           QStringLiteral("/System/Applications/Utilities"),
                           QStringLiteral("/System/Library/CoreServices"),
                           QDir::homePath() + QStringLiteral("/Applications")}));
    EXPECT_EQ(MacApplicationCatalog().applicationFilePattern(), QStringLiteral("*.app"));
}

TEST_F(MacApplicationCatalogTest, ListsTheFoldersInTheirOrderOneLevelDeep) {
    const QString b = install(QStringLiteral("one"), QStringLiteral("B.app"), kIconFile);
    const QString a = install(QStringLiteral("two"), QStringLiteral("A.app"), kIconFile);
    const QString again = install(QStringLiteral("two"), QStringLiteral("B.app"), kIconFile);
    install(QStringLiteral("one/More"), QStringLiteral("C.app"), kIconFile);
    install(QStringLiteral("one"), QStringLiteral("Big.APP"), kIconFile);
    install(QStringLiteral("one"), QStringLiteral("Some.bundle"), kIconFile);
    static_cast<void>(takeCalls());

    const auto found = catalog().installedApplications();
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0].path, b);
    EXPECT_EQ(found[0].fileName, QStringLiteral("B"));
    EXPECT_EQ(found[0].name, QStringLiteral("Shown B.app"));
    EXPECT_EQ(found[1].path, a);
    EXPECT_EQ(found[2].path, again);
    const QStringList calls = takeCalls();
    EXPECT_EQ(calls.filter(QStringLiteral("displayNameAtPath")).size(), 3);
    EXPECT_EQ(calls.filter(QStringLiteral("iconForFile")), QStringList());
}

TEST_F(MacApplicationCatalogTest, ThoseThatTheFinderHidesAreListedToo) {
    const QString hidden = install(QStringLiteral("one"), QStringLiteral(".Tool.app"), kIconFile);
    const auto found = catalog().installedApplications();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].path, hidden);
}

TEST_F(MacApplicationCatalogTest, TheNameIsThatOfTheBundlesFolder) {
    install(QStringLiteral("one"), QStringLiteral("Tool 2.5.app"), kIconFile);
    EXPECT_EQ(catalog().installedApplications().at(0).fileName, QStringLiteral("Tool 2.5"));
}

TEST_F(MacApplicationCatalogTest, WhatIsNoBundleIsLeftOut) {
    EXPECT_TRUE(QDir(folder_.path()).mkpath(QStringLiteral("one/Empty.app")));
    QFile file(folder_.filePath(QStringLiteral("one/File.app")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_TRUE(catalog().installedApplications().empty());
}

TEST_F(MacApplicationCatalogTest, AgentsAndBackgroundProgramsAreLeftOut) {
    for (const auto *const key : {"LSUIElement", "LSBackgroundOnly"}) {
        const QString entry =
            kIconFile + QStringLiteral("<key>%1</key>").arg(QLatin1StringView(key));
        EXPECT_FALSE(isListed(entry + QStringLiteral("<true/>"))) << key;
        EXPECT_FALSE(isListed(entry + QStringLiteral("<string>1</string>"))) << key;
        EXPECT_TRUE(isListed(entry + QStringLiteral("<false/>"))) << key;
        EXPECT_TRUE(isListed(entry + QStringLiteral("<string>0</string>"))) << key;
        EXPECT_TRUE(isListed(entry + QStringLiteral("<string>YES</string>"))) << key;
        EXPECT_TRUE(isListed(entry + QStringLiteral("<array/>"))) << key;
    }
}

TEST_F(MacApplicationCatalogTest, WhatDeclaresNoIconIsLeftOut) {
    EXPECT_FALSE(isListed({}));
    EXPECT_FALSE(isListed(QStringLiteral("<key>CFBundleIcons</key><string>App</string>")));
    EXPECT_TRUE(isListed(QStringLiteral("<key>CFBundleIcons</key><dict/>")));
    EXPECT_TRUE(isListed(QStringLiteral("<key>CFBundleIconName</key><string>App</string>")));
    EXPECT_TRUE(isListed(kIconFile));
}

TEST_F(MacApplicationCatalogTest, AChosenApplicationHasTheNameOfItsFile) {
    const QString path = install(QStringLiteral("one"), QStringLiteral("Tool 2.5.app"), kIconFile);
    EXPECT_EQ(catalog().nameOfFile(path), QStringLiteral("Tool 2.5"));
    const QString hidden = install(QStringLiteral("one"), QStringLiteral(".app"), kIconFile);
    EXPECT_EQ(catalog().nameOfFile(hidden), QStringLiteral(".app"));
    EXPECT_EQ(catalog().nameOfFile(folder_.filePath(QStringLiteral("one/B.app"))), QString());
}

TEST_F(MacApplicationCatalogTest, AListIconIsASquareOfThePixelsAskedFor) {
    const auto images = catalog().listIcons({QStringLiteral("/a.app"), QStringLiteral("/b.app")},
                                            {.pixels = 36, .themes = {}});
    ASSERT_EQ(images.size(), 2U);
    EXPECT_TRUE(isRed(images[0], 36));
    EXPECT_TRUE(isRed(images[1], 36));
    const QStringList calls = takeCalls();
    EXPECT_EQ(
        calls.filter(QStringLiteral("iconForFile")),
        (QStringList{QStringLiteral("iconForFile /a.app"), QStringLiteral("iconForFile /b.app")}));
}

TEST_F(MacApplicationCatalogTest, IconsMayBeAskedForOnAnyThread) {
    std::vector<QImage> images;
    std::thread([&] {
        images = catalog().listIcons({QStringLiteral("/a.app")}, {.pixels = 20, .themes = {}});
    }).join();
    EXPECT_TRUE(callsOffMainThread().contains(QStringLiteral("iconForFile /a.app")));
    ASSERT_EQ(images.size(), 1U);
    EXPECT_TRUE(isRed(images[0], 20));
    EXPECT_TRUE(takeCalls().contains(QStringLiteral("draw at 0,0 20x20, from empty 1, "
                                                    "operation 2, fraction 1")));
}

}  // namespace
}  // namespace kestrelbay::macos
