#include "platform/linux/wayland/gnome/GnomeEventTap.h"

#include <memory>
#include <vector>

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWindow>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FakeExtension.h"
#include "platform/linux/wayland/gnome/ShellAccelerator.h"
#include "support/Poll.h"
#include "support/bus/PrivateSessionBus.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace kestrelbay::gnome {
namespace {

using kestrelbay::testing::FakeExtension;
using kestrelbay::testing::PrivateSessionBus;
using kestrelbay::testing::waitUntil;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

constexpr Hotkey kCommandT{KeyCode{17}, modifier::kCommand};
constexpr Hotkey kCommandJ{KeyCode{38}, modifier::kCommand};
const QString kT = u"<Super>0x1c"_s, kJ = u"<Super>0x2c"_s;

TEST(ShellAccelerator, IsThePlaceOfAKeyWithItsModifiersOfEitherSide) {
    EXPECT_EQ(acceleratorOf(kCommandT), kT);
    EXPECT_EQ(acceleratorOf({KeyCode{53}, modifier::kOption | modifier::kLeftOption |
                                              modifier::kControl | modifier::kShift}),
              u"<Control><Alt><Shift>0x09"_s);
    EXPECT_EQ(acceleratorOf({KeyCode{9999}, modifier::kCommand}), QString());
}

class GnomeEventTapTest : public ::testing::Test {
protected:
    GnomeEventTapTest() { qputenv("DBUS_SESSION_BUS_ADDRESS", bus_.address().toLatin1()); }

    void make() {
        extension_.emplace(bus_.address());
        makeTap();
    }
    void makeTap() {
        tap_ = std::make_unique<GnomeEventTap>(
            std::make_shared<ShellExtension>(),
            GnomeEventTap::Settings{.firstRetry = 10ms, .longestRetry = 100ms});
    }
    [[nodiscard]] bool install() {
        return tap_->install({
            .event = [](EventType, KeyCode, ModifierFlags) { return EventVerdict::Pass; },
            .hotkeyPressed = [this](const Hotkey &hotkey) { pressed_.push_back(hotkey); },
            .refusalsChanged = [this] { ++refusalsChanged_; },
            .lost = [this] { ++lost_; },
            .withheldChanged = [this] { ++withheldChanged_; },
        });
    }
    [[nodiscard]] bool isBound(const QStringList &accelerators) {
        return waitUntil([&] { return extension_->bound() == accelerators; });
    }

    PrivateSessionBus bus_;
    std::optional<FakeExtension> extension_;
    std::unique_ptr<GnomeEventTap> tap_;
    std::vector<Hotkey> pressed_;
    int refusalsChanged_ = 0;
    int lost_ = 0;
    int withheldChanged_ = 0;
};

TEST_F(GnomeEventTapTest, TellsOfWantedHotkeysWhenTheyArePressed) {
    make();
    tap_->setWantedHotkeys({kCommandT});
    ASSERT_TRUE(install());
    EXPECT_EQ(tap_->abilities(), (TapAbilities{.tellsSides = false, .passesKeysBack = false}));
    EXPECT_THAT(extension_->bound(), ElementsAre(kT));
    tap_->setWantedHotkeys({kCommandT, kCommandJ});
    ASSERT_TRUE(isBound({kT, kJ}));
    extension_->press(u"<Super>0x55"_s);
    extension_->press(kJ);
    extension_->press(kT);
    ASSERT_TRUE(waitUntil([&] { return pressed_.size() == 2; }));
    EXPECT_THAT(pressed_, ElementsAre(kCommandJ, kCommandT));
}

TEST_F(GnomeEventTapTest, GivesAllBackWhenItIsRemoved) {
    make();
    tap_->setWantedHotkeys({kCommandT});
    ASSERT_TRUE(install());
    tap_->remove();
    EXPECT_TRUE(isBound({}));
    EXPECT_FALSE(tap_->areKeysWithheld());
    ASSERT_TRUE(install());
    EXPECT_TRUE(isBound({kT}));
}

TEST_F(GnomeEventTapTest, NamesWhatIsRefusedAndAsksForItAgain) {
    make();
    extension_->refuse({kT});
    tap_->setWantedHotkeys({kCommandT, kCommandJ});
    ASSERT_TRUE(install());
    EXPECT_THAT(tap_->refusedHotkeys(), ElementsAre(RefusedHotkey{kCommandT}));
    extension_->refuse({});
    ASSERT_TRUE(waitUntil([&] { return refusalsChanged_ == 1; }));
    EXPECT_THAT(tap_->refusedHotkeys(), IsEmpty());
    EXPECT_THAT(extension_->bound(), UnorderedElementsAre(kT, kJ));
}

TEST_F(GnomeEventTapTest, AsksAgainOnceTheUserHasChangedBindings) {
    make();
    extension_->refuse({kT});
    tap_->setWantedHotkeys({kCommandT});
    ASSERT_TRUE(install());
    // After 10, 20, 40 and 80 ms.
    ASSERT_TRUE(waitUntil([&] { return extension_->hotkeyCalls() == 5; }));
    extension_->refuse({});
    extension_->tell(u"BindingsChanged"_s);
    EXPECT_TRUE(isBound({kT}));
    EXPECT_EQ(extension_->hotkeyCalls(), 6);
}

TEST_F(GnomeEventTapTest, IsNotInstalledWithoutTheExtension) {
    makeTap();
    EXPECT_FALSE(install());
    EXPECT_EQ(tap_->problem(), TapProblem::ExtensionMissing);
    extension_.emplace(bus_.address());
    EXPECT_TRUE(waitUntil([&] { return install(); }));
    EXPECT_EQ(tap_->problem(), TapProblem::None);
}

TEST_F(GnomeEventTapTest, IsNotInstalledWhileAnotherInstanceHasTheExtension) {
    make();
    extension_->serveAnother();
    EXPECT_FALSE(install());
    EXPECT_EQ(tap_->problem(), TapProblem::OtherInstance);
}

TEST_F(GnomeEventTapTest, IsLostToAnotherInstanceThatWasFaster) {
    make();
    ASSERT_TRUE(install());
    extension_->serveAnother();
    tap_->setWantedHotkeys({kCommandT});
    ASSERT_TRUE(waitUntil([&] { return lost_ == 1; }));
    EXPECT_EQ(tap_->problem(), TapProblem::OtherInstance);
}

TEST_F(GnomeEventTapTest, HasItsHotkeysAgainWhenTheExtensionComesBack) {
    make();
    tap_->setWantedHotkeys({kCommandT});
    ASSERT_TRUE(install());
    extension_->disable();
    ASSERT_TRUE(waitUntil([&] { return withheldChanged_ == 1; }));
    EXPECT_TRUE(tap_->areKeysWithheld());
    EXPECT_EQ(lost_, 0);
    extension_->enable();
    ASSERT_TRUE(waitUntil([&] { return withheldChanged_ == 2; }));
    EXPECT_FALSE(tap_->areKeysWithheld());
    EXPECT_TRUE(isBound({kT}));
}

TEST_F(GnomeEventTapTest, BindsNothingWhileItRecords) {
    make();
    tap_->setWantedHotkeys({kCommandT});
    ASSERT_TRUE(install());
    ASSERT_TRUE(tap_->setRecording(true));
    EXPECT_TRUE(isBound({}));
    ASSERT_TRUE(tap_->setRecording(false));
    EXPECT_TRUE(isBound({kT}));
}

}  // namespace
}  // namespace kestrelbay::gnome
