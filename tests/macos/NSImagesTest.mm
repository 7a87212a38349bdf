#include "platform/macos/cocoa/NSImages.h"

#include <gtest/gtest.h>

#include "fakes/FakeImages.h"
#include "fakes/LiveObjects.h"
#include "fakes/MacJournal.h"
#include "fixtures/QtPrinters.h"
#include "platform/macos/desktop/MacServices.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::macos {
namespace {

class NSImagesTest : public ::testing::Test {
protected:
    ~NSImagesTest() override {
        refuseBitmaps(false);
        setSystemSymbol(QString(), NSZeroSize);
    }
};

TEST_F(NSImagesTest, AnImageIsDrawnIntoOurOwnPixels) {
    const QImage image = toQImage([NSImage redImageWithSize : NSMakeSize(32, 32)], { 4, 4 });
    EXPECT_EQ(takeCalls(),
              (QStringList{u"bitmap 4x4, 8 bits, 16 bytes a row, kCGColorSpaceSRGB, info 16385"_s,
                           u"graphics context, flipped 0"_s,
                           u"draw at 0,0 4x4, from empty 1, operation 2, fraction 1"_s}));
    EXPECT_EQ(image.size(), QSize(4, 4));
    EXPECT_EQ(image.pixelColor(3, 3), QColor(255, 0, 0));
    EXPECT_EQ([NSGraphicsContext currentContext], nil);
}

TEST_F(NSImagesTest, ItKeepsItsShapeInTheMiddleOfNothing) {
    const QImage wide = toQImage([NSImage redImageWithSize : NSMakeSize(20, 10)], { 8, 8 });
    EXPECT_EQ(wide.pixelColor(4, 1).alpha(), 0);
    EXPECT_EQ(wide.pixelColor(0, 2), QColor(255, 0, 0));
    EXPECT_EQ(wide.pixelColor(7, 5), QColor(255, 0, 0));
    EXPECT_EQ(wide.pixelColor(4, 6).alpha(), 0);
    const QImage high = toQImage([NSImage redImageWithSize : NSMakeSize(1, 2)], { 8, 8 });
    EXPECT_EQ(high.pixelColor(1, 4).alpha(), 0);
    EXPECT_EQ(high.pixelColor(2, 0), QColor(255, 0, 0));
}

TEST_F(NSImagesTest, WhatCannotBeDrawnIsNull) {
    EXPECT_TRUE(toQImage(nil, {4, 4}).isNull());
    EXPECT_TRUE(toQImage([NSImage redImageWithSize : NSMakeSize(4, 4)], { 0, 4 }).isNull());
    refuseBitmaps(true);
    EXPECT_TRUE(toQImage([NSImage redImageWithSize : NSMakeSize(4, 4)], { 4, 4 }).isNull());
    EXPECT_EQ(takeCalls(), QStringList());
}

TEST_F(NSImagesTest, SymbolsAreTheSystemsByName) {
    setSystemSymbol(u"bolt.fill"_s, NSMakeSize(10, 20));
    const MacSystemSymbols symbols;
    const QImage image = symbols.image(u"bolt.fill"_s, {16, 16});
    EXPECT_EQ(takeCalls().constFirst(), u"symbol bolt.fill, description "_s);
    EXPECT_EQ(image.size(), QSize(16, 16));
    EXPECT_EQ(image.pixelColor(8, 0).alpha(), 255);
    EXPECT_EQ(image.pixelColor(0, 8).alpha(), 0);
    EXPECT_TRUE(symbols.image(u"no.such.symbol"_s, {16, 16}).isNull());
}

TEST_F(NSImagesTest, NothingOfASymbolIsLeftToThePoolOfTheCaller) {
    setSystemSymbol(u"bolt.fill"_s, NSMakeSize(10, 20));
    const int before = liveObjects();
    const QImage image = MacSystemSymbols().image(u"bolt.fill"_s, {16, 16});
    EXPECT_FALSE(image.isNull());
    EXPECT_EQ(liveObjects(), before);
}

}  // namespace
}  // namespace kestrelbay::macos
