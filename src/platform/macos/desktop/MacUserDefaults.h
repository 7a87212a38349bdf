#pragma once

#include "platform/UserDefaults.h"

namespace kestrelbay {

/// The standard user defaults of the bundle.
class MacUserDefaults final : public UserDefaults {
public:
    [[nodiscard]] std::optional<QString> string(const QString &key) const override;
    /// Numbers, also 0 and 1, are of another type.
    [[nodiscard]] std::optional<bool> boolean(const QString &key) const override;
    void setString(const QString &key, const QString &value) override;
    void setBoolean(const QString &key, bool value) override;
};

}  // namespace kestrelbay
