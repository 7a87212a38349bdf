#include "platform/linux/wayland/sway/SwayEventTap.h"

#include <map>
#include <mutex>
#include <tuple>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QWindow>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/wayland/sway/FakeSway.h"
#include "platform/linux/wayland/sway/UserConfiguration.h"
#include "support/Poll.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::sway {
namespace {

using kestrelbay::testing::FakeSway;
using kestrelbay::testing::waitUntil;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr Hotkey kCommandT{KeyCode{17}, modifier::kCommand};
constexpr Hotkey kCommandJ{KeyCode{38}, modifier::kCommand};
constexpr Hotkey kF5{KeyCode{96}, {}};

/// What bindings are to sway, as far as the tap sees it.
class Compositor {
public:
    [[nodiscard]] QString socketPath() const { return sway_.socketPath(); }

    [[nodiscard]] std::map<QByteArray, QByteArray> bindings(const QByteArray &mode = "default") {
        const std::lock_guard lock(mutex_);
        return bindings_[mode];
    }
    [[nodiscard]] std::vector<QByteArray> boundKeys(const QByteArray &mode = "default") {
        std::vector<QByteArray> keys;
        for (const auto &[key, command] : bindings(mode))
            keys.push_back(key);
        return keys;
    }
    [[nodiscard]] int commandCount() {
        const std::lock_guard lock(mutex_);
        return commandCount_;
    }
    void setConfiguration(const QByteArray &text) {
        const std::lock_guard lock(mutex_);
        configuration_ = text;
    }
    [[nodiscard]] std::vector<QByteArray> takeRules() {
        const std::lock_guard lock(mutex_);
        return std::exchange(rules_, {});
    }
    void setMode(const QByteArray &mode) {
        const std::lock_guard lock(mutex_);
        mode_ = mode;
    }
    [[nodiscard]] QByteArray mode() {
        const std::lock_guard lock(mutex_);
        return mode_;
    }
    void refuse(const QByteArray &keys) {
        const std::lock_guard lock(mutex_);
        refused_ = keys;
    }

    /// Answers nothing to the next command.
    void breakOff() {
        const std::lock_guard lock(mutex_);
        isBreakingOff_ = true;
    }

    void press(const QByteArray &key) {
        const QByteArray command = bindings()[key];
        tell(MessageType::BindingEvent,
             R"({"change": "run", "binding": {"command": ")" + command + "\"}}");
    }
    void reload() {
        {
            const std::lock_guard lock(mutex_);
            bindings_.clear();
        }
        tell(MessageType::WorkspaceEvent, R"({"change": "reload", "current": null})");
    }
    void tell(MessageType type, const QByteArray &json) { sway_.tell(toBytes({type, json})); }
    void die() { sway_.hangUp(); }

private:
    QByteArray run(const QByteArray &command) {
        ++commandCount_;
        const QList<QByteArray> words = command.trimmed().split(' ');
        if (words[0] == "mode") {
            mode_ = words[1].sliced(1).chopped(1);
            return R"({"success": true})";
        }
        if (words[0] == "for_window") {
            rules_.push_back(command.trimmed());
            return R"({"success": true})";
        }
        auto &bindings = bindings_[mode_];
        bool isDone = true;
        if (words[0] == "bindcode") {
            EXPECT_EQ(words.mid(1, 2), (QList<QByteArray>{"--inhibited", "--no-repeat"}));
            isDone = words[3] != refused_;
            if (isDone)
                bindings[words[3]] = words.mid(4).join(' ');
        } else {
            EXPECT_EQ(words.first(2), (QList<QByteArray>{"unbindcode", "--inhibited"}));
            isDone = bindings.erase(words[2]) > 0;
        }
        return isDone ? R"({"success": true})" : R"({"success": false, "error": "no"})";
    }

