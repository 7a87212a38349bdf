#include "platform/linux/x11/keymap/KeyGrabs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrelbay::x11 {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::uint8_t kShift = 1, kLock = 2, kControl = 4, kMod1 = 8, kMod2 = 16, kMod4 = 64,
                       kMod5 = 128;
constexpr XKeycode kT = 28;

KeyboardModel usKeyboard(std::uint8_t locks = 0) {
    KeyboardModel model;
    model.modifiersOfKey[50] = model.modifiersOfKey[62] = {kShift};
    model.modifiersOfKey[37] = model.modifiersOfKey[105] = {kControl};
    model.modifiersOfKey[64] = model.modifiersOfKey[108] = {kMod1};
    model.modifiersOfKey[133] = model.modifiersOfKey[134] = {kMod4};
    model.lockModifiers = locks;
    return model;
}

Hotkey hotkey(std::uint16_t code, std::uint64_t flags) {
    return {KeyCode{code}, ModifierFlags(flags)};
}

TEST(KeyGrabs, GrabsTheGenericModifierOfALeftSidedHotkey) {
    EXPECT_THAT(grabsFor(hotkey(17, 0x100008), usKeyboard()), ElementsAre(KeyGrab{kT, kMod4}));
}

TEST(KeyGrabs, GrabsEveryCombinationOfLocksOnce) {
    EXPECT_THAT(grabsFor(hotkey(17, 0x100008), usKeyboard(kLock | kMod2)),
                ElementsAre(KeyGrab{kT, kMod4}, KeyGrab{kT, kMod4 | kLock},
                            KeyGrab{kT, kMod4 | kMod2}, KeyGrab{kT, kMod4 | kLock | kMod2}));
}

TEST(KeyGrabs, TakesNumLockWhereTheKeyboardHasIt) {
    EXPECT_THAT(grabsFor(hotkey(17, 0x100008), usKeyboard(kMod5)),
                ElementsAre(KeyGrab{kT, kMod4}, KeyGrab{kT, kMod4 | kMod5}));
}

TEST(KeyGrabs, DoesNotIgnoreALockThatSharesTheHotkeysModifier) {
    EXPECT_THAT(grabsFor(hotkey(17, 0x100008), usKeyboard(kMod4 | kLock)),
                ElementsAre(KeyGrab{kT, kMod4}, KeyGrab{kT, kMod4 | kLock}));
}

TEST(KeyGrabs, AsksForEitherSideOfAGenericHotkeyWhereTheyDiffer) {
    KeyboardModel model = usKeyboard();
    model.modifiersOfKey[108] = {kMod5};  // right Option is the third-level key
    EXPECT_THAT(grabsFor(hotkey(17, 0x80000), model),
                ElementsAre(KeyGrab{kT, kMod1}, KeyGrab{kT, kMod5}, KeyGrab{kT, kMod1 | kMod5}));
    EXPECT_THAT(grabsFor(hotkey(17, 0x80040), model), ElementsAre(KeyGrab{kT, kMod5}));
    EXPECT_THAT(grabsFor(hotkey(17, 0x80020), model), ElementsAre(KeyGrab{kT, kMod1}));
    EXPECT_THAT(grabsFor(hotkey(17, 0x80060), model), ElementsAre(KeyGrab{kT, kMod1 | kMod5}));
}

TEST(KeyGrabs, AsksForEachModifierThatAKeySetsInSomeLayout) {
    KeyboardModel model = usKeyboard();
    model.modifiersOfKey[108] = {kMod1, kMod5};
    EXPECT_THAT(grabsFor(hotkey(17, 0x80040), model),
                ElementsAre(KeyGrab{kT, kMod1}, KeyGrab{kT, kMod5}));
    EXPECT_THAT(grabsFor(hotkey(17, 0x80000), model),
                ElementsAre(KeyGrab{kT, kMod1}, KeyGrab{kT, kMod5}, KeyGrab{kT, kMod1 | kMod5}));
    EXPECT_THAT(grabsFor(hotkey(17, 0x80020), model), ElementsAre(KeyGrab{kT, kMod1}));
}

TEST(KeyGrabs, AsksForTheCoreModifierWhereItsKeyHasMoved) {
    KeyboardModel model = usKeyboard();
    model.modifiersOfKey[37] = {};  // Caps Lock is the left Control key now
    EXPECT_THAT(grabsFor(hotkey(17, 0x40001), model), ElementsAre(KeyGrab{kT, kControl}));
}

