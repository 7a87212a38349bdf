#include "platform/linux/wayland/portal/PortalEventTap.h"

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fixtures/QtPrinters.h"
#include "support/Poll.h"
#include "support/bus/FakeShortcutsPortal.h"
#include "support/bus/PrivateSessionBus.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::portal {
namespace {

using kestrelbay::testing::FakeShortcutsPortal;
using kestrelbay::testing::PrivateSessionBus;
using kestrelbay::testing::waitUntil;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Bound = std::map<QString, QString>;
using Manner = FakeShortcutsPortal::Manner;

constexpr Hotkey kCommandT{KeyCode{17}, modifier::kCommand};
constexpr Hotkey kCommandJ{KeyCode{38}, modifier::kCommand};
const QString kIdOfT = u"hotkey-17-1048576"_s;
const QString kIdOfJ = u"hotkey-38-1048576"_s;
const Bound kBoundT{{kIdOfT, u"LOGO+t"_s}};
const Bound kBoundBoth{{kIdOfT, u"LOGO+t"_s}, {kIdOfJ, u"LOGO+j"_s}};

class PortalEventTapTest : public ::testing::Test {
protected:
    PortalEventTapTest() { qputenv("DBUS_SESSION_BUS_ADDRESS", bus_.address().toUtf8()); }
    ~PortalEventTapTest() override { qunsetenv("DBUS_SESSION_BUS_ADDRESS"); }

    void startPortal(Manner manner = Manner::Current) { portal_.emplace(bus_.address(), manner); }
    void install(const std::vector<Hotkey> &hotkeys) {
        tap_.setWantedHotkeys(hotkeys);
        ASSERT_TRUE(tap_.install({.event =
                                      [this](EventType type, KeyCode key, ModifierFlags) {
                                          if (type == EventType::KeyDown)
                                              recorded_.push_back(key);
                                          return EventVerdict::Swallow;
                                      },
                                  .hotkeyPressed =
                                      [this](const Hotkey &hotkey) {
                                          pressed_.push_back(hotkey);
                                          if (isToRemove_)
                                              tap_.remove();
                                      },
                                  .purposeOf =
                                      [](const Hotkey &hotkey) {
                                          return hotkey == kCommandT ? u"Terminal"_s : u"Editor"_s;
                                      },
                                  .refusalsChanged = [this] { ++refusalChanges_; },
                                  .triggersChanged = [this] { ++triggerChanges_; }}));
    }
    void installAndBind(const std::vector<Hotkey> &hotkeys) {
        install(hotkeys);
        ASSERT_TRUE(waitUntil([&] { return triggerChanges_ > 0; }));
        static_cast<void>(portal_->takeCalls());
    }
    bool becomesBound(const Bound &bound) {
        return waitUntil([&] { return portal_->bound() == bound; });
    }
    /// All that the portal has told was taken in.
    void settle() {
        const int before = triggerChanges_;
        portal_->reassign(kIdOfT, u"the end"_s);
        ASSERT_TRUE(waitUntil([&] { return triggerChanges_ > before; }));
    }

