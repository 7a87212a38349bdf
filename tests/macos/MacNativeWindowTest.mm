#include "platform/macos/desktop/MacNativeWindow.h"

#include <gtest/gtest.h>

#import <QuartzCore/CALayer.h>

#include "fakes/FakeImages.h"
#include "fakes/FakeWindows.h"
#include "fakes/LiveObjects.h"
#include "fakes/MacJournal.h"
#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::macos {
namespace {

NativeWindow::Id idOf(NSWindow *window) {
    return reinterpret_cast<NativeWindow::Id>(window.contentView);
}

class MacNativeWindowTest : public ::testing::Test {
protected:
    NSArray *siblings() { return panel_.contentView.superview.subviews; }
    NSVisualEffectView *material() {
        return static_cast<NSVisualEffectView *>([siblings() objectAtIndex:0]);
    }

    NSPanel *const panel_ = [NSPanel windowWithSize:NSMakeSize(420, 100)];
    MacNativeWindow windows_;
};

TEST_F(MacNativeWindowTest, APanelFloatsEverywhereAndTakesNoFocus) {
    windows_.makeFloatingPanel(idOf(panel_));
    EXPECT_EQ(takeCalls(), (QStringList{u"level 3"_s, u"collection behavior 257"_s,
                                        u"style mask 144"_s, u"hides on deactivate 0"_s}));
}

TEST_F(MacNativeWindowTest, AWindowThatIsNoPanelKeepsItsStyle) {
    windows_.makeFloatingPanel(idOf([NSWindow windowWithSize:NSMakeSize(10, 10)]));
    EXPECT_EQ(takeCalls(), (QStringList{u"level 3"_s, u"collection behavior 257"_s}));
}

TEST_F(MacNativeWindowTest, TheMaterialLiesBehindTheContent) {
    windows_.setBehindWindowMaterial(idOf(panel_), QRect(0, 0, 420, 100), 12);
    EXPECT_EQ(takeCalls(), QStringList{u"add NSVisualEffectView at -1 of ContentView"_s});
    ASSERT_EQ(siblings().count, 2U);
    EXPECT_EQ([siblings() objectAtIndex:1], panel_.contentView);
    EXPECT_EQ(material().material, 13);
    EXPECT_EQ(material().blendingMode, 0);
    EXPECT_EQ(material().state, 1);
    EXPECT_EQ(material().layer.cornerRadius, 12);
    EXPECT_TRUE(material().layer.masksToBounds);
}

TEST_F(MacNativeWindowTest, TheMaterialGoesWithItsWindow) {
    const int before = liveObjects();
    @autoreleasepool {
        NSPanel *const panel = [NSPanel windowWithSize:NSMakeSize(420, 100)];
        const int withoutMaterial = liveObjects();
        windows_.setBehindWindowMaterial(idOf(panel), QRect(0, 0, 420, 100), 12);
        EXPECT_GT(liveObjects(), withoutMaterial);
    }
    EXPECT_EQ(liveObjects(), before);
}

TEST_F(MacNativeWindowTest, TheMaterialFillsTheRectangleCountedFromTheTop) {
    windows_.setBehindWindowMaterial(idOf(panel_), QRect(10, 5, 400, 60), 28);
    EXPECT_TRUE(NSEqualRects(material().frame, NSMakeRect(10, 35, 400, 60)));
}

TEST_F(MacNativeWindowTest, TheMaskIsARoundedRectangleOfAnySize) {
    windows_.setBehindWindowMaterial(idOf(panel_), QRect(0, 0, 420, 100), 28);
    static_cast<void>(takeCalls());
    NSImage *const mask = material().maskImage;
    EXPECT_TRUE(NSEqualSizes(mask.size, NSMakeSize(57, 57)));
    EXPECT_TRUE(NSEdgeInsetsEqual(mask.capInsets, NSEdgeInsetsMake(28, 28, 28, 28)));
    EXPECT_EQ(mask.resizingMode, 1);
    EXPECT_TRUE([mask drawIntoJournal]);
    EXPECT_EQ(takeCalls(),
              (QStringList{u"paint in black"_s, u"fill 0,0 57x57 rounded by 28,28"_s}));
}

TEST_F(MacNativeWindowTest, ASecondMaterialReplacesTheFirst) {
    windows_.setBehindWindowMaterial(idOf(panel_), QRect(0, 0, 420, 100), 12);
    windows_.setBehindWindowMaterial(idOf(panel_), QRect(0, 0, 192, 50), 28);
    ASSERT_EQ(siblings().count, 2U);
    EXPECT_TRUE(NSEqualRects(material().frame, NSMakeRect(0, 50, 192, 50)));
    EXPECT_EQ(material().layer.cornerRadius, 28);
    EXPECT_TRUE(NSEqualSizes(material().maskImage.size, NSMakeSize(57, 57)));
}

TEST_F(MacNativeWindowTest, TheContentReachesUnderATitleBarWithoutGroundOrTitle) {
    NSWindow *const window = [NSWindow titledWindowWithSize:NSMakeSize(468, 468)];
    windows_.extendContentUnderTitleBar(idOf(window));
    EXPECT_TRUE(window.titlebarAppearsTransparent);
    EXPECT_EQ(window.titleVisibility, 1);
    EXPECT_EQ(window.styleMask, 0x8001U);
    EXPECT_TRUE(NSEqualSizes(window.contentView.frame.size, NSMakeSize(468, 468)));
    EXPECT_TRUE(NSEqualSizes(window.contentView.superview.frame.size, NSMakeSize(468, 468)));
}

TEST_F(MacNativeWindowTest, TheMaterialIsTheWholeGroundOfAToast) {
    EXPECT_TRUE(windows_.isMaterialAGround());
}

TEST_F(MacNativeWindowTest, TheWindowIsKeyBeforeTheProgramComesForward) {
    windows_.bringProgramForward(idOf(panel_));
    EXPECT_EQ(takeCalls(), (QStringList{u"make key and order front, sender 0"_s,
                                        u"activate, ignoring other apps 1"_s}));
}

TEST_F(MacNativeWindowTest, WindowsThatAreNotThereAreLeftAlone) {
    NSView *const loose = [[[NSView alloc] init] autorelease];
    for (const NativeWindow::Id id :
         {NativeWindow::Id(0), reinterpret_cast<NativeWindow::Id>(loose)}) {
        windows_.makeFloatingPanel(id);
        windows_.setBehindWindowMaterial(id, QRect(0, 0, 10, 10), 2);
        windows_.extendContentUnderTitleBar(id);
        windows_.bringProgramForward(id);
    }
    EXPECT_EQ(takeCalls(), QStringList());
}

TEST_F(MacNativeWindowTest, EveryWindowMayBeTranslucent) {
    EXPECT_TRUE(windows_.isTranslucencyShown());
}

TEST_F(MacNativeWindowTest, TheKeyScreensMiddleIsCountedFromTheTopOfTheFirst) {
    // A screen of 1000 points' height left of and below the first one's upper edge.
    setScreens({QRect(0, 0, 1440, 900), QRect(-1600, -300, 1600, 1000)}, 1);
    EXPECT_EQ(windows_.activeWindowCenter(), QPoint(-800, 700));
    setScreens({QRect(0, 0, 1440, 900), QRect(-1600, -300, 1600, 1000)}, 0);
    EXPECT_EQ(windows_.activeWindowCenter(), QPoint(720, 450));
}

TEST_F(MacNativeWindowTest, WithoutAScreenNothingHasTheKeyboard) {
    setScreens({}, std::nullopt);
    EXPECT_EQ(windows_.activeWindowCenter(), std::nullopt);
    setScreens({QRect(0, 0, 1440, 900)}, std::nullopt);
    EXPECT_EQ(windows_.activeWindowCenter(), std::nullopt);
}

}  // namespace
}  // namespace kestrelbay::macos