    std::optional<QByteArray> answer(const IpcMessage &message) {
        const std::lock_guard lock(mutex_);
        QByteArray json = R"({"success": true})";
        if (message.type == MessageType::GetBindingState)
            json = R"({"name": ")" + mode_ + "\"}";
        else if (message.type == MessageType::GetVersion)
            json = R"({"loaded_config_file_name": "/nowhere/config"})";
        else if (message.type == MessageType::GetConfig)
            json = QJsonDocument(QJsonObject{{u"config"_s, QString::fromUtf8(configuration_)}})
                       .toJson();
        else if (message.type == MessageType::RunCommand) {
            if (std::exchange(isBreakingOff_, false))
                return std::nullopt;
            QByteArrayList results;
            for (const QByteArray &command : message.payload.split(';'))
                results.append(run(command));
            json = '[' + results.join(',') + ']';
        }
        return toBytes({message.type, json});
    }

    std::mutex mutex_;
    QByteArray configuration_;
    QByteArray mode_ = "default";
    QByteArray refused_;
    bool isBreakingOff_ = false;
    std::map<QByteArray, std::map<QByteArray, QByteArray>> bindings_;
    int commandCount_ = 0;
    std::vector<QByteArray> rules_;
    FakeSway sway_{[this](const IpcMessage &message) { return answer(message); }};
};

class SwayEventTapTest : public ::testing::Test {
protected:
    [[nodiscard]] bool install() {
        return tap_.install(
            {.hotkeyPressed = [this](const Hotkey &hotkey) { pressed_.push_back(hotkey); },
             .refusalsChanged = [this] { ++refusalChanges_; },
             .lost = [this] { ++losses_; }});
    }

    Compositor sway_;
    SwayEventTap tap_{std::make_shared<SwayEvents>(sway_.socketPath())};
    std::vector<Hotkey> pressed_;
    int refusalChanges_ = 0;
    int losses_ = 0;
};

TEST_F(SwayEventTapTest, BindsWantedHotkeysAndTellsOfTheirPresses) {
    tap_.setWantedHotkeys({kCommandT, kF5});
    ASSERT_TRUE(install());
    EXPECT_EQ(tap_.abilities(), (TapAbilities{.tellsSides = false, .passesKeysBack = false}));
    EXPECT_THAT(sway_.boundKeys(), ElementsAre("71", "Mod4+28"));
    sway_.press("Mod4+28");
    sway_.press("71");
    EXPECT_TRUE(waitUntil([&] { return pressed_.size() == 2; }));
    EXPECT_THAT(pressed_, ElementsAre(kCommandT, kF5));
    EXPECT_THAT(tap_.refusedHotkeys(), IsEmpty());
}

TEST_F(SwayEventTapTest, TellsNothingOfBindingsOfOthers) {
    tap_.setWantedHotkeys({kCommandT});
    ASSERT_TRUE(install());
    for (const QByteArray &json :
         {QByteArray(R"({"binding": {"command": "nop"}})"), QByteArray(R"({"binding": 7})"),
          QByteArray("[]"), QByteArray(R"({"binding": {"command": "nop kestrelbay Mod4+29"}})")})
        sway_.tell(MessageType::BindingEvent, json);
    sway_.press("Mod4+28");
    EXPECT_TRUE(waitUntil([&] { return !pressed_.empty(); }));
    EXPECT_THAT(pressed_, ElementsAre(kCommandT));
}

TEST_F(SwayEventTapTest, LetsGoWhatIsNoMoreWantedAndNothingElse) {
    ASSERT_TRUE(install());
    EXPECT_THAT(sway_.boundKeys(), IsEmpty());
    tap_.setWantedHotkeys({kCommandT, kF5});
    const int commands = sway_.commandCount();
    tap_.setWantedHotkeys({kCommandT, kCommandJ});
    EXPECT_THAT(sway_.boundKeys(), ElementsAre("Mod4+28", "Mod4+44"));
    EXPECT_EQ(sway_.commandCount(), commands + 2);
    tap_.setWantedHotkeys({});
    EXPECT_THAT(sway_.boundKeys(), IsEmpty());
}

TEST_F(SwayEventTapTest, LeavesToTheUserWhatTheConfigurationBinds) {
    sway_.setConfiguration("set $mod Mod4\nbindsym $mod+t exec foot");
    tap_.setWantedHotkeys({kCommandT, kCommandJ});
    ASSERT_TRUE(install());
    EXPECT_THAT(sway_.boundKeys(), ElementsAre("Mod4+44"));
    EXPECT_THAT(tap_.refusedHotkeys(), ElementsAre(RefusedHotkey{kCommandT}));
}

TEST_F(SwayEventTapTest, NamesWhatSwayRefuses) {
    sway_.refuse("Mod4+28");
    tap_.setWantedHotkeys({kCommandT, kCommandJ});
    ASSERT_TRUE(install());
    EXPECT_THAT(tap_.refusedHotkeys(), ElementsAre(RefusedHotkey{kCommandT}));
    sway_.refuse({});
    tap_.setWantedHotkeys({kCommandT, kCommandJ});
    EXPECT_THAT(tap_.refusedHotkeys(), IsEmpty());
    EXPECT_THAT(sway_.boundKeys(), ElementsAre("Mod4+28", "Mod4+44"));
}

