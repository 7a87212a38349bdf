#include <gtest/gtest.h>

#include "fakes/Bridge.h"
#include "platform/macos/cocoa/ObjCOwner.h"
#include "platform/macos/cocoa/Strings.h"

namespace kestrelbay::macos {
namespace {

const QString kText = QStringLiteral("⌘ é 中文 \U0001F426");

TEST(Strings, GoToCoreFoundationAndBack) {
    const CFOwner<CFStringRef> text = toCFString(kText);
    EXPECT_EQ(CFStringGetLength(text.get()), kText.size());
    EXPECT_TRUE([ns<NSString *>(text.get()) isEqualToString:@"⌘ é 中文 \U0001F426"]);
    EXPECT_EQ(toQString(text.get()), kText);
    EXPECT_EQ(toQString(toCFString(QString()).get()), QString());
    EXPECT_EQ(toQString(CFStringRef()), QString());
}

TEST(Strings, GoToFoundationAndBack) {
    EXPECT_TRUE([toNSString(kText) isEqualToString:@"⌘ é 中文 \U0001F426"]);
    EXPECT_EQ(toQString(toNSString(kText)), kText);
    EXPECT_EQ(toQString(@""), QString());
    EXPECT_EQ(toQString(static_cast<NSString *>(nil)), QString());
}

TEST(Strings, UrlsOfFiles) {
    const QUrl file = QUrl::fromLocalFile(QStringLiteral("/tmp/a b/ü.txt"));
    EXPECT_TRUE([toNSURL(file) isFileURL]);
    EXPECT_EQ(toQString([toNSURL(file) path]), file.toLocalFile());
    EXPECT_FALSE(toNSURL(QUrl()));
    EXPECT_FALSE(toNSURL(QUrl(QStringLiteral("slack://open/x"))));
}

/// A block on the heap, to be released.
void (^keeping(const ObjCOwner<NSObject *> &owner))() {
    const ObjCOwner<NSObject *> kept = owner;
    return Block_copy(^{
      EXPECT_TRUE(kept);
    });
}

TEST(Owners, HoldOneReference) {
    NSObject *const object = [[[NSObject alloc] init] autorelease];
    const NSUInteger before = [object retainCount];
    {
        const auto owner = CFOwner<CFTypeRef>::retained(cf<CFTypeRef>(object));
        CFOwner<CFTypeRef> copy = owner;
        EXPECT_EQ([object retainCount], before + 2);
        const CFOwner<CFTypeRef> moved = std::move(copy);
        EXPECT_EQ([object retainCount], before + 2);
        copy = moved;
        copy = CFOwner<CFTypeRef>();
        EXPECT_EQ([object retainCount], before + 2);
    }
    EXPECT_EQ([object retainCount], before);
    {
        const auto owner = ObjCOwner<NSObject *>::retained(object);
        ObjCOwner<NSObject *> copy = owner;
        EXPECT_EQ([object retainCount], before + 2);
        const ObjCOwner<NSObject *> moved = std::move(copy);
        EXPECT_EQ([object retainCount], before + 2);
        void (^const block)() = keeping(moved);
        EXPECT_EQ([object retainCount], before + 3);
        Block_release(block);
        EXPECT_EQ([object retainCount], before + 2);
    }
    EXPECT_EQ([object retainCount], before);
}

}  // namespace
}  // namespace kestrelbay::macos
