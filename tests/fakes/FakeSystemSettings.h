#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "platform/SystemSettings.h"

namespace kestrelbay {

class FakeSystemSettings final : public SystemSettings {
public:
    [[nodiscard]] std::optional<ColorScheme> colorScheme() const override { return scheme_; }
    [[nodiscard]] std::optional<QColor> accentColor() const override { return accent_; }
    [[nodiscard]] bool isContrastHigh() const override { return isContrastHigh_; }
    void setAppearanceHandler(std::function<void()> handler) override {
        handler_ = std::move(handler);
    }
    [[nodiscard]] bool hasAccessibilityPane() const override { return hasAccessibilityPane_; }
    bool openAccessibilityPane() override {
        ++accessibilityPaneCalls_;
        return hasAccessibilityPane_;
    }

    // For the test:
    void setColorScheme(std::optional<ColorScheme> scheme) { change(scheme_, scheme); }
    void setAccentColor(std::optional<QColor> accent) { change(accent_, accent); }
    void setContrastHigh(bool isHigh) { change(isContrastHigh_, isHigh); }
    void setHasAccessibilityPane(bool has) { hasAccessibilityPane_ = has; }
    [[nodiscard]] int accessibilityPaneCalls() const { return accessibilityPaneCalls_; }

private:
    template <typename Value>
    void change(Value &current, const Value &next) {
        if (std::exchange(current, next) != next && handler_)
            handler_();
    }

    std::optional<ColorScheme> scheme_ = ColorScheme::Light;
    std::optional<QColor> accent_;
    bool isContrastHigh_ = false;
    std::function<void()> handler_;
    bool hasAccessibilityPane_ = true;
    int accessibilityPaneCalls_ = 0;
};

}  // namespace kestrelbay
