#pragma once

#include <memory>

#include "platform/LoginItem.h"

namespace kestrelbay {

/// The system's service for login items, for macOS 13 and later. Users also find the
/// item in the system settings.
class ServiceLoginItem final : public LoginItem {
public:
    /// Exactly while the status is "enabled": an item that waits for the user's
    /// approval does not count.
    [[nodiscard]] bool isEnabled() const override;
    /// The reason is the system's, in its language.
    [[nodiscard]] std::optional<QString> setEnabled(bool enabled) override;
};

/// The one for the running system: a service from macOS 13 on, a launch agent's file
/// in the user's home before.
[[nodiscard]] std::unique_ptr<LoginItem> makeLoginItem();

}  // namespace kestrelbay
