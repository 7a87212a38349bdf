#pragma once

#include <mutex>
#include <optional>
#include <set>
#include <utility>

#include <QDBusMessage>
#include <QString>
#include <QStringList>
#include <QVariant>

#include "support/bus/FakeBusObject.h"

namespace kestrelbay::testing {

/// What the extension of GNOME Shell is to the program. Any thread.
class FakeExtension {
public:
    explicit FakeExtension(QString busAddress) : busAddress_(std::move(busAddress)) { enable(); }

    void enable();
    void disable() { object_.reset(); }

    /// Which it gives to somebody else.
    void refuse(const QStringList &accelerators);
    /// Another program is its client, as it says to whoever asks.
    void serveAnother();
    /// What it answers when it is asked for windows; nothing while it is invalid.
    void setWindows(const QVariant &windows);

    void press(const QString &accelerator);
    void tell(const QString &signal);

    [[nodiscard]] QStringList bound();
    /// All calls but for hotkeys, as "Method 1 2 3".
    [[nodiscard]] QStringList calls();
    [[nodiscard]] int hotkeyCalls();

private:
    [[nodiscard]] std::optional<QDBusMessage> answer(const QDBusMessage &call);

    const QString busAddress_;
    std::mutex mutex_;
    QStringList refused_;
    QStringList bound_;
    QStringList calls_;
    QVariant windows_;
    int hotkeyCalls_ = 0;
    bool servesAnother_ = false;
    std::optional<FakeBusObject> object_;
};

}  // namespace kestrelbay::testing
