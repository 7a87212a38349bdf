#pragma once

#include <map>

#include "platform/HotkeyHolders.h"

namespace kestrelbay {

/// Settings of a desktop that a test makes up.
class FakeHotkeyHolders final : public HotkeyHolders {
public:
    [[nodiscard]] HotkeyHolder holderOf(const RefusedHotkey &refused) override {
        ++calls_;
        const auto found = holders_.find(refused);
        return found == holders_.end() ? HotkeyHolder() : found->second;
    }

    // For the test:
    void setHolder(const RefusedHotkey &refused, const HotkeyHolder &holder) {
        holders_[refused] = holder;
    }
    [[nodiscard]] int calls() const { return calls_; }

private:
    std::map<RefusedHotkey, HotkeyHolder> holders_;
    int calls_ = 0;
};

}  // namespace kestrelbay