TEST(KeyGrabs, TellsModifiersThatTheKeysDownExplain) {
    KeyboardModel model = usKeyboard(kLock | kMod2);
    EXPECT_TRUE(areExplained(0, {}, model));
    EXPECT_TRUE(areExplained(kLock | kMod2, {}, model));
    EXPECT_TRUE(areExplained(kMod4, {key::kLeftCommand}, model));
    EXPECT_TRUE(areExplained(kMod4, {key::kLeftCommand, key::kRightCommand}, model));
    EXPECT_TRUE(areExplained(kMod4 | kShift, {key::kRightCommand, key::kLeftShift}, model));
    EXPECT_FALSE(areExplained(kMod4, {}, model));
    EXPECT_FALSE(areExplained(0, {key::kLeftCommand}, model));
    EXPECT_FALSE(areExplained(kMod4 | kShift, {key::kRightCommand}, model));
    EXPECT_FALSE(areExplained(kMod4, {key::kRightCommand, key::kLeftShift}, model));
    EXPECT_FALSE(areExplained(kMod5, {key::kRightCommand}, model));
    model.modifiersOfKey[108] = {kMod1, kMod5};
    EXPECT_TRUE(areExplained(kMod5, {key::kRightOption}, model));
    EXPECT_TRUE(areExplained(kMod1, {key::kRightOption}, model));
    EXPECT_FALSE(areExplained(kMod4, {key::kRightOption}, model));
}

TEST(KeyGrabs, NamesTheLeftKeyOfAModifierThatNoFingerHolds) {
    const KeyboardModel model = usKeyboard(kLock | kMod2);
    EXPECT_THAT(unheldModifiers(kMod4 | kShift, {}, model),
                ElementsAre(key::kLeftCommand, key::kLeftShift));
    EXPECT_THAT(unheldModifiers(kMod4 | kShift, {key::kRightCommand}, model),
                ElementsAre(key::kLeftShift));
    EXPECT_THAT(unheldModifiers(kLock | kMod2, {}, model), IsEmpty());
    EXPECT_THAT(unheldModifiers(kMod5, {}, model), IsEmpty());
}

TEST(KeyGrabs, KnowsAnUnheldModifierByWhatSetsIt) {
    KeyboardModel model = usKeyboard();
    model.modifiersOfKey[37] = {kLock};  // Control and Caps Lock have changed places
    EXPECT_THAT(unheldModifiers(kControl, {}, model), ElementsAre(key::kLeftControl));
    model.modifiersOfKey[108] = {kMod5};
    EXPECT_THAT(unheldModifiers(kMod5, {}, model), ElementsAre(key::kLeftOption));
    model.modifiersOfKey[133] = {kMod5};
    EXPECT_THAT(unheldModifiers(kMod5, {}, model), ElementsAre(key::kLeftCommand));
}

TEST(KeyGrabs, CombinesAllKinds) {
    EXPECT_THAT(grabsFor(hotkey(17, 0x1E0000 | 0x2B), usKeyboard()),
                ElementsAre(KeyGrab{kT, kShift | kControl | kMod1 | kMod4}));
}

TEST(KeyGrabs, GrabsABareKey) {
    EXPECT_THAT(grabsFor(hotkey(96, 0), usKeyboard(kLock)),
                ElementsAre(KeyGrab{71, 0}, KeyGrab{71, kLock}));
}

TEST(KeyGrabs, HasNothingForAHotkeyWhoseSidesCannotMatch) {
    // Option has no side while Control has one: the held keys always have both.
    EXPECT_THAT(grabsFor(hotkey(17, 0xC0001), usKeyboard()), IsEmpty());
}

TEST(KeyGrabs, HasNothingWhereTheKeySetsNoModifier) {
    KeyboardModel model = usKeyboard();
    model.modifiersOfKey[108] = {};
    EXPECT_THAT(grabsFor(hotkey(17, 0x80040), model), IsEmpty());
    EXPECT_THAT(grabsFor(hotkey(17, 0x80060), model), IsEmpty());
    EXPECT_THAT(grabsFor(hotkey(17, 0x80000), model), ElementsAre(KeyGrab{kT, kMod1}));
}

TEST(KeyGrabs, HasNothingForAKeyThatXDoesNotHave) {
    EXPECT_THAT(grabsFor(hotkey(63, 0x100008), usKeyboard()), IsEmpty());
}

}  // namespace
}  // namespace kestrelbay::x11
