#include "platform/linux/wayland/BindingsGuard.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace kestrelbay::wayland {

namespace {

/// The last line counts; there is no more when the other end has gone.
constexpr const char *kWait =
    "while read -r line; do keys=$line; done\n[ -n \"$keys\" ] || exit 0\n";

constexpr int kInheritedClaim = 3;

/// -1 when there is no shell.
pid_t startShell(const QByteArray &script, int input, int claim, const QByteArray &place) {
    posix_spawn_file_actions_t files{};
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, input, STDIN_FILENO);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    if (claim >= 0)
        posix_spawn_file_actions_adddup2(&files, claim, kInheritedClaim);

    posix_spawnattr_t attributes{};
    posix_spawnattr_init(&attributes);
    // What ends the program's group, as a terminal does, is not to end this as well.
    posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    sigset_t signals{};
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    sigfillset(&signals);
    posix_spawnattr_setsigdefault(&attributes, &signals);

    std::array<QByteArray, 5> arguments{"sh", "-c", script, "sh", place};
    std::array<char *, arguments.size() + 1> pointers{};
    for (std::size_t i = 0; i < arguments.size(); ++i)
        pointers[i] = arguments[i].data();
    pid_t shell = -1;
    if (::posix_spawn(&shell, "/bin/sh", &files, &attributes, pointers.data(), environ) != 0)
        shell = -1;
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return shell;
}

}  // namespace

BindingsGuard::BindingsGuard(const QByteArray &atEnd, const QByteArray &place, int claim) {
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return;
    shell_ = startShell(kWait + atEnd, ends[1], claim, place);
    socket_ = ends[0];
    ::close(ends[1]);
}

BindingsGuard::~BindingsGuard() {
    if (socket_ < 0)
        return;
    setKeys({});
    ::close(socket_);
    if (shell_ > 0)
        ::waitpid(shell_, nullptr, 0);
}

void BindingsGuard::setKeys(const QByteArray &keys) const {
    const QByteArray line = keys + '\n';
    // Far less than the socket holds.
    static_cast<void>(::send(socket_, line.constData(), static_cast<std::size_t>(line.size()),
                             MSG_NOSIGNAL | MSG_DONTWAIT));
}

}  // namespace kestrelbay::wayland
