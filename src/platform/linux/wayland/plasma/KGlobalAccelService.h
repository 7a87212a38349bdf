#pragma once

#include <functional>
#include <vector>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

#include "platform/linux/bus/OwnBusConnection.h"

namespace kestrelbay::plasma {

/// Plasma's service of global shortcuts on the session bus, as far as one program's are concerned.
/// They are its actions by name, each with the keys that KeyNumbers.h makes. Questions wait for
/// nobody unless said. A service that is late counts as one that refuses. Main thread.
///
/// Actions stay bound when the program ends, however it does.
class KGlobalAccelService final : public QObject {
    Q_OBJECT

public:
    /// Whose they are, as Plasma lists it. No ".desktop" behind it: Plasma would start a program.
    static constexpr const char *kComponent = "kestrelbay";

    /// Each may destroy the service.
    struct Handlers {
        /// A key was pressed, and while it is held, again and again.
        std::function<void(const QString &action)> pressed;
        /// It is up, or another key has changed meanwhile.
        std::function<void(const QString &action)> released;
        /// The user has given an action other keys, in the settings of Plasma, or none.
        std::function<void(const QString &action)> changed;
        /// The same with an action of another program.
        std::function<void()> anotherChanged;
        /// The service has begun anew, and knows of no action.
        std::function<void()> restarted;
    };

    explicit KGlobalAccelService(Handlers handlers);

    [[nodiscard]] QDBusConnection &bus() { return bus_.get(); }
    /// Waits for the bus to answer, but for half a second at most.
    [[nodiscard]] bool isThere();

    /// In the place of the keys that the action had. The answer is whether it has all of these.
    void bind(const QString &action, const QString &description, const std::vector<int> &keys,
              const std::function<void(bool)> &answered);
    /// Has it all of these?
    void askWhether(const QString &action, const std::vector<int> &keys,
                    const std::function<void(bool)> &answered);
    void unbind(const QString &action);
    /// Unbinds actions of a program that is no more.
    void unbindAllBut(const std::function<bool(const QString &action)> &isWanted);
    /// While on, no key is bound, whoever it belongs to.
    void setBlocked(bool blocked);
    /// Returns when all that was asked for has been done, after half a second at the latest.
    void finish();

private Q_SLOTS:
    void takePressed(const QString &component, const QString &action, qlonglong time);
    void takeReleased(const QString &component, const QString &action, qlonglong time);
    void takeChanged(const QStringList &action);

private:
    void call(const QDBusMessage &message,
              const std::function<void(const QDBusMessage &reply)> &answered);

    const Handlers handlers_;
    OwnBusConnection bus_;
    QDBusServiceWatcher watcher_;
};

}  // namespace kestrelbay::plasma
