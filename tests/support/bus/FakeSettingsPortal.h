#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>

#include <QColor>
#include <QString>
#include <QVariantMap>

#include "support/bus/FakeBusObject.h"

namespace kestrelbay::testing {

/// The settings portal of a desktop, with what it says of the appearance. Needs a
/// QCoreApplication.
class FakeSettingsPortal {
public:
    enum class Manner {
        Current,
        WithoutColorScheme,
        AnswersText,
        KeepsSilent,
    };
    // The values of the setting.
    static constexpr std::uint32_t kNoPreference = 0;
    static constexpr std::uint32_t kPreferDark = 1;
    static constexpr std::uint32_t kPreferLight = 2;

    explicit FakeSettingsPortal(const QString &busAddress, std::uint32_t colorScheme,
                                Manner manner = Manner::Current);

    // Each tells everybody, whether it is another one or not.
    void setColorScheme(std::uint32_t colorScheme);
    void setAccentColor(const QColor &color);
    /// As desktops do that have none: outside of all colours.
    void takeAccentColorBack();
    void setContrastHigh(bool isHigh);
    /// Tells of some other setting.
    void tellOther(const QString &space, const QString &key, const QVariant &value);
    /// Calls that came.
    [[nodiscard]] int callCount() const { return callCount_; }

private:
    [[nodiscard]] std::optional<QDBusMessage> answer(const QDBusMessage &call);
    void set(const QString &key, const QVariant &value);

    const Manner manner_;
    /// Read on the object's thread.
    std::mutex mutex_;
    QVariantMap settings_;
    std::atomic<int> callCount_ = 0;
    // Last: it answers as soon as it is there.
    FakeBusObject object_;
};

}  // namespace kestrelbay::testing
