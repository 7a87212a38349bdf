#include "platform/linux/wayland/recording/OwnWindowKeys.h"

#include <tuple>
#include <vector>

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWindow>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrelbay::wayland {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr KeyCode kT{17};
/// Their numbers on X.
constexpr quint32 kXOfT = 28, kXOfRightSuper = 134;

class OwnWindowKeysTest : public ::testing::Test {
protected:
    using Told = std::tuple<EventType, KeyCode, ModifierFlags>;

    void send(QEvent::Type type, quint32 code, Qt::KeyboardModifiers modifiers = {}) {
        QKeyEvent event(type, 0, modifiers, code, 0, 0);
        QCoreApplication::sendEvent(&window_, &event);
    }
    static Told changed(KeyCode key, ModifierFlags flags) {
        return {EventType::FlagsChanged, key, flags};
    }

    std::vector<Told> told_;
    OwnWindowKeys keys_{[this](EventType type, KeyCode key, ModifierFlags flags) {
        told_.emplace_back(type, key, flags);
        return EventVerdict::Swallow;
    }};
    QWindow window_;
};

TEST_F(OwnWindowKeysTest, AModifierThatTheCompositorKeptToItselfCountsForTheKey) {
    send(QEvent::KeyPress, kXOfT, Qt::MetaModifier | Qt::ShiftModifier);
    const ModifierFlags shift = flagsOfModifierKey(key::kLeftShift);
    const ModifierFlags both = shift | flagsOfModifierKey(key::kLeftCommand);
    EXPECT_THAT(
        told_,
        ElementsAre(changed(key::kLeftShift, shift), changed(key::kLeftCommand, both),
                    Told(EventType::KeyDown, kT, both), changed(key::kLeftShift, both ^ shift),
                    changed(key::kLeftCommand, ModifierFlags())));
}

TEST_F(OwnWindowKeysTest, AModifierThatIsHeldIsToldOfOnce) {
    send(QEvent::KeyPress, kXOfRightSuper);
    send(QEvent::KeyPress, kXOfT, Qt::MetaModifier);
    const ModifierFlags command = flagsOfModifierKey(key::kRightCommand);
    EXPECT_THAT(told_, ElementsAre(changed(key::kRightCommand, command),
                                   Told(EventType::KeyDown, kT, command)));
}

TEST_F(OwnWindowKeysTest, NothingIsToldAfterTheEnd) {
    keys_.stop();
    send(QEvent::KeyPress, kXOfT, Qt::MetaModifier);
    EXPECT_THAT(told_, IsEmpty());
}

}  // namespace
}  // namespace kestrelbay::wayland
