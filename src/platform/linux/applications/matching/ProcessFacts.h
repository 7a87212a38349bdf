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
    QString executablePath;
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
/// Names of the program in /proc/<pid>/cmdline: its own, or its script's when it
/// is an interpreter.
[[nodiscard]] QStringList executableNamesOfCommandLine(const QByteArray &commandLine);

}  // namespace kestrelbay
