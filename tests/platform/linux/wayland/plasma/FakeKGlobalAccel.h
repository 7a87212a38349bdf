#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <set>

#include <QDBusMessage>
#include <QString>
#include <QStringList>

#include "support/bus/FakeBusObject.h"

namespace kestrelbay::testing {

/// Plasma's service of global shortcuts, as far as it binds keys and tells of them.
class FakeKGlobalAccel {
public:
    explicit FakeKGlobalAccel(const QString &busAddress);

    /// The keys that are bound, as "Meta+T", in the order of the alphabet.
    [[nodiscard]] QStringList bound();
    [[nodiscard]] bool isBlocked();
    /// How often keys were asked for.
    [[nodiscard]] int questionCount();
    /// Another program's from now on, or free.
    void setTaken(const QString &key, bool isTaken);
    /// As a user does in the settings: our program's action loses its keys.
    void takeAway(const QString &key);
    /// As a user does in the settings: an action of another program has other keys.
    void changeAnother();
    /// There was such an action, of a program that is no more.
    void remember(const QString &action);
    [[nodiscard]] QStringList actions();

    void press(const QString &key);
    void release(const QString &key);

private:
    [[nodiscard]] std::optional<QDBusMessage> answer(const QDBusMessage &call);
    void tell(const QString &member, const QString &key);

    std::mutex mutex_;
    /// By the name of the action.
    std::map<QString, QStringList> bound_;
    std::set<QString> taken_;
    bool isBlocked_ = false;
    int questionCount_ = 0;
    FakeBusObject object_;
};

}  // namespace kestrelbay::testing
