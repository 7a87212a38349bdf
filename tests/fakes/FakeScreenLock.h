#pragma once

#include <functional>
#include <memory>
#include <set>
#include <utility>

#include "platform/ScreenLock.h"

namespace kestrelbay {

/// A lock of the screen that is about to come when a test says so.
class FakeScreenLock final : public ScreenLock {
public:
    [[nodiscard]] std::unique_ptr<Watch> watch(std::function<void()> aboutToLock) override {
        return std::make_unique<FakeWatch>(watches_, std::move(aboutToLock));
    }

    // For the test:
    [[nodiscard]] std::size_t watchCount() const { return watches_->size(); }
    void lock() const {
        const auto watches = *watches_;  // a handler may end its own
        for (const auto &aboutToLock : watches)
            (*aboutToLock)();
    }

private:
    using Watches = std::set<std::shared_ptr<const std::function<void()>>>;

    class FakeWatch final : public Watch {
    public:
        FakeWatch(std::shared_ptr<Watches> watches, std::function<void()> aboutToLock)
            : watches_(std::move(watches)),
              aboutToLock_(std::make_shared<const std::function<void()>>(std::move(aboutToLock))) {
            watches_->insert(aboutToLock_);
        }
        ~FakeWatch() override { watches_->erase(aboutToLock_); }
        FakeWatch(const FakeWatch &) = delete;
        FakeWatch &operator=(const FakeWatch &) = delete;

    private:
        const std::shared_ptr<Watches> watches_;
        const std::shared_ptr<const std::function<void()>> aboutToLock_;
    };

    const std::shared_ptr<Watches> watches_ = std::make_shared<Watches>();
};

}  // namespace kestrelbay
