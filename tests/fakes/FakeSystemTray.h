#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "fakes/Journal.h"
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
    void drawSymbol(const QString &name, const QString &description) override {
        journal_.add(QStringLiteral("%1 (%2)").arg(name, description));
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
    /// The symbols that were to be drawn since the last take.
    QStringList takeSymbols() { return journal_.take(); }
    void setOpensMenus(bool opens) { opensMenus_ = opens; }

private:
    void tellAvailable() {
        if (isAvailable_ && availableHandler_)
            std::exchange(availableHandler_, nullptr)();
    }

    Journal journal_;
    bool isAvailable_ = true;
    bool opensMenus_ = false;
    std::optional<bool> isDark_ = false;
    std::function<void()> availableHandler_;
    std::function<void()> darkHandler_;
};

}  // namespace kestrelbay
