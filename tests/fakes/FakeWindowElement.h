#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "fakes/Journal.h"
#include "platform/WindowElement.h"

namespace kestrelbay {

/// A window as the test sets it up. No value stands for what can't be read.
struct FakeWindow {
    QString name;
    std::optional<QString> subrole = QString(kStandardWindowSubrole);
    std::optional<bool> isMinimized = false;
    bool isMain = false;
    bool isGone = false;
    /// Happens within every request to it.
    std::function<void()> whenAsked{};
};

/// Writes requests as "setMain A" and so on, reads as "isMinimized A".
class FakeWindowElement final : public WindowElement {
public:
    FakeWindowElement(std::shared_ptr<FakeWindow> window, std::shared_ptr<Journal> requests,
                      std::shared_ptr<Journal> reads)
        : window_(std::move(window)), requests_(std::move(requests)), reads_(std::move(reads)) {}

    [[nodiscard]] std::optional<QString> subrole() const override {
        reads_->add(QStringLiteral("subrole ") + window_->name);
        return window_->isGone ? std::nullopt : window_->subrole;
    }
    [[nodiscard]] std::optional<bool> isMinimized() const override {
        reads_->add(QStringLiteral("isMinimized ") + window_->name);
        return window_->isGone ? std::nullopt : window_->isMinimized;
    }
    bool setMinimized(bool minimized) override {
        if (!window_->isGone)
            window_->isMinimized = minimized;
        return request(minimized ? QStringLiteral("minimize ") : QStringLiteral("unminimize "));
    }
    bool setMain() override {
        if (!window_->isGone)
            window_->isMain = true;
        return request(QStringLiteral("setMain "));
    }
    bool setFocused() override { return request(QStringLiteral("setFocused ")); }
    bool raise() override { return request(QStringLiteral("raise ")); }

private:
    bool request(const QString &verb) {
        requests_->add(verb + window_->name);
        if (window_->whenAsked)
            window_->whenAsked();
        return !window_->isGone;
    }

    std::shared_ptr<FakeWindow> window_;
    std::shared_ptr<Journal> requests_;
    std::shared_ptr<Journal> reads_;
};

}  // namespace kestrelbay
