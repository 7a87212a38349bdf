#pragma once

#include <functional>

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

namespace kestrelbay::plasma {

/// Which layout of the keymap is in use, as Plasma tells on the session bus. Main thread.
class LayoutInUse final : public QObject {
    Q_OBJECT

public:
    /// Asks, without waiting for the answer. `changed` is called when get() is another one; it may
    /// destroy this.
    LayoutInUse(QDBusConnection bus, std::function<void()> changed);

    /// The first one where there is but one, or nobody tells.
    [[nodiscard]] uint get() const { return layout_; }

private Q_SLOTS:
    void take(uint layout);

private:
    void ask();

    const std::function<void()> changed_;
    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
    uint layout_ = 0;
};

}  // namespace kestrelbay::plasma
