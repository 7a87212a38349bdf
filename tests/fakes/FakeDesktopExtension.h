#pragma once

#include "platform/DesktopExtension.h"

namespace kestrelbay {

class FakeDesktopExtension final : public DesktopExtension {
public:
    [[nodiscard]] ExtensionState state() const override { return state_; }
    void install() override {
        ++installations_;
        state_ = afterInstalling_;
    }

    // For tests:
    void setState(ExtensionState state) { state_ = state; }
    void setStateAfterInstalling(ExtensionState state) { afterInstalling_ = state; }
    [[nodiscard]] int installations() const { return installations_; }

private:
    ExtensionState state_ = ExtensionState::Enabled;
    ExtensionState afterInstalling_ = ExtensionState::AfterLogin;
    int installations_ = 0;
};

}  // namespace kestrelbay