TEST_F(SwayEventTapTest, GoesOnAfterAConnectionThatBroke) {
    ASSERT_TRUE(install());
    sway_.breakOff();
    tap_.setWantedHotkeys({kCommandT});
    EXPECT_THAT(tap_.refusedHotkeys(), ElementsAre(RefusedHotkey{kCommandT}));
    tap_.setWantedHotkeys({kCommandT});
    EXPECT_THAT(tap_.refusedHotkeys(), IsEmpty());
    EXPECT_THAT(sway_.boundKeys(), ElementsAre("Mod4+28"));
}

TEST_F(SwayEventTapTest, BindsAllAnewWhenTheConfigurationIsReloaded) {
    tap_.setWantedHotkeys({kCommandT, kCommandJ});
    ASSERT_TRUE(install());
    sway_.setConfiguration("bindsym Mod4+j nop");
    sway_.reload();
    EXPECT_TRUE(waitUntil([&] { return refusalChanges_ == 1; }));
    EXPECT_THAT(sway_.boundKeys(), ElementsAre("Mod4+28"));
    EXPECT_THAT(tap_.refusedHotkeys(), ElementsAre(RefusedHotkey{kCommandJ}));
    sway_.press("Mod4+28");
    EXPECT_TRUE(waitUntil([&] { return !pressed_.empty(); }));
}

TEST_F(SwayEventTapTest, HasOwnWindowsFloat) {
    QCoreApplication::setApplicationName(u"KestrelBay"_s);
    QGuiApplication::setDesktopFileName(u"org.kestrelbay.KestrelBay"_s);
    const auto areTold = [this] {
        return sway_.takeRules() ==
               std::vector<QByteArray>{
                   R"(for_window [class="^KestrelBay$"] floating enable)",
                   R"(for_window [app_id="^org.kestrelbay.KestrelBay$"] floating enable)"};
    };
    ASSERT_TRUE(install());
    EXPECT_TRUE(areTold());
    sway_.reload();
    EXPECT_TRUE(waitUntil(areTold)) << "it has forgotten them";
}

TEST_F(SwayEventTapTest, TheConfigurationHoldsWhatItBinds) {
    sway_.setConfiguration("bindsym Mod4+t exec foot");
    EXPECT_EQ(holderInConfiguration(sway_.socketPath(), kCommandT),
              (HotkeyHolder{.program = u"sway"_s, .action = u"exec foot"_s}));
    EXPECT_EQ(holderInConfiguration(sway_.socketPath(), kCommandJ), std::nullopt);
    EXPECT_EQ(holderInConfiguration(u"/nowhere"_s, kCommandT), std::nullopt);
}

TEST_F(SwayEventTapTest, WhatCannotBeReadIsNamed) {
    sway_.setConfiguration("include $(echo a)\ninclude $(echo b)");
    EXPECT_EQ(unreadInConfiguration(sway_.socketPath()), u"include $(echo a); include $(echo b)"_s);
    EXPECT_EQ(unreadInConfiguration(u"/nowhere"_s), QString());
}

TEST_F(SwayEventTapTest, BindsInTheDefaultModeWhateverModeIsOn) {
    sway_.setMode("resize");
    tap_.setWantedHotkeys({kCommandT});
    ASSERT_TRUE(install());
    EXPECT_THAT(sway_.boundKeys(), ElementsAre("Mod4+28"));
    EXPECT_THAT(sway_.boundKeys("resize"), IsEmpty());
    EXPECT_THAT(tap_.refusedHotkeys(), IsEmpty());
    EXPECT_EQ(sway_.mode(), "resize");
    tap_.remove();
    EXPECT_THAT(sway_.boundKeys(), IsEmpty());
    EXPECT_EQ(sway_.mode(), "resize");
}

TEST_F(SwayEventTapTest, LeavesTheKeysToTheWindowThatRecords) {
    tap_.setWantedHotkeys({kCommandT});
    ASSERT_TRUE(install());
    EXPECT_TRUE(tap_.setRecording(true));
    EXPECT_THAT(sway_.boundKeys(), IsEmpty());
    tap_.setWantedHotkeys({kCommandT, kCommandJ});
    EXPECT_THAT(sway_.boundKeys(), IsEmpty());
    EXPECT_TRUE(tap_.setRecording(false));
    EXPECT_THAT(sway_.boundKeys(), ElementsAre("Mod4+28", "Mod4+44"));
}

