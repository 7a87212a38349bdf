#pragma once

#include <mutex>

#include <QDBusConnection>
#include <QString>
#include <QVariantList>

#include "support/bus/FakeBusObject.h"

namespace kestrelbay::desktop {

class WaylandSession;

/// Has KWin carry out scripts.
class KWinScripts {
public:
    /// Throws std::runtime_error where there is no KWin.
    explicit KWinScripts(WaylandSession &session);

    /// The body of a function; what it returns, as text. Throws std::runtime_error when KWin does
    /// not answer.
    QString run(const QString &body);
    /// A script that stays. Throws std::runtime_error when KWin does not run it.
    void start(const QString &name, const QString &text);

private:
    /// Throws std::runtime_error when KWin does not do it.
    void tellScripting(const char *member, const QVariantList &arguments = {});

    WaylandSession &session_;
    QDBusConnection bus_;
    std::mutex mutex_;
    /// Of the script that runs, told on another thread.
    QString result_;
    bool isTold_ = false;
    testing::FakeBusObject listener_;
};

}  // namespace kestrelbay::desktop
