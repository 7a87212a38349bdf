#pragma once

#include <functional>
#include <map>
#include <utility>

#include <QString>

#include "platform/KeyboardLayout.h"

namespace kestrelbay {

class FakeKeyboardLayout final : public KeyboardLayout {
public:
    [[nodiscard]] QString printedOn(KeyCode keyCode) const override {
        const auto found = caps_.find(keyCode);
        return found == caps_.end() ? QString() : found->second;
    }
    void setChangeHandler(std::function<void()> handler) override { handler_ = std::move(handler); }

    // For the test:
    /// None at first.
    void print(const std::map<KeyCode, QString> &caps) {
        if (std::exchange(caps_, caps) != caps && handler_)
            handler_();
    }

private:
    std::map<KeyCode, QString> caps_;
    std::function<void()> handler_;
};

}  // namespace kestrelbay
