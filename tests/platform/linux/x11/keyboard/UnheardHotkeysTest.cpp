#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/x11/keyboard/XEventTap.h"
#include "support/ChildProcess.h"
#include "support/KeyPresser.h"
#include "support/Poll.h"
#include "support/PrivateXServer.h"
#include "support/bus/PrivateSessionBus.h"

namespace kestrelbay::x11 {
namespace {

using kestrelbay::testing::ChildProcess;
using kestrelbay::testing::KeyPresser;
using kestrelbay::testing::PrivateSessionBus;
using kestrelbay::testing::PrivateXServer;
using kestrelbay::testing::waitUntil;
using kestrelbay::testing::WindowManagerKeys;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
namespace xkey = kestrelbay::testing::xkey;

constexpr std::uint8_t kTab = 23;
constexpr KeyCode kT{17};
const Hotkey kLeftCommandT{KeyCode{17}, ModifierFlags(0x100008)};
const Hotkey kRightCommandT{KeyCode{17}, ModifierFlags(0x100010)};
const Hotkey kLeftOptionTab{KeyCode{48}, ModifierFlags(0x80020)};
const Hotkey kControlE{KeyCode{14}, ModifierFlags(0x40000)};

/// A tap beside a real window manager, with a keyboard.
class UnheardHotkeysTest : public ::testing::Test {
protected:
    void startWindowManager(const QString &program) {
        QProcessEnvironment session;
        session.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus_.address());
        windowManager_.reset();
        windowManager_ =
            server_.startWindowManager(program, session, WindowManagerKeys::AsInstalled);
    }
    void installTap(const std::vector<Hotkey> &wanted = {kLeftCommandT, kRightCommandT,
                                                         kControlE}) {
        XEventTap::Settings settings;
        settings.displayName = server_.displayName();
        tap_.emplace(settings);
        tap_->setWantedHotkeys(wanted);
        ASSERT_TRUE(tap_->install({.event =
                                       [this](EventType type, KeyCode code, ModifierFlags) {
                                           if (type == EventType::KeyDown)
                                               ++keyDowns_[code];
                                           return EventVerdict::Swallow;
                                       },
                                   .refusalsChanged = [this] { ++changes_; }}));
    }
    void installTapBesideIcewm() {
        startWindowManager(QStringLiteral("icewm"));
        installTap();
    }

    /// Its overlay key is the left Super key by default, or either from version 46 on.
    [[nodiscard]] static bool mutterHoldsBoth() {
        QProcessEnvironment defaults = QProcessEnvironment::systemEnvironment();
        defaults.insert(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("memory"));
        ChildProcess gsettings(QStringLiteral("gsettings"),
                               {QStringLiteral("get"), QStringLiteral("org.gnome.mutter"),
                                QStringLiteral("overlay-key")},
                               defaults);
        EXPECT_TRUE(gsettings.waitForExit());
        const QByteArray key = gsettings.output().trimmed();
        EXPECT_TRUE(key == "'Super'" || key == "'Super_L'") << key.toStdString();
        return key == "'Super'";
    }

    /// Presses a hotkey that nobody else wants, which arrives after all that was pressed
    /// before. A window manager that has just started may not have its keys yet.
    [[nodiscard]] bool controlEArrives() {
        const int before = keyDowns_[kControlE.keyCode];
        keys_.chord({xkey::kLeftControl, xkey::kE});
        return waitUntil([&] { return keyDowns_[kControlE.keyCode] > before; });
    }
    [[nodiscard]] bool becomesUnheard(const Hotkey &hotkey, std::uint8_t modifier,
                                      std::uint8_t key) {
        return waitUntil([&] {
            keys_.chord({modifier, key});
            const bool arrives = controlEArrives();
            const std::vector<RefusedHotkey> refused = tap_->refusedHotkeys();
            return arrives &&
                   std::ranges::find(refused, hotkey, &RefusedHotkey::hotkey) != refused.end();
        });
    }

