#include <gtest/gtest.h>

#import <AppKit/NSStatusBarButton.h>

#include "fakes/FakeImages.h"
#include "fakes/FakeServices.h"
#include "fakes/FakeWindows.h"
#include "fakes/MacJournal.h"
#include "fixtures/QtPrinters.h"
#include "platform/macos/cocoa/Strings.h"
#include "platform/macos/desktop/MacServices.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::macos {
namespace {

TEST(MacSystemSounds, AreTheSystemsOwn) {
    const MacSystemSounds sounds;
    EXPECT_EQ(sounds.directories(), QStringList{u"/System/Library/Sounds"_s});
    EXPECT_EQ(sounds.suffixes(), (QStringList{u".aiff"_s, u".aif"_s}));
}

TEST(MacSystemSounds, ArePlayedOnceByName) {
    setSounds({u"Jump"_s});
    MacSystemSounds sounds;
    sounds.play(u"Jump"_s);
    EXPECT_EQ(takeCalls(), QStringList{u"play Jump"_s});
    sounds.play(u"Nobody knows"_s);
    EXPECT_EQ(takeCalls(), QStringList());
}

TEST(UnifiedLog, TellsWarningsFromOtherLinesAndHidesNothing) {
    UnifiedLog log;
    log.write(u"KestrelBay: 100 % of “中文”"_s);
    log.write(u"KestrelBay [WARN] failed to create event tap"_s);
    EXPECT_EQ(takeCalls(),
              (QStringList{u"log to org.kestrelbay.KestrelBay/general, type 0, format %{public}s: "
                           "KestrelBay: 100 % of “中文”"_s,
                           u"log to org.kestrelbay.KestrelBay/general, type 16, format %{public}s: "
                           "KestrelBay [WARN] failed to create event tap"_s}));
}

TEST(MacSystemTray, IsThereAtOnceAndTintsIconsItself) {
    MacSystemTray area;
    int calls = 0;
    area.whenAvailable([&] { ++calls; });
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(area.isDark(), std::nullopt);
    EXPECT_TRUE(area.opensMenus());
}

class MacStatusSymbolTest : public ::testing::Test {
protected:
    MacStatusSymbolTest() {
        setSystemSymbol(u"bolt.fill"_s, NSMakeSize(12, 17));
        [inner_ putInto:item_.contentView of:item_];
    }
    ~MacStatusSymbolTest() override {
        setApplicationWindows(nil);
        setSystemSymbol(QString(), NSZeroSize);
    }

    NSWindow *const other_ = [NSWindow windowWithSize:NSMakeSize(400, 300)];
    NSWindow *const item_ = [NSWindow windowWithSize:NSMakeSize(24, 24)];
    NSView *const inner_ = [[[NSView alloc] init] autorelease];
    NSStatusBarButton *const button_ = [[[NSStatusBarButton alloc] init] autorelease];
    MacSystemTray tray_;
};

TEST_F(MacStatusSymbolTest, IsSixteenPointsHighAndHasWordsInQtsItem) {
    [button_ putInto:inner_ of:item_];
    setApplicationWindows(@[ other_, item_ ]);
    tray_.drawSymbol(u"bolt.fill"_s, u"KestrelBay"_s);
    ASSERT_NE(button_.image, nil);
    EXPECT_TRUE(NSEqualSizes(button_.image.size, NSMakeSize(16, 16)));
    EXPECT_EQ(toQString([button_.image shownDescription]), u"KestrelBay"_s);
    tray_.drawSymbol(u"bolt.fill"_s, {});
    EXPECT_EQ([button_.image shownDescription], nil);
}

TEST_F(MacStatusSymbolTest, QtsIconStaysWhereThereIsNoSuchSymbol) {
    [button_ putInto:inner_ of:item_];
    setApplicationWindows(@[ item_ ]);
    NSImage *const before = [NSImage redImageWithSize:NSMakeSize(18, 22)];
    button_.image = before;
    tray_.drawSymbol(u"no.such.symbol"_s, u"KestrelBay"_s);
    EXPECT_EQ(button_.image, before);
}

TEST_F(MacStatusSymbolTest, NothingHappensWithoutAnItem) {
    setApplicationWindows(@[ other_, item_ ]);
    tray_.drawSymbol(u"bolt.fill"_s, u"KestrelBay"_s);
    EXPECT_EQ(takeCalls(), QStringList{u"symbol bolt.fill, description KestrelBay"_s});
}

}  // namespace
}  // namespace kestrelbay::macos
