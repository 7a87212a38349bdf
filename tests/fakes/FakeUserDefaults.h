#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <variant>

#include "fakes/Journal.h"
#include "platform/UserDefaults.h"

namespace kestrelbay {

class FakeUserDefaults final : public UserDefaults {
public:
    [[nodiscard]] std::optional<QString> string(const QString &key) const override {
        return value<QString>(key);
    }
    [[nodiscard]] std::optional<bool> boolean(const QString &key) const override {
        return value<bool>(key);
    }
    void setString(const QString &key, const QString &value) override {
        writes_.add(key + u'=' + value);
        store(key, value);
    }
    void setBoolean(const QString &key, bool value) override {
        writes_.add(key + (value ? QStringLiteral("=true") : QStringLiteral("=false")));
        store(key, value);
    }

    // For the test:
    /// Is anything stored under the key, of whatever type?
    [[nodiscard]] bool contains(const QString &key) const {
        const std::scoped_lock lock(mutex_);
        return values_.contains(key);
    }
    /// A value of a type that nobody asks for, as a foreign hand may have written.
    void storeNumber(const QString &key, double value) { store(key, value); }
    void erase(const QString &key) {
        const std::scoped_lock lock(mutex_);
        values_.erase(key);
    }
    /// "key=value" for every write since the last call.
    QStringList takeWrites() { return writes_.take(); }

private:
    using Value = std::variant<QString, bool, double>;

    template <typename T>
    [[nodiscard]] std::optional<T> value(const QString &key) const {
        const std::scoped_lock lock(mutex_);
        const auto found = values_.find(key);
        if (found == values_.end())
            return std::nullopt;
        const T *const typed = std::get_if<T>(&found->second);
        return typed ? std::optional(*typed) : std::nullopt;
    }

    void store(const QString &key, const Value &value) {
        const std::scoped_lock lock(mutex_);
        values_.insert_or_assign(key, value);
    }

    mutable std::mutex mutex_;
    std::map<QString, Value> values_;
    Journal writes_;
};

}  // namespace kestrelbay
