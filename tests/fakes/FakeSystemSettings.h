#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "platform/SystemSettings.h"

namespace kestrelbay {

class FakeSystemSettings final : public SystemSettings {
public:
    [[nodiscard]] std::optional<ColorScheme> colorScheme() const override { return scheme_; }
    void setColorSchemeHandler(std::function<void()> handler) override {
        handler_ = std::move(handler);
    }
    bool openAccessibilityPane() override {
        ++accessibilityPaneCalls_;
        return hasAccessibilityPane_;
    }

    // For the test:
    void setColorScheme(std::optional<ColorScheme> scheme) {
        if (std::exchange(scheme_, scheme) != scheme && handler_)
            handler_();
    }
    void setHasAccessibilityPane(bool has) { hasAccessibilityPane_ = has; }
    [[nodiscard]] int accessibilityPaneCalls() const { return accessibilityPaneCalls_; }

private:
    std::optional<ColorScheme> scheme_ = ColorScheme::Light;
    std::function<void()> handler_;
    bool hasAccessibilityPane_ = true;
    int accessibilityPaneCalls_ = 0;
};

}  // namespace kestrelbay
