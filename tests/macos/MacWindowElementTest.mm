#include <gtest/gtest.h>

#include "fakes/Bridge.h"
#include "fakes/FakeDesktop.h"
#include "fakes/LiveObjects.h"
#include "fakes/MacJournal.h"
#include "fixtures/QtPrinters.h"
#include "platform/macos/applications/MacWindowElement.h"

namespace kestrelbay::macos {
namespace {

using Windows = std::vector<std::unique_ptr<WindowElement>>;

const QString kSubrole = QStringLiteral("AXSubrole");
const QString kMinimized = QStringLiteral("AXMinimized");

class MacWindowElementTest : public ::testing::Test {
protected:
    MacWindowElementTest() {
        for (const auto *const name : {"front", "middle", "back"})
            desktop_->addWindow(process_, QString::fromLatin1(name));
        static_cast<void>(takeCalls());
    }
    ~MacWindowElementTest() override {
        desktop_.reset();
        EXPECT_EQ(liveObjects(), objectsBefore_);
    }

    [[nodiscard]] Windows windows() const {
        @autoreleasepool {
            return MacWindowElement::ofProcess(ProcessIdentifier{process_.pid});
        }
    }
    void setWindowsValue(id value) { process_.windowsValue = ObjCOwner<id>::retained(value); }

    const int objectsBefore_ = liveObjects();
    std::optional<FakeDesktop> desktop_{std::in_place};
    FakeDesktop::Process &process_ =
        desktop_->run(QStringLiteral("/Applications/One.app"), QStringLiteral("test.one"));
};

TEST_F(MacWindowElementTest, AreThoseOfTheProcessInTheirOrder) {
    const Windows found = windows();
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(takeCalls(),
              (QStringList{QStringLiteral("AXUIElementCreateApplication 100"),
                           QStringLiteral("AXUIElementCopyAttributeValue 100 AXWindows")}));
    EXPECT_TRUE(found[0]->raise());
    EXPECT_TRUE(found[2]->raise());
    EXPECT_EQ(takeCalls(), (QStringList{QStringLiteral("AXUIElementPerformAction front AXRaise"),
                                        QStringLiteral("AXUIElementPerformAction back AXRaise")}));
}

TEST_F(MacWindowElementTest, NoProcessHasNone) {
    EXPECT_TRUE(MacWindowElement::ofProcess(ProcessIdentifier{0}).empty());
    EXPECT_TRUE(MacWindowElement::ofProcess(ProcessIdentifier{-1}).empty());
    EXPECT_EQ(takeCalls(), QStringList());
    EXPECT_TRUE(MacWindowElement::ofProcess(ProcessIdentifier{1}).empty());
    EXPECT_EQ(takeCalls().size(), 2);
}

TEST_F(MacWindowElementTest, AListThatFailsIsEmpty) {
    for (const AXError error : {kAXErrorFailure, kAXErrorAPIDisabled, kAXErrorCannotComplete,
                                kAXErrorAttributeUnsupported}) {
        process_.windowsError = error;
        EXPECT_TRUE(windows().empty());
    }
    process_.windowsError = kAXErrorSuccess;
    EXPECT_EQ(windows().size(), 3U);
}

TEST_F(MacWindowElementTest, AListOfAnotherTypeIsEmpty) {
    setWindowsValue(nil);
    EXPECT_TRUE(windows().empty());
    setWindowsValue(@"a text");
    EXPECT_TRUE(windows().empty());
    setWindowsValue([NSNumber numberWithBool:YES]);
    EXPECT_TRUE(windows().empty());
    @autoreleasepool {
        const id element = ns(process_.windows[0].element.get());
        setWindowsValue([NSArray arrayWithObjects:element, @"a text", nil]);
        EXPECT_TRUE(windows().empty());
        setWindowsValue([NSArray arrayWithObject:element]);
        EXPECT_EQ(windows().size(), 1U);
        setWindowsValue([NSArray array]);
        EXPECT_TRUE(windows().empty());
    }
}

TEST_F(MacWindowElementTest, TheSubroleIsAText) {
    EXPECT_EQ(windows()[1]->subrole(), QString(kStandardWindowSubrole));
    EXPECT_EQ(takeCalls().last(), QStringLiteral("AXUIElementCopyAttributeValue middle AXSubrole"));
    auto &values = process_.windows[1].values;
    values[kSubrole] = ObjCOwner<id>::retained(@"AXDialog");
    EXPECT_EQ(windows()[1]->subrole(), QStringLiteral("AXDialog"));
    values[kSubrole] = ObjCOwner<id>::retained([NSNumber numberWithBool:YES]);
    EXPECT_EQ(windows()[1]->subrole(), std::nullopt);
    values.erase(kSubrole);
    EXPECT_EQ(windows()[1]->subrole(), std::nullopt);
    process_.windows[1].errors[kSubrole] = kAXErrorCannotComplete;
    EXPECT_EQ(windows()[1]->subrole(), std::nullopt);
}

TEST_F(MacWindowElementTest, WhetherItIsMinimisedIsABoolean) {
    EXPECT_EQ(windows()[0]->isMinimized(), false);
    EXPECT_EQ(takeCalls().last(),
              QStringLiteral("AXUIElementCopyAttributeValue front AXMinimized"));
    auto &values = process_.windows[0].values;
    values[kMinimized] = ObjCOwner<id>::retained([NSNumber numberWithBool:YES]);
    EXPECT_EQ(windows()[0]->isMinimized(), true);
    for (const id other : std::initializer_list<id> { @"1", [NSNumber numberWithInt:1], @[] }) {
        values[kMinimized] = ObjCOwner<id>::retained(other);
        EXPECT_EQ(windows()[0]->isMinimized(), std::nullopt);
    }
    process_.windows[0].errors[kMinimized] = kAXErrorNoValue;
    EXPECT_EQ(windows()[0]->isMinimized(), std::nullopt);
}

TEST_F(MacWindowElementTest, WritesBooleans) {
    const Windows found = windows();
    static_cast<void>(takeCalls());
    EXPECT_TRUE(found[0]->setMinimized(true));
    EXPECT_TRUE(found[0]->setMinimized(false));
    EXPECT_TRUE(found[0]->setMain());
    EXPECT_TRUE(found[0]->setFocused());
    EXPECT_EQ(takeCalls(),
              (QStringList{QStringLiteral("AXUIElementSetAttributeValue front AXMinimized true"),
                           QStringLiteral("AXUIElementSetAttributeValue front AXMinimized false"),
                           QStringLiteral("AXUIElementSetAttributeValue front AXMain true"),
                           QStringLiteral("AXUIElementSetAttributeValue front AXFocused true")}));
}

TEST_F(MacWindowElementTest, TellsWhatCouldNotBeDelivered) {
    const Windows found = windows();
    for (const auto *const name : {"AXMinimized", "AXMain", "AXFocused", "AXRaise"})
        process_.windows[0].errors[QString::fromLatin1(name)] = kAXErrorCannotComplete;
    EXPECT_FALSE(found[0]->setMinimized(true));
    EXPECT_FALSE(found[0]->setMain());
    EXPECT_FALSE(found[0]->setFocused());
    EXPECT_FALSE(found[0]->raise());
}

}  // namespace
}  // namespace kestrelbay::macos
