#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "platform/SystemTray.h"

namespace kestrelbay {

/// There from the start, unless the test says otherwise.
class FakeSystemTray final : public SystemTray {
public:
    void whenAvailable(std::function<void()> handler) override {
        availableHandler_ = std::move(handler);
        tellAvailable();
    }
    [[nodiscard]] bool isAvailable() const override { return isAvailable_; }
    [[nodiscard]] std::optional<bool> isDark() const override { return isDark_; }
    [[nodiscard]] bool tintsIcon(const QString & /*name*/) const override { return false; }
    void setDarkHandler(std::function<void()> handler) override {
        darkHandler_ = std::move(handler);
    }
    [[nodiscard]] bool opensMenus() const override { return opensMenus_; }

    // For the test:
    void setAvailable(bool available) {
        isAvailable_ = available;
        tellAvailable();
    }
    void setDark(std::optional<bool> dark) {
        if (std::exchange(isDark_, dark) != dark && darkHandler_)
            darkHandler_();
    }
    void setOpensMenus(bool opens) { opensMenus_ = opens; }

private:
    void tellAvailable() {
        if (isAvailable_ && availableHandler_)
            std::exchange(availableHandler_, nullptr)();
    }

    bool isAvailable_ = true;
    bool opensMenus_ = false;
    std::optional<bool> isDark_ = false;
    std::function<void()> availableHandler_;
    std::function<void()> darkHandler_;
};

}  // namespace kestrelbay
