#pragma once

#include "platform/SystemSettings.h"

namespace kestrelbay {

/// Light and dark are Qt's business here: it follows the system by itself.
class MacSystemSettings final : public SystemSettings {
public:
    [[nodiscard]] std::optional<ColorScheme> colorScheme() const override { return std::nullopt; }
    /// Never called: there is nothing to tell.
    void setColorSchemeHandler(std::function<void()> /*handler*/) override {}
    /// Privacy & Security › Accessibility.
    bool openAccessibilityPane() override;
};

}  // namespace kestrelbay
