#include "fakes/FakeEventTap.h"
#include "fakes/FakeUserDefaults.h"
#include "platform/EventTapContract.h"
#include "platform/UserDefaultsContract.h"

namespace kestrelbay::testing {
namespace {

class FakeKeyboard {
public:
    EventTap &tap() { return tap_; }
    void hold(KeyCode code) { tap_.press(code); }
    void letGo(KeyCode code) {
        if (isModifierKeyCode(code))
            tap_.release(code);
    }
    void settle() {}
    void setHeldByOthers(const Hotkey &hotkey, bool held) {
        tap_.setHeldByOthers(held ? std::set{hotkey} : std::set<Hotkey>{});
    }
    void setKeyboardHeldByOthers(bool held) { tap_.setKeyboardHeldByOthers(held); }

private:
    FakeEventTap tap_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, EventTapContract, FakeKeyboard);

class FakeStore {
public:
    UserDefaults &defaults() { return defaults_; }

private:
    FakeUserDefaults defaults_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, UserDefaultsContract, FakeStore);

}  // namespace
}  // namespace kestrelbay::testing
