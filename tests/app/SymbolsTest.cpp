#include "ui/look/Symbols.h"

#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "app/AppDelegate.h"
#include "fakes/FakePlatform.h"
#include "fakes/FakeSystemSymbols.h"
#include "fakes/FakeTimers.h"
#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {
namespace {

class SymbolsTest : public testing::Test {
protected:
    SymbolsTest() { setSystemSymbols(&system_); }
    ~SymbolsTest() override { setSystemSymbols(nullptr); }

    FakeSystemSymbols system_;
};

TEST_F(SymbolsTest, TheSystemsOwnComeFirst) {
    system_.setNames({u"plus"_s});
    const QPixmap symbol = symbolPixmap(u"plus"_s, {12, 10}, Qt::red, 2);
    EXPECT_EQ(system_.takeRequests(), QStringList{u"plus 24x20"_s});
    EXPECT_EQ(symbol.size(), QSize(24, 20));
    EXPECT_EQ(symbol.devicePixelRatio(), 2);
    EXPECT_EQ(symbol.toImage().pixelColor(0, 0), QColor(Qt::red));
}

TEST_F(SymbolsTest, TheSystemIsAskedOnceForEachPicture) {
    system_.setNames({u"plus"_s});
    const QPixmap first = symbolPixmap(u"plus"_s, {12, 12}, Qt::red, 1);
    EXPECT_EQ(symbolPixmap(u"plus"_s, {12, 12}, Qt::red, 1).toImage(), first.toImage());
    EXPECT_EQ(system_.takeRequests(), QStringList{u"plus 12x12"_s});
}

TEST_F(SymbolsTest, OursStandInForThoseItLacks) {
    const QPixmap symbol = symbolPixmap(u"gearshape"_s, {16, 16}, Qt::red, 1);
    EXPECT_EQ(symbol.size(), QSize(16, 16));
    EXPECT_EQ(symbol.toImage().pixelColor(8, 8).alpha(), 0);
}

TEST_F(SymbolsTest, AnUnknownOneIsNull) {
    EXPECT_TRUE(symbolPixmap(u"no.such.symbol"_s, {16, 16}, Qt::red, 1).isNull());
}

TEST_F(SymbolsTest, ThoseOfAnEarlierSystemAreForgotten) {
    system_.setNames({u"gearshape"_s});
    EXPECT_EQ(symbolPixmap(u"gearshape"_s, {16, 16}, Qt::red, 1).toImage().pixelColor(8, 8),
              QColor(Qt::red));
    setSystemSymbols(nullptr);
    EXPECT_EQ(symbolPixmap(u"gearshape"_s, {16, 16}, Qt::red, 1).toImage().pixelColor(8, 8).alpha(),
              0);
}

TEST(Symbols, AMissingPluginIsNamedWithItsPackages) {
    EXPECT_EQ(drawingProblem({"png", "svg"}), QString());
    EXPECT_EQ(drawingProblem({"png"}),
              u"Qt's plugin for SVG is missing (Debian: qt6-svg-plugins or libqt6svg6)"_s);
}

TEST(Symbols, TheProgramUsesThoseOfItsPlatform) {
    FakePlatform platform;
    platform.systemSymbols()->setNames({u"plus"_s});
    const QTemporaryDir folder;
    platform.setApplicationSupportDirectory(folder.path());
    FakeTimers timers;
    {
        const AppDelegate delegate(platform, timers, AppDelegate::makeManager(platform), false);
        static_cast<void>(symbolPixmap(u"plus"_s, {9, 9}, Qt::red, 1));
        EXPECT_EQ(platform.systemSymbols()->takeRequests(), QStringList{u"plus 9x9"_s});
    }
    static_cast<void>(symbolPixmap(u"plus"_s, {9, 9}, Qt::red, 1));
    EXPECT_EQ(platform.systemSymbols()->takeRequests(), QStringList());
}

}  // namespace
}  // namespace kestrelbay
