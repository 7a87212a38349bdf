#include "platform/linux/applications/matching/Terminals.h"

#include <algorithm>
#include <array>

#include <QStandardPaths>
#include <QUrl>

namespace kestrelbay {

namespace {

constexpr QLatin1String kRolePrefix("kestrelbay-command:");

enum class Windows {
    /// Each start has a process of its own, with the option if there is one.
    OfOwnProcess,
    /// All are of one process, but each can be given a role.
    WithRole,
    /// All are of one process, and alike.
    Alike,
};

struct Terminal {
    QLatin1String program;
    /// What is behind this is the command.
    QLatin1String run;
    Windows windows;
    QLatin1String option = {};
    /// The executable whose windows they are, if not the program.
    QLatin1String server = {};
};

/// What the user or the distribution has chosen comes first, then in the order of GIO those
/// whose windows can be told apart.
constexpr std::array kTerminals{
    Terminal{QLatin1String("xdg-terminal-exec"), {}, Windows::OfOwnProcess},
    Terminal{QLatin1String("gnome-terminal"), QLatin1String("--"), Windows::WithRole,
             QLatin1String("--role="), QLatin1String("gnome-terminal-server")},
    Terminal{QLatin1String("mate-terminal"), QLatin1String("-x"), Windows::WithRole,
             QLatin1String("--role=")},
    Terminal{QLatin1String("xfce4-terminal"), QLatin1String("-x"), Windows::WithRole,
             QLatin1String("--role=")},
    Terminal{QLatin1String("tilix"), QLatin1String("-e"), Windows::OfOwnProcess,
             QLatin1String("--new-process")},
    Terminal{QLatin1String("konsole"), QLatin1String("-e"), Windows::OfOwnProcess,
             QLatin1String("--separate")},
    Terminal{QLatin1String("lxterminal"), QLatin1String("-e"), Windows::OfOwnProcess,
             QLatin1String("--no-remote")},
    Terminal{QLatin1String("kgx"), QLatin1String("-e"), Windows::Alike},
    Terminal{QLatin1String("rxvt"), QLatin1String("-e"), Windows::OfOwnProcess},
    Terminal{QLatin1String("xterm"), QLatin1String("-e"), Windows::OfOwnProcess},
    Terminal{QLatin1String("x-terminal-emulator"), QLatin1String("-e"), Windows::OfOwnProcess},
};

}  // namespace

std::optional<QStringList> terminalPrefix(const QString &entryPath) {
    const auto *const terminal = std::ranges::find_if(kTerminals, [](const Terminal &candidate) {
        return !QStandardPaths::findExecutable(candidate.program).isEmpty();
    });
    if (terminal == kTerminals.end())
        return std::nullopt;
    QStringList words{terminal->program};
    if (terminal->windows == Windows::WithRole)
        words.append(terminal->option + kRolePrefix +
                     QString::fromLatin1(QUrl::toPercentEncoding(entryPath, "/")));
    else if (!terminal->option.isEmpty())
        words.append(terminal->option);
    if (!terminal->run.isEmpty())
        words.append(terminal->run);
    return words;
}

QString entryOfTerminalRole(const QString &windowRole) {
    return windowRole.startsWith(kRolePrefix)
               ? QUrl::fromPercentEncoding(windowRole.mid(kRolePrefix.size()).toUtf8())
               : QString();
}

bool isSharedTerminal(const QString &executable, const QStringList &words) {
    const QString name = executable.section(u'/', -1);
    return std::ranges::any_of(kTerminals, [&](const Terminal &terminal) {
        if (name != (terminal.server.isEmpty() ? terminal.program : terminal.server))
            return false;
        return terminal.windows != Windows::OfOwnProcess ||
               (!terminal.option.isEmpty() && !words.contains(terminal.option));
    });
}

}  // namespace kestrelbay