    PrivateSessionBus bus_;
    PrivateXServer server_;
    KeyPresser keys_{server_.displayName()};
    std::unique_ptr<ChildProcess> windowManager_;
    std::optional<XEventTap> tap_;
    std::map<KeyCode, int> keyDowns_;
    int changes_ = 0;
};

TEST_F(UnheardHotkeysTest, SeesThatMutterHoldsTheLeftCommandKey) {
    startWindowManager(QStringLiteral("mutter"));
    installTap();
    EXPECT_THAT(tap_->refusedHotkeys(), IsEmpty()) << "the server has granted it";
    EXPECT_TRUE(becomesUnheard(kLeftCommandT, xkey::kLeftSuper, xkey::kT));
    EXPECT_THAT(tap_->refusedHotkeys(),
                ElementsAre(RefusedHotkey{kLeftCommandT, key::kLeftCommand}));
    EXPECT_TRUE(waitUntil([this] { return changes_ == 1; }));
    // Some versions leave the other one alone.
    if (mutterHoldsBoth()) {
        EXPECT_TRUE(becomesUnheard(kRightCommandT, xkey::kRightSuper, xkey::kT));
        return;
    }
    const int before = keyDowns_[kT];
    keys_.chord({xkey::kRightSuper, xkey::kT});
    EXPECT_TRUE(waitUntil([&] { return keyDowns_[kT] > before; }));
}

/// Of two grabs of one hotkey the server obeys the later one.
TEST_F(UnheardHotkeysTest, SeesThatMutterHoldsAHotkeyByXInput) {
    installTap({kLeftOptionTab, kControlE});
    startWindowManager(QStringLiteral("mutter"));
    EXPECT_TRUE(becomesUnheard(kLeftOptionTab, xkey::kLeftAlt, kTab));
    EXPECT_THAT(tap_->refusedHotkeys(), ElementsAre(RefusedHotkey{kLeftOptionTab}));
}

TEST_F(UnheardHotkeysTest, SeesThatIcewmHoldsBothCommandKeys) {
    installTapBesideIcewm();
    EXPECT_TRUE(becomesUnheard(kLeftCommandT, xkey::kLeftSuper, xkey::kT));
    EXPECT_TRUE(becomesUnheard(kRightCommandT, xkey::kRightSuper, xkey::kT));
    EXPECT_THAT(tap_->refusedHotkeys(),
                ElementsAre(RefusedHotkey{kLeftCommandT, key::kLeftCommand},
                            RefusedHotkey{kRightCommandT, key::kRightCommand}));
}

TEST_F(UnheardHotkeysTest, AHotkeyThatArrivesAfterAllIsNoneAnyMore) {
    installTapBesideIcewm();
    EXPECT_TRUE(becomesUnheard(kLeftCommandT, xkey::kLeftSuper, xkey::kT));
    windowManager_.reset();
    keys_.chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(waitUntil([this] { return tap_->refusedHotkeys().empty(); }));
    EXPECT_TRUE(waitUntil([this] { return changes_ == 2; }));
}

TEST_F(UnheardHotkeysTest, AnotherWindowManagerIsAskedAnew) {
    installTapBesideIcewm();
    EXPECT_TRUE(becomesUnheard(kLeftCommandT, xkey::kLeftSuper, xkey::kT));
    startWindowManager(QStringLiteral("metacity"));
    EXPECT_TRUE(waitUntil([this] { return tap_->refusedHotkeys().empty(); }));
}

/// As a program does while its menu is open.
TEST_F(UnheardHotkeysTest, AKeyboardThatIsTakenForAMomentIsNoSign) {
    startWindowManager(QStringLiteral("openbox"));
    installTap();
    const kestrelbay::testing::Connection menu(
        xcb_connect(qPrintable(server_.displayName()), nullptr));
    xcb_connection_t *const c = menu.get();
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
    ASSERT_TRUE(waitUntil([&] {
        const Reply<xcb_grab_keyboard_reply_t> reply(
            xcb_grab_keyboard_reply(c,
                                    xcb_grab_keyboard(c, 0, root, XCB_CURRENT_TIME,
                                                      XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                    nullptr));
        return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    }));
    for (int i = 0; i < 3; ++i)
        keys_.chord({xkey::kLeftSuper, xkey::kT});
    xcb_ungrab_keyboard(c, XCB_CURRENT_TIME);
    synchronize(c);
    ASSERT_TRUE(controlEArrives());
    EXPECT_EQ(keyDowns_[kT], 0) << "the menu has had them";
    EXPECT_THAT(tap_->refusedHotkeys(), IsEmpty());
    EXPECT_EQ(changes_, 0);
    keys_.chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(waitUntil([this] { return keyDowns_[kT] == 1; }));
}

TEST_F(UnheardHotkeysTest, ThoseNoLongerWantedAreForgotten) {
    installTapBesideIcewm();
    EXPECT_TRUE(becomesUnheard(kLeftCommandT, xkey::kLeftSuper, xkey::kT));
    tap_->setWantedHotkeys({kControlE});
    EXPECT_THAT(tap_->refusedHotkeys(), IsEmpty());
}

}  // namespace
}  // namespace kestrelbay::x11
