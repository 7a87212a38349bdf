#include <algorithm>

#include <QElapsedTimer>

#include "platform/EventTapContract.h"
#include "platform/linux/keycodes/KeyCodeTable.h"
#include "platform/linux/x11/keyboard/XEventTap.h"
#include "support/ChildProcess.h"
#include "support/FocusedWindow.h"
#include "support/KeyPresser.h"
#include "support/Poll.h"
#include "support/PrivateXServer.h"

namespace kestrelbay::testing {
namespace {

class XKeyboard {
public:
    XKeyboard() : front_(server_.displayName()), keys_(server_.displayName()) {
        x11::XEventTap::Settings settings;
        settings.displayName = server_.displayName();
        settings.firstRetry = std::chrono::milliseconds(5);
        tap_ = std::make_unique<x11::XEventTap>(settings);
    }

    EventTap &tap() { return *tap_; }
    void hold(KeyCode code) { keys_.press(toXKeycode(code).value()); }
    void holdLong(KeyCode code) {
        ChildProcess repeatFast(QStringLiteral("xset"),
                                {QStringLiteral("r"), QStringLiteral("rate"), QStringLiteral("40"),
                                 QStringLiteral("100")},
                                server_.environment());
        ASSERT_TRUE(repeatFast.waitForExit());
        ASSERT_EQ(repeatFast.exitCode(), 0);
        hold(code);
        // Repeats of a key that is swallowed show nowhere, so they are given the time of forty.
        QElapsedTimer time;
        time.start();
        EXPECT_TRUE(waitUntil([&] { return time.elapsed() > 440; }));
    }
    int seenInFront(KeyCode code) {
        return static_cast<int>(std::ranges::count(front_.pressedKeys(), toXKeycode(code).value()));
    }
    void letGo(KeyCode code) { keys_.release(toXKeycode(code).value()); }

    /// There is nothing to see from outside when the tap has dropped an event, so
    /// this gives it the time, and the turns of the event loop, of many refused grabs
    /// and their retries.
    void settle() {
        QElapsedTimer time;
        time.start();
        int turns = 0;
        EXPECT_TRUE(waitUntil([&] { return ++turns > 40 && time.elapsed() > 60; }));
    }

    void setHeldByOthers(const Hotkey &hotkey, bool held) {
        const std::uint8_t keycode = toXKeycode(hotkey.keyCode).value();
        if (held)
            EXPECT_TRUE(front_.grabKey(keycode, kMod4));
        else
            front_.ungrabKey(keycode, kMod4);
    }
    void setKeyboardHeldByOthers(bool held) {
        if (held)
            EXPECT_TRUE(front_.grabKeyboard());
        else
            front_.ungrabKeyboard();
    }
    void withholdKeys(bool /*withhold*/) {}
    void takeTapAway() { front_.ownSelection("_KESTRELBAY_EVENT_TAP"); }

private:
    static constexpr std::uint16_t kMod4 = 64;

    PrivateXServer server_;
    FocusedWindow front_;
    KeyPresser keys_;
    std::unique_ptr<x11::XEventTap> tap_;
};

}  // namespace

template <>
inline constexpr bool kSystemWithholdsKeys<XKeyboard> = false;

INSTANTIATE_TYPED_TEST_SUITE_P(X11, EventTapContract, XKeyboard);

}  // namespace kestrelbay::testing