TEST_F(SwayEventTapTest, TellsWhileRecordingOfTheKeysOfOwnWindows) {
    std::vector<std::tuple<EventType, KeyCode, ModifierFlags>> told;
    ASSERT_TRUE(tap_.install({.event = [&](EventType type, KeyCode key, ModifierFlags flags) {
        told.emplace_back(type, key, flags);
        return type == EventType::KeyDown ? EventVerdict::Swallow : EventVerdict::Pass;
    }}));
    QWindow window;
    const auto send = [&](QEvent::Type type, quint32 code, bool isRepeat = false) {
        QKeyEvent event(type, 0, Qt::NoModifier, code, 0, 0, {}, isRepeat);
        event.ignore();
        QCoreApplication::sendEvent(&window, &event);
    };
    send(QEvent::KeyPress, 28);
    ASSERT_TRUE(tap_.setRecording(true));
    send(QEvent::KeyPress, 133);
    send(QEvent::KeyPress, 28);
    send(QEvent::KeyPress, 28, true);
    send(QEvent::KeyRelease, 28);
    send(QEvent::KeyPress, 9999);
    const ModifierFlags command = flagsOfModifierKey(key::kLeftCommand);
    EXPECT_THAT(told, ElementsAre(std::tuple(EventType::FlagsChanged, key::kLeftCommand, command),
                                  std::tuple(EventType::KeyDown, kCommandT.keyCode, command)));
    told.clear();
    ASSERT_TRUE(tap_.setRecording(false));
    EXPECT_TRUE(waitUntil([&] { return !told.empty(); }));
    send(QEvent::KeyPress, 28);
    EXPECT_THAT(
        told, ElementsAre(std::tuple(EventType::FlagsChanged, key::kLeftCommand, ModifierFlags())));
}

TEST_F(SwayEventTapTest, UnbindsAllWhenItIsRemoved) {
    tap_.setWantedHotkeys({kCommandT, kF5});
    ASSERT_TRUE(install());
    tap_.remove();
    EXPECT_THAT(sway_.boundKeys(), IsEmpty());
    tap_.remove();
    ASSERT_TRUE(install());
    EXPECT_THAT(sway_.boundKeys(), ElementsAre("71", "Mod4+28"));
}

TEST_F(SwayEventTapTest, IsLostWithSway) {
    ASSERT_TRUE(install());
    sway_.die();
    EXPECT_TRUE(waitUntil([&] { return losses_ == 1; }));
    EXPECT_EQ(tap_.problem(), TapProblem::NoDisplay);
    ASSERT_TRUE(install());
    EXPECT_EQ(tap_.problem(), TapProblem::None);
}

TEST_F(SwayEventTapTest, IsNoneWithoutSway) {
    SwayEventTap tap(std::make_shared<SwayEvents>(u"/nowhere/ipc.sock"_s));
    tap.setWantedHotkeys({kCommandT});
    EXPECT_FALSE(tap.install({}));
    EXPECT_EQ(tap.problem(), TapProblem::NoDisplay);
    EXPECT_FALSE(tap.setRecording(true));
    EXPECT_THAT(tap.refusedHotkeys(), IsEmpty());
}

TEST_F(SwayEventTapTest, IsOneInASession) {
    tap_.setWantedHotkeys({kCommandT});
    ASSERT_TRUE(install());
    SwayEventTap other(std::make_shared<SwayEvents>(sway_.socketPath()));
    EXPECT_FALSE(other.install({}));
    EXPECT_EQ(other.problem(), TapProblem::OtherInstance);
    tap_.remove();
    EXPECT_TRUE(other.install({}));
}

TEST_F(SwayEventTapTest, MayBeRemovedByWhoIsToldOfAPress) {
    tap_.setWantedHotkeys({kCommandT});
    int presses = 0;
    ASSERT_TRUE(tap_.install({.hotkeyPressed = [&](const Hotkey &) {
        ++presses;
        tap_.remove();
    }}));
    sway_.press("Mod4+28");
    EXPECT_TRUE(waitUntil([&] { return presses == 1; }));
    EXPECT_THAT(sway_.boundKeys(), IsEmpty());
}

}  // namespace
}  // namespace kestrelbay::sway
