#pragma once

#include <map>
#include <optional>
#include <vector>

#include <sys/types.h>

#include <QString>
#include <QStringList>

namespace kestrelbay::desktop {

/// The processes that belong to one home folder, whoever started them: that is how
/// the programs launched by a hotkey are found again, and ended.
class Processes {
public:
    explicit Processes(QString home) : home_(std::move(home)) {}

    [[nodiscard]] std::vector<pid_t> all() const;
    /// Those whose command line holds this argument.
    [[nodiscard]] std::vector<pid_t> withArgument(const QString &argument) const;
    /// Those whose program file has this name.
    [[nodiscard]] std::vector<pid_t> named(const QString &name) const;
    /// Ends them without asking, stopped ones too.
    void killAll() const;

    /// As the kernel has it, argument by argument.
    [[nodiscard]] static QStringList commandLine(pid_t process);
    /// Voluntary and involuntary context switches of all its threads: every
    /// wake-up counts as one. No value when there is no such process.
    [[nodiscard]] static std::optional<qint64> wakeUps(pid_t process);
    /// The same, thread by thread.
    [[nodiscard]] static std::map<pid_t, qint64> wakeUpsOfThreads(pid_t process);
    /// How many there were since then. A thread that has ended woke up for that.
    [[nodiscard]] static qint64 wakeUpsSince(const std::map<pid_t, qint64> &before, pid_t process);
    /// Memory that no other process shares, in KiB.
    [[nodiscard]] static std::optional<qint64> privateMemory(pid_t process);

private:
    QString home_;
};

}  // namespace kestrelbay::desktop
