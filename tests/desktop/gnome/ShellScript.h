#pragma once

#include <utility>

#include <QDBusConnection>
#include <QJsonValue>
#include <QString>

namespace kestrelbay::desktop {

/// Runs JavaScript within a GNOME Shell that was started with --unsafe-mode, where it lets anybody.
class ShellScript {
public:
    explicit ShellScript(QDBusConnection bus) : bus_(std::move(bus)) {}

    /// What the expression is; `undefined` while the Shell does not answer, or finds fault with it.
    [[nodiscard]] QJsonValue evaluate(const QString &expression) const;
    /// Throws std::runtime_error when the Shell cannot.
    void run(const QString &statement) const;

private:
    const QDBusConnection bus_;
};

}  // namespace kestrelbay::desktop
