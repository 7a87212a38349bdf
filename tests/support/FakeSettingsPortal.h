#pragma once

#include <atomic>
#include <cstdint>

#include <QString>

#include "support/FakeBusObject.h"

namespace kestrelbay::testing {

/// The settings portal of a desktop, with one setting. Needs a QCoreApplication.
class FakeSettingsPortal {
public:
    enum class Manner {
        Current,
        /// Knows only the older method, Read.
        Old,
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

    /// Tells everybody, whether it is another one or not.
    void setColorScheme(std::uint32_t colorScheme);
    /// Tells of some other setting.
    void tellOther(const QString &space, const QString &key, const QVariant &value);
    /// Calls that came.
    [[nodiscard]] int callCount() const { return callCount_; }

private:
    [[nodiscard]] std::optional<QDBusMessage> answer(const QDBusMessage &call);

    const Manner manner_;
    std::atomic<std::uint32_t> colorScheme_;
    std::atomic<int> callCount_ = 0;
    // Last: it answers as soon as it is there.
    FakeBusObject object_;
};

}  // namespace kestrelbay::testing
