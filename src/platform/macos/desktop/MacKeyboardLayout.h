#pragma once

#include <functional>
#include <utility>

#include "platform/KeyboardLayout.h"

namespace kestrelbay {

/// The layout of the selected input source; for one that is no layout itself, such as a method
/// for Chinese, that by which it is typed.
class MacKeyboardLayout final : public KeyboardLayout {
public:
    MacKeyboardLayout();
    ~MacKeyboardLayout() override;
    MacKeyboardLayout(const MacKeyboardLayout &) = delete;
    MacKeyboardLayout &operator=(const MacKeyboardLayout &) = delete;

    [[nodiscard]] QString printedOn(KeyCode keyCode) const override;
    void setChangeHandler(std::function<void()> handler) override { handler_ = std::move(handler); }

private:
    void changed() const;

    std::function<void()> handler_;
};

}  // namespace kestrelbay
