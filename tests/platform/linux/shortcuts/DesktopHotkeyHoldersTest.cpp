#include "platform/linux/shortcuts/DesktopHotkeyHolders.h"

#include <memory>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "platform/linux/bus/SessionBus.h"
#include "support/PrivateXServer.h"
#include "support/bus/PrivateSessionBus.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::testing {
namespace {

const RefusedHotkey kSuperT{{KeyCode{17}, modifier::kCommand | modifier::kLeftCommand}};
const RefusedHotkey kSuperTByModifier{kSuperT.hotkey, key::kLeftCommand};
const RefusedHotkey kSuperTByRightModifier{kSuperT.hotkey, key::kRightCommand};

/// A display with a real window manager, and the settings of a desktop.
class DesktopHotkeyHoldersTest : public ::testing::Test {
protected:
    void startWindowManager(const QString &program) {
        windowManager_ = server_.startWindowManager(program, {}, WindowManagerKeys::AsInstalled);
    }
    [[nodiscard]] HotkeyHolder holderOf(const RefusedHotkey &refused, const QString &desktop = {}) {
        DesktopHotkeyHolders holders({.displayName = server_.displayName(),
                                      .desktop = desktop,
                                      .configFolder = folder_.path()},
                                     connection_);
        return holders.holderOf(refused);
    }

    QTemporaryDir folder_;
    PrivateSessionBus bus_;
    PrivateXServer server_;
    SessionBus connection_;
    std::unique_ptr<ChildProcess> windowManager_;
};

TEST_F(DesktopHotkeyHoldersTest, UnderMutterTheLeftCommandKeyIsTheOverlayKey) {
    startWindowManager(u"mutter"_s);
    EXPECT_EQ(holderOf(kSuperTByModifier),
              (HotkeyHolder{u"Mutter"_s, u"overlay-key"_s,
                            u"gsettings set org.gnome.mutter overlay-key ''"_s}));
    EXPECT_EQ(holderOf(kSuperTByRightModifier), (HotkeyHolder{u"Mutter"_s, {}, {}}));
    EXPECT_EQ(holderOf(kSuperT).action, u"switch-windows"_s);
}

TEST_F(DesktopHotkeyHoldersTest, UnderIcewmItIsASettingInItsFile) {
    startWindowManager(u"icewm"_s);
    EXPECT_EQ(holderOf(kSuperTByModifier),
              (HotkeyHolder{u"IceWM"_s, {}, u"~/.icewm/preferences: Win95Keys=0"_s}));
    EXPECT_EQ(holderOf(kSuperT), HotkeyHolder()) << "anybody may have grabbed a single hotkey";
}

TEST_F(DesktopHotkeyHoldersTest, TheDesktopCountsBeforeTheWindowManager) {
    startWindowManager(u"openbox"_s);
    QFile file(folder_.filePath(u"kglobalshortcutsrc"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[kwin]\nOverview=Meta+T,Meta+T,Toggle Overview\n");
    file.close();
    EXPECT_EQ(holderOf(kSuperT, u"KDE"_s), (HotkeyHolder{u"kwin"_s, u"Toggle Overview"_s, {}}));
    EXPECT_EQ(holderOf(kSuperT, u"Something:GNOME"_s).program, u"Openbox"_s);
    EXPECT_EQ(holderOf(kSuperT), HotkeyHolder());
}

TEST_F(DesktopHotkeyHoldersTest, NothingIsKnownWithoutAServer) {
    server_.process().kill();
    ASSERT_TRUE(server_.process().waitForExit());
    EXPECT_EQ(holderOf(kSuperT, u"GNOME"_s), HotkeyHolder());
    EXPECT_EQ(holderOf(kSuperTByModifier), HotkeyHolder());
}

}  // namespace
}  // namespace kestrelbay::testing