    PrivateSessionBus bus_;
    std::optional<FakeShortcutsPortal> portal_;
    PortalEventTap tap_{
        [] {
            return SymbolNames{{kCommandT.keyCode, u"t"_s}, {kCommandJ.keyCode, u"j"_s}};
        },
        wayland::KeptKeys::AskedFor};
    std::vector<Hotkey> pressed_;
    std::vector<KeyCode> recorded_;
    bool isToRemove_ = false;
    int refusalChanges_ = 0;
    int triggerChanges_ = 0;
};

TEST_F(PortalEventTapTest, BindsEachHotkeyByItsPurposeAndTellsOfItsPress) {
    startPortal();
    install({kCommandT, kCommandJ});
    EXPECT_EQ(tap_.abilities(), (TapAbilities{.tellsSides = false, .passesKeysBack = false}));
    ASSERT_TRUE(becomesBound(kBoundBoth));
    EXPECT_EQ(portal_->description(kIdOfT), u"Terminal"_s);
    EXPECT_EQ(portal_->takeCalls(),
              (QStringList{u"Register"_s, u"CreateSession"_s, u"BindShortcuts"_s}));
    portal_->press(kIdOfT);
    EXPECT_TRUE(waitUntil([&] { return !pressed_.empty(); }));
    EXPECT_THAT(pressed_, ElementsAre(kCommandT));
}

TEST_F(PortalEventTapTest, AsksNoMoreWhereAllAreBoundAtOnce) {
    startPortal(Manner::BindsAtOnce);
    install({kCommandT});
    ASSERT_TRUE(waitUntil([&] { return triggerChanges_ > 0; }));
    EXPECT_EQ(portal_->bound(), kBoundT);
    EXPECT_EQ(portal_->takeCalls(), (QStringList{u"Register"_s, u"CreateSession"_s}))
        << "BindShortcuts would open the desktop's settings";
}

TEST_F(PortalEventTapTest, TellsWhatTheUserPresses) {
    startPortal();
    installAndBind({kCommandT});
    EXPECT_EQ(tap_.triggerText(kCommandT), u"the keys LOGO+t"_s);
    EXPECT_EQ(tap_.triggerText(kCommandJ), QString());
    portal_->reassign(kIdOfT, u"Meta+Y"_s);
    EXPECT_TRUE(waitUntil([&] { return tap_.triggerText(kCommandT) == u"Meta+Y"_s; }));
    EXPECT_EQ(triggerChanges_, 2);
}

TEST_F(PortalEventTapTest, TellsOfAHeldKeyOnce) {
    startPortal();
    installAndBind({kCommandT});
    for (int i = 0; i < 3; ++i)
        portal_->press(kIdOfT);
    settle();
    EXPECT_EQ(pressed_.size(), 1U);
    portal_->release(kIdOfT);
    portal_->press(kIdOfT);
    settle();
    EXPECT_EQ(pressed_.size(), 2U);
}

TEST_F(PortalEventTapTest, TellsNothingOfShortcutsThatItDoesNotKnow) {
    startPortal();
    installAndBind({kCommandT});
    portal_->press(u"hotkey-1-2"_s);
    settle();
    EXPECT_THAT(pressed_, IsEmpty());
}

TEST_F(PortalEventTapTest, BindsOtherHotkeysInTheirPlace) {
    startPortal();
    installAndBind({kCommandT});
    tap_.setWantedHotkeys({kCommandJ});
    tap_.setWantedHotkeys({kCommandT, kCommandJ});
    ASSERT_TRUE(becomesBound(kBoundBoth));
    EXPECT_EQ(portal_->takeCalls(),
              (QStringList{u"Close"_s, u"CreateSession"_s, u"BindShortcuts"_s}));
    tap_.setWantedHotkeys({});
    const int before = triggerChanges_;
    EXPECT_TRUE(waitUntil([&] { return triggerChanges_ > before; }));
    EXPECT_FALSE(portal_->hasSession());
    EXPECT_EQ(portal_->takeCalls(), QStringList{u"Close"_s});
}

TEST_F(PortalEventTapTest, TheSameHotkeysAreLeftAlone) {
    startPortal();
    installAndBind({kCommandT});
    tap_.setWantedHotkeys({kCommandT});
    settle();
    EXPECT_THAT(portal_->takeCalls(), IsEmpty());
}

TEST_F(PortalEventTapTest, DoesNotChaseAPortalThatDiesAgainAndAgain) {
    startPortal();
    installAndBind({kCommandT});
    QElapsedTimer time;
    time.start();
    for (int i = 0; i < 3; ++i) {
        portal_.reset();
        startPortal();
        ASSERT_TRUE(becomesBound(kBoundT));
    }
    // One, two and four times as long, with timers that may be early by a twentieth.
    EXPECT_GE(std::chrono::milliseconds(time.elapsed()), 6 * ShortcutsSession::kFirstPause);
}

TEST_F(PortalEventTapTest, WhatHasNoKeysIsRefusedByNobody) {
    startPortal();
    portal_->leaveWithoutKeys(kIdOfJ);
    installAndBind({kCommandT, kCommandJ});
    EXPECT_THAT(tap_.refusedHotkeys(),
                ElementsAre(RefusedHotkey{.hotkey = kCommandJ, .isUnassigned = true}));
    EXPECT_EQ(refusalChanges_, 1);
    portal_->reassign(kIdOfJ, u"Meta+J"_s);
    EXPECT_TRUE(waitUntil([&] { return tap_.refusedHotkeys().empty(); }));
}

TEST_F(PortalEventTapTest, NothingIsRefusedWhileTheUserThinks) {
    startPortal();
    portal_->thinkAbout();
    install({kCommandT});
    ASSERT_TRUE(waitUntil([&] { return portal_->hasSession(); }));
    EXPECT_THAT(tap_.refusedHotkeys(), IsEmpty());
    portal_->answerAll();
    EXPECT_TRUE(becomesBound(kBoundT));
}

TEST_F(PortalEventTapTest, WhatTheUserDeclinesIsRefusedAndNotAskedForAgain) {
    startPortal(Manner::Declines);
    install({kCommandT});
    ASSERT_TRUE(waitUntil([&] { return !tap_.refusedHotkeys().empty(); }));
    EXPECT_EQ(portal_->takeCalls(), (QStringList{u"Register"_s, u"CreateSession"_s,
                                                 u"BindShortcuts"_s, u"ListShortcuts"_s}));
    settle();
    EXPECT_THAT(portal_->takeCalls(), IsEmpty());
}

TEST_F(PortalEventTapTest, ASessionThatWasClosedIsMadeAnew) {
    startPortal();
    installAndBind({kCommandT});
    portal_->closeSession();
    ASSERT_TRUE(waitUntil([&] { return portal_->bound() == kBoundT; }, std::chrono::seconds(1)));
    portal_->press(kIdOfT);
    EXPECT_TRUE(waitUntil([&] { return pressed_.size() == 1; }));
}

TEST_F(PortalEventTapTest, APortalThatComesBackBindsAnew) {
    startPortal();
    installAndBind({kCommandT});
    portal_.reset();
    startPortal();
    ASSERT_TRUE(waitUntil([&] { return portal_->bound() == kBoundT; }, std::chrono::seconds(1)));
    EXPECT_EQ(portal_->takeCalls().value(0), u"Register"_s);
    portal_->press(kIdOfT);
    EXPECT_TRUE(waitUntil([&] { return pressed_.size() == 1; }));
}

TEST_F(PortalEventTapTest, ClosesItsSessionWhenItIsRemoved) {
    startPortal();
    installAndBind({kCommandT});
    tap_.remove();
    EXPECT_TRUE(waitUntil([&] { return !portal_->hasSession(); }));
    install({kCommandT});
    EXPECT_TRUE(becomesBound(kBoundT));
}

TEST_F(PortalEventTapTest, MayBeRemovedByAPress) {
    startPortal();
    installAndBind({kCommandT});
    isToRemove_ = true;
    portal_->press(kIdOfT);
    EXPECT_TRUE(waitUntil([&] { return !portal_->hasSession(); }));
    EXPECT_EQ(pressed_.size(), 1U);
}

TEST_F(PortalEventTapTest, OneThatWasRemovedAtOnceBindsNothing) {
    startPortal();
    install({kCommandT});
    tap_.remove();
    QCoreApplication::processEvents();
    EXPECT_EQ(portal_->takeCalls(), QStringList());
}

TEST_F(PortalEventTapTest, RecordsWhatThePortalHasBound) {
    startPortal();
    installAndBind({kCommandT});
    EXPECT_TRUE(tap_.setRecording(true));
    portal_->press(kIdOfT);
    settle();
    EXPECT_THAT(recorded_, ElementsAre(kCommandT.keyCode));
    EXPECT_THAT(pressed_, IsEmpty());
    EXPECT_TRUE(tap_.setRecording(false));
    EXPECT_EQ(portal_->bound(), kBoundT);
}

TEST_F(PortalEventTapTest, TheVersionSaysWhetherThereIsOne) {
    EXPECT_EQ(globalShortcutsVersion(), 0U);
    startPortal();
    EXPECT_EQ(globalShortcutsVersion(), 1U);
}

}  // namespace
}  // namespace kestrelbay::portal
