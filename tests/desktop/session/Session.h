#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include "desktop/session/HomeFolder.h"
#include "desktop/session/OrdinaryUser.h"
#include "desktop/session/Processes.h"

namespace kestrelbay::desktop {

/// A whole desktop session of its own. Everything in it ends with it, programs started by
/// hotkeys included.
class Session {
public:
    virtual ~Session() = default;

    [[nodiscard]] virtual const QProcessEnvironment &environment() const = 0;
    [[nodiscard]] virtual const HomeFolder &home() const = 0;
    [[nodiscard]] virtual const Processes &processes() const = 0;
    /// What starts a program as the session's user.
    [[nodiscard]] virtual Command command(const QString &program,
                                          const QStringList &arguments) const = 0;
    /// Starts an ordinary program, which runs until the session ends.
    virtual void start(const QString &program, const QStringList &arguments = {}) = 0;
    /// Writes a file of the session's user. Throws std::runtime_error.
    virtual void write(const QString &path, const QByteArray &contents) = 0;
    /// A picture of the whole screen.
    virtual void screenshot(const QString &path) = 0;

protected:
    Session() = default;
    Session(const Session &) = default;
    Session &operator=(const Session &) = default;
};

}  // namespace kestrelbay::desktop
