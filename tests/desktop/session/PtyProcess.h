#pragma once

#include <chrono>
#include <optional>

#include <sys/types.h>

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace kestrelbay::desktop {

/// A program that finds a terminal at its standard streams, as when a user starts
/// it from a shell. Killed with its owner.
class PtyProcess {
public:
    /// Throws std::runtime_error when it cannot be started.
    PtyProcess(const QString &program, const QStringList &arguments,
               const QProcessEnvironment &environment);
    ~PtyProcess();
    PtyProcess(const PtyProcess &) = delete;
    PtyProcess &operator=(const PtyProcess &) = delete;

    [[nodiscard]] pid_t processId() const { return processId_; }
    [[nodiscard]] std::chrono::steady_clock::time_point startedAt() const { return startedAt_; }
    [[nodiscard]] bool isRunning();
    /// What it has written to its terminal so far, as lines.
    [[nodiscard]] QStringList lines();
    /// The first line that holds all of the words, from line number `from` on.
    [[nodiscard]] std::optional<QString> line(const QStringList &words, qsizetype from = 0);

    void sendSignal(int number);
    /// As "exit 0", "signal 9" or "running".
    [[nodiscard]] QString ending();
    /// No value while it runs or when a signal ended it.
    [[nodiscard]] std::optional<int> exitCode();

private:
    void readTerminal();

    int terminal_ = -1;
    pid_t processId_ = -1;
    std::optional<int> waitStatus_;
    std::chrono::steady_clock::time_point startedAt_;
    QByteArray output_;
};

}  // namespace kestrelbay::desktop
