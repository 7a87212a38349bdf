#pragma once

#include <sys/types.h>

#include <QByteArray>
#include <QString>

namespace kestrelbay::sway {

/// Unbinds our keys when this program dies without having done so: in sway a binding stays until
/// somebody takes it back. A shell that waits at a socket for the program's end and then runs
/// swaymsg, since nothing within a process outlives each way of killing it.
class BindingsGuard {
public:
    /// The claim, which the shell inherits, is held until it has unbound the keys, so that it never
    /// unbinds those of the next instance.
    BindingsGuard(const QString &socketPath, int claim);
    /// The keys are not bound any more.
    ~BindingsGuard();
    BindingsGuard(const BindingsGuard &) = delete;
    BindingsGuard &operator=(const BindingsGuard &) = delete;

    /// What is to be run at the end, in the place of what was before. To be told before keys are
    /// bound. Nothing happens where no shell could be started.
    void setCommands(const QByteArray &commands) const;

private:
    int socket_ = -1;
    pid_t shell_ = -1;
};

}  // namespace kestrelbay::sway
