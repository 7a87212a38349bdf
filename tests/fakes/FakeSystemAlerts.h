#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "platform/SystemAlerts.h"

namespace kestrelbay {

/// Shows one alert at a time, which the test answers.
class FakeSystemAlerts final : public SystemAlerts {
public:
    [[nodiscard]] std::unique_ptr<Shown> show(const Alert &alert, NativeWindow::Id window,
                                              std::function<void(bool)> answered) override {
        alert_ = alert;
        window_ = window;
        answered_ = std::move(answered);
        return std::make_unique<FakeShown>(*this);
    }

    // For the test:
    /// What is in view.
    [[nodiscard]] const std::optional<Alert> &alert() const { return alert_; }
    [[nodiscard]] NativeWindow::Id window() const { return window_; }
    void answer(bool accepts) {
        alert_.reset();
        std::exchange(answered_, nullptr)(accepts);
    }

private:
    class FakeShown final : public Shown {
    public:
        explicit FakeShown(FakeSystemAlerts &alerts) : alerts_(alerts) {}
        ~FakeShown() override { alerts_.alert_.reset(); }
        FakeShown(const FakeShown &) = delete;
        FakeShown &operator=(const FakeShown &) = delete;

    private:
        FakeSystemAlerts &alerts_;
    };

    std::optional<Alert> alert_;
    NativeWindow::Id window_ = 0;
    std::function<void(bool)> answered_;
};

}  // namespace kestrelbay
