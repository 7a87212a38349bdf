#pragma once

#include "fakes/Journal.h"
#include "platform/LoginItem.h"

namespace kestrelbay {

class FakeLoginItem final : public LoginItem {
public:
    [[nodiscard]] bool isEnabled() const override { return enabled_; }
    [[nodiscard]] std::optional<QString> setEnabled(bool enabled) override {
        requests_.add(enabled ? QStringLiteral("enable") : QStringLiteral("disable"));
        if (enabled == enabled_)
            return std::nullopt;
        if (!problem_)
            enabled_ = enabled;
        return problem_;
    }

    // For the test:
    /// From now on every change is refused for this reason; none to allow them again.
    void setProblem(const std::optional<QString> &problem) { problem_ = problem; }
    /// As the user does it elsewhere.
    void setEnabledByOthers(bool enabled) { enabled_ = enabled; }
    [[nodiscard]] QStringList takeRequests() { return requests_.take(); }

private:
    bool enabled_ = false;
    std::optional<QString> problem_;
    Journal requests_;
};

}  // namespace kestrelbay
