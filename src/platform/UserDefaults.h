#pragma once

#include <optional>

#include <QString>

namespace kestrelbay {

/// The user's settings: flat keys with a text or a Boolean. Reads come from any
/// thread and see the newest write; writes come from the main thread. A value of
/// another type than asked for reads as absent. A write that fails is lost
/// without a word and leaves the other settings as they were.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    [[nodiscard]] virtual std::optional<QString> string(const QString &key) const = 0;
    [[nodiscard]] virtual std::optional<bool> boolean(const QString &key) const = 0;
    virtual void setString(const QString &key, const QString &value) = 0;
    virtual void setBoolean(const QString &key, bool value) = 0;
};

}  // namespace kestrelbay
