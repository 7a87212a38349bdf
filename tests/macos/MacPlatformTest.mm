#include "platform/Platform.h"

#include <sys/utsname.h>

#include <thread>

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include "fakes/EventTaps.h"
#include "fakes/FakeServices.h"
#include "fakes/MacJournal.h"
#include "fixtures/QtPrinters.h"
#include "platform/macos/MacEventTap.h"
#include "platform/macos/applications/MacApplicationCatalog.h"
#include "platform/macos/applications/MacWorkspace.h"
#include "platform/macos/cocoa/Strings.h"
#include "platform/macos/desktop/MacKeyboardLayout.h"
#include "platform/macos/desktop/MacLoginItem.h"
#include "platform/macos/desktop/MacNativeWindow.h"
#include "platform/macos/desktop/MacServices.h"
#include "platform/macos/desktop/MacUserDefaults.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::macos {
namespace {

class MacPlatformTest : public ::testing::Test {
protected:
    ~MacPlatformTest() override { setProcessTrusted(false); }

    const std::unique_ptr<Platform> platform_ = makePlatform();
};

template <typename Service, typename Interface>
bool is(Interface &service) {
    return dynamic_cast<Service *>(&service) != nullptr;
}

TEST_F(MacPlatformTest, HandsOutTheServicesOfMacOS) {
    EXPECT_TRUE(is<MacEventTap>(platform_->eventTap()));
    EXPECT_TRUE(is<MacWorkspace>(platform_->workspace()));
    EXPECT_TRUE(is<MacApplicationCatalog>(platform_->applicationCatalog()));
    EXPECT_TRUE(is<MacUserDefaults>(platform_->userDefaults()));
    EXPECT_TRUE(is<MacSystemSounds>(platform_->systemSounds()));
    EXPECT_TRUE(is<UnifiedLog>(platform_->systemLog()));
    EXPECT_TRUE(is<ServiceLoginItem>(platform_->loginItem()));
    EXPECT_TRUE(is<MacSystemSettings>(platform_->systemSettings()));
    EXPECT_TRUE(is<MacNativeWindow>(platform_->nativeWindow()));
    EXPECT_TRUE(is<MacSystemTray>(platform_->systemTray()));
    EXPECT_TRUE(is<MacScreenLock>(platform_->screenLock()));
    EXPECT_TRUE(is<MacHotkeyHolders>(platform_->hotkeyHolders()));
    EXPECT_TRUE(is<MacKeyboardLayout>(platform_->keyboardLayout()));
    EXPECT_NE(dynamic_cast<const MacSystemSymbols *>(platform_->systemSymbols()), nullptr);
    EXPECT_NE(dynamic_cast<const MacSystemTints *>(platform_->systemTints()), nullptr);
}

TEST_F(MacPlatformTest, WhoeverAsksNextRemovesTheTapThatWasInstalled) {
    EventTaps taps;
    const std::unique_ptr<Platform> platform = makePlatform();
    ASSERT_TRUE(platform->eventTap().install({}));
    EXPECT_EQ(taps.sources().size(), 1U);
    platform->eventTap().remove();
    EXPECT_TRUE(taps.sources().empty());
}

TEST_F(MacPlatformTest, AsksForNothingBeforeItIsAsked) {
    platform_->setSessionEndedHandler([] { ADD_FAILURE(); });
    EXPECT_EQ(platform_->startupProblem(), QString());
    EXPECT_EQ(platform_->qtPlatform(), QString());
    EXPECT_EQ(takeCalls(), QStringList());
}

TEST_F(MacPlatformTest, AnAccessoryHasNoIconInTheDock) {
    platform_->becomeAccessory();
    EXPECT_EQ(takeCalls(), QStringList{u"activation policy 1"_s});
}

TEST_F(MacPlatformTest, FilesGoToTheUsersApplicationSupport) {
    EXPECT_EQ(platform_->applicationSupportDirectory(),
              toQString(static_cast<NSString *>(
                  [NSSearchPathForDirectoriesInDomains(14, 1, YES) objectAtIndex:0])));
    EXPECT_TRUE(platform_->applicationSupportDirectory().startsWith(toQString(NSHomeDirectory())));
}

TEST_F(MacPlatformTest, AReportTellsOfTheSystemAndThePermission) {
    utsname names{};
    ASSERT_EQ(::uname(&names), 0);
    const std::vector<std::pair<QString, QString>> expected{
        {u"System"_s, toQString([[NSProcessInfo processInfo] operatingSystemVersionString])},
        {u"Machine"_s, QString::fromLatin1(names.machine)},
        {u"Bundle"_s, toQString([[NSBundle mainBundle] bundlePath])},
        {u"Accessibility permission"_s, u"not given"_s}};
    EXPECT_EQ(platform_->diagnostics(), expected);
    setProcessTrusted(true);
    EXPECT_EQ(platform_->diagnostics().back().second, u"given"_s);
}

TEST(MacPlatform, KeepsQtFromBringingTheProgramForward) {
    constexpr auto kSwitch = "QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM";
    qunsetenv(kSwitch);
    const std::unique_ptr<Platform> platform = makePlatform();
    // Qt looks whether it is empty.
    EXPECT_FALSE(qEnvironmentVariableIsEmpty(kSwitch));
}

TEST_F(MacPlatformTest, AThreadInAHurryIsOneThatTheUserWaitsFor) {
    static_cast<void>(takeCalls());
    std::thread([this] { platform_->hurryThisThread(); }).join();
    EXPECT_EQ(callsOffMainThread(), QStringList(u"pthread_set_qos_class_self_np 0x21 0"_s));
}

}  // namespace
}  // namespace kestrelbay::macos
