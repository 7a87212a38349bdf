#pragma once

#include <optional>

#include <QString>

namespace kestrelbay {

/// Whether this program is started when the user logs in. Main thread.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    /// What the system is going to do. Asked afresh at every call, since users
    /// also decide it elsewhere.
    [[nodiscard]] virtual bool isEnabled() const = 0;

    /// Holds from the next login on; harmless when it is so already. When the system
    /// refuses, the reason, as half a sentence for the user; then nothing was changed.
    [[nodiscard]] virtual std::optional<QString> setEnabled(bool enabled) = 0;
};

}  // namespace kestrelbay
