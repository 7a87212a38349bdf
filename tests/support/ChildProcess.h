#pragma once

#include <chrono>
#include <memory>

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace kestrelbay::testing {

/// A child process that ends with its owner: asked to terminate, then killed.
/// Needs no event loop.
class ChildProcess {
public:
    /// Starts it at once; stdout and stderr can be read, or go to a file.
    ChildProcess(const QString &program, const QStringList &arguments,
                 const QProcessEnvironment &environment, const QString &outputFile = {});
    ~ChildProcess();
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    [[nodiscard]] bool started() const;
    [[nodiscard]] bool isRunning();
    [[nodiscard]] qint64 processId() const { return process_->processId(); }
    /// Everything written so far, both streams together.
    [[nodiscard]] QByteArray output();
    /// -1 while it runs or when a signal ended it.
    [[nodiscard]] int exitCode();
    [[nodiscard]] bool waitForExit(std::chrono::milliseconds timeout = std::chrono::seconds(10));

    void terminate();
    void kill();

private:
    std::unique_ptr<QProcess> process_;
    QByteArray output_;
};

}  // namespace kestrelbay::testing
