#pragma once

#include <cstdint>

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace kestrelbay {

/// What the kernel and the sandboxes say of one process.
struct ProcessFacts {
    QString flatpakId;
    QString snapName;
    /// The application that an `app-*.scope` (or service) of systemd is named
    /// after, in every reading that the name allows.
    QStringList scopeIds;
    /// The entry file that this very process was launched with.
    QString launchedEntryPath;
    /// Empty for interpreters and wrappers.
    QString executablePath;
    /// What it runs if it is an interpreter, as interpretedProgram() names it.
    QString interpretedProgram;
    /// The AppImage that its program comes out of.
    QString appImagePath;
    /// The scripts that wait for it, the nearest first: shells run them that do nothing else.
    QStringList callingScripts;
    /// The entry file that the process was launched with to whose session this one belongs.
    QString sessionsEntryPath;
    /// It is a terminal that shows the windows of all commands.
    bool isSharedTerminal = false;
    /// What the process calls itself; interpreters and wrappers are left out.
    QStringList executableNames;

    friend bool operator==(const ProcessFacts &, const ProcessFacts &) = default;
};

/// Asks /proc. What can't be read (the process is gone, or another user's) stays
/// empty. Any thread.
[[nodiscard]] ProcessFacts readProcessFacts(std::int64_t pid);

// The parts that read foreign text.

/// Application ids by the systemd unit in the text of /proc/<pid>/cgroup.
[[nodiscard]] QStringList scopeIdsOfCgroup(const QByteArray &cgroup);
[[nodiscard]] QString snapNameOfCgroup(const QByteArray &cgroup);
/// The name in a .flatpak-info file.
[[nodiscard]] QString flatpakIdOfInfo(const QByteArray &info);
/// The entry file named by the environment of this very process.
[[nodiscard]] QString launchedEntryOfEnvironment(const QByteArray &environment, std::int64_t pid);
/// The AppImage that the environment names, if one of the programs is in it. A program of
/// the system that it starts has the environment too.
[[nodiscard]] QString appImageOfEnvironment(const QByteArray &environment,
                                            const QStringList &programs);
/// The words of /proc/<pid>/cmdline.
[[nodiscard]] QStringList wordsOfCommandLine(const QByteArray &commandLine);
/// Names of the program in /proc/<pid>/cmdline: its own, or its script's when it
/// is an interpreter. Scripts with a suffix are left out, as too many are called main.py.
[[nodiscard]] QStringList executableNamesOfCommandLine(const QByteArray &commandLine);

}  // namespace kestrelbay
