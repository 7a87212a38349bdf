#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/x11/keyboard/XEventTap.h"
#include "support/ChildProcess.h"
#include "support/FocusedWindow.h"
#include "support/KeyPresser.h"
#include "support/Poll.h"
#include "support/PrivateXServer.h"

namespace kestrelbay::x11 {

namespace xkey = kestrelbay::testing::xkey;

inline constexpr std::uint8_t kLockMask = 2, kControlMask = 4, kMod1Mask = 8, kMod4Mask = 64;
inline constexpr Hotkey kLeftCommandT{KeyCode{17}, ModifierFlags(0x100008)};
inline constexpr Hotkey kLeftCommandE{KeyCode{14}, ModifierFlags(0x100008)};

/// A tap on a private X server with what it delivered, told the verdict to give.
class XEventTapFixture : public ::testing::Test {
protected:
    void start(const QStringList &serverArguments = {}) {
        server_ = std::make_unique<testing::PrivateXServer>(serverArguments);
        front_ = std::make_unique<testing::FocusedWindow>(server_->displayName());
        keys_ = std::make_unique<testing::KeyPresser>(server_->displayName());
        tap_ = makeTap();
    }

    void SetUp() override { start(); }

    std::unique_ptr<XEventTap> makeTap() {
        XEventTap::Settings settings;
        settings.displayName = server_->displayName();
        settings.firstRetry = std::chrono::milliseconds(20);
        settings.patience = patience_;
        settings.displayLost = [this] { displayLost_ = true; };
        return std::make_unique<XEventTap>(settings);
    }

    EventTap::Handlers handlers() {
        return {.event =
                    [this](EventType type, KeyCode code, ModifierFlags flags) {
                        if (type == EventType::FlagsChanged) {
                            if (!held_.erase(code))
                                held_.insert(code);
                            return EventVerdict::Pass;
                        }
                        if (type == EventType::TapDisabledByTimeout) {
                            ++timeouts_;
                            tap_->enable();
                            return EventVerdict::Pass;
                        }
                        EXPECT_EQ(flags, buildDetailedFlags(held_));
                        keyDowns_.push_back({code, flags});
                        return onKeyDown_ ? onKeyDown_() : verdict_;
                    },
                .refusalsChanged = [this] { ++refusalChanges_; }};
    }

    void install(const std::vector<Hotkey> &wanted = {kLeftCommandT}) {
        tap_->setWantedHotkeys(wanted);
        ASSERT_TRUE(tap_->install(handlers()));
    }

    /// Runs the event loop until that many key-downs have come.
    bool cameKeyDowns(std::size_t count) {
        return testing::waitUntil([&] { return keyDowns_.size() >= count; },
                                  std::chrono::seconds(5));
    }

    /// A key that the tap does not want, seen by the program in front: whatever
    /// was pressed before has been dealt with.
    void pressMarker() {
        const auto before = std::ranges::count(front_->pressedKeys(), xkey::kF6);
        keys_->chord({xkey::kF6});
        ASSERT_TRUE(testing::waitUntil(
            [&] { return std::ranges::count(front_->pressedKeys(), xkey::kF6) > before; }));
    }

    /// What the front program is told of, the tap may hear of a moment later.
    bool cameModifierReleases() {
        return testing::waitUntil([this] { return held_.empty(); });
    }

    void run(const QString &program, const QStringList &arguments) {
        testing::ChildProcess process(program, arguments, server_->environment());
        ASSERT_TRUE(process.waitForExit()) << program.toStdString();
        ASSERT_EQ(process.exitCode(), 0) << process.output().toStdString();
    }

    std::ptrdiff_t pressesInFront(std::uint8_t keycode) {
        return std::ranges::count(front_->pressedKeys(), keycode);
    }

    void repeatKeysFast() {
        run(QStringLiteral("xset"), {QStringLiteral("r"), QStringLiteral("rate"),
                                     QStringLiteral("40"), QStringLiteral("100")});
    }
    void waitAsLongAsFortyRepeatsTake() {
        const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(400);
        EXPECT_TRUE(testing::waitUntil([&] { return std::chrono::steady_clock::now() > until; }));
    }

    void setLayout(const QString &layout, const QString &options) {
        run(QStringLiteral("setxkbmap"),
            {QStringLiteral("-layout"), layout, QStringLiteral("-option"), options});
    }

    std::unique_ptr<testing::PrivateXServer> server_;
    std::unique_ptr<testing::FocusedWindow> front_;
    std::unique_ptr<testing::KeyPresser> keys_;
    std::unique_ptr<XEventTap> tap_;
    std::vector<Hotkey> keyDowns_;
    std::set<KeyCode> held_;
    EventVerdict verdict_ = EventVerdict::Swallow;
    std::function<EventVerdict()> onKeyDown_;
    /// Of the watchdog, which is no matter of most tests.
    std::chrono::milliseconds patience_ = std::chrono::minutes(1);
    int timeouts_ = 0;
    int refusalChanges_ = 0;
    bool displayLost_ = false;
};

}  // namespace kestrelbay::x11
