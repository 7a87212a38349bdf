#pragma once

#include "platform/StatusArea.h"

namespace kestrelbay {

/// The menu bar, which is always there, tints icons by itself and opens their menus.
class MacStatusArea final : public StatusArea {
public:
    /// Calls the handler at once.
    void whenAvailable(std::function<void()> handler) override { handler(); }
    [[nodiscard]] std::optional<bool> isDark() const override { return std::nullopt; }
    /// Never called: there is nothing to tell.
    void setDarkHandler(std::function<void()> /*handler*/) override {}
    [[nodiscard]] bool opensMenus() const override { return true; }
    [[nodiscard]] QString description() const override { return QStringLiteral("menu bar"); }
};

}  // namespace kestrelbay
