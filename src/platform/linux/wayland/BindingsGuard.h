#pragma once

#include <sys/types.h>

#include <QByteArray>

namespace kestrelbay::wayland {

/// Unbinds our keys when this program dies without having done so, where a binding stays until
/// somebody takes it back. A shell that waits at a socket for the program's end and then runs
/// something, since nothing within a process outlives each way of killing it.
class BindingsGuard {
public:
    /// `atEnd` is for the shell, which finds the keys as $keys and the place as $1. The claim,
    /// which it inherits, is held until it has unbound the keys, so that it never unbinds those of
    /// the next instance.
    BindingsGuard(const QByteArray &atEnd, const QByteArray &place, int claim);
    /// The keys are not bound any more.
    ~BindingsGuard();
    BindingsGuard(const BindingsGuard &) = delete;
    BindingsGuard &operator=(const BindingsGuard &) = delete;

    /// What is bound, a line without an end, in the place of what was before; empty for nothing. To
    /// be told before keys are bound. Nothing happens where no shell could be started.
    void setKeys(const QByteArray &keys) const;

private:
    int socket_ = -1;
    pid_t shell_ = -1;
};

}  // namespace kestrelbay::wayland
