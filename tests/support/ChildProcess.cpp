#include "support/ChildProcess.h"

namespace kestrelbay::testing {

namespace {
constexpr int kStartMilliseconds = 10'000;
constexpr int kGraceMilliseconds = 3'000;
}  // namespace

ChildProcess::ChildProcess(const QString &program, const QStringList &arguments,
                           const QProcessEnvironment &environment, const QString &outputFile)
    : process_(std::make_unique<QProcess>()) {
    process_->setProcessEnvironment(environment);
    process_->setProcessChannelMode(QProcess::MergedChannels);
    process_->setStandardInputFile(QProcess::nullDevice());
    if (!outputFile.isEmpty())
        process_->setStandardOutputFile(outputFile);
    process_->start(program, arguments);
    process_->waitForStarted(kStartMilliseconds);
}

ChildProcess::~ChildProcess() {
    if (process_->state() == QProcess::NotRunning)
        return;
    process_->terminate();
    if (!process_->waitForFinished(kGraceMilliseconds)) {
        process_->kill();
        process_->waitForFinished(kGraceMilliseconds);
    }
}

bool ChildProcess::started() const {
    return process_->error() != QProcess::FailedToStart;
}

bool ChildProcess::isRunning() {
    process_->waitForFinished(0);
    return process_->state() != QProcess::NotRunning;
}

QByteArray ChildProcess::output() {
    process_->waitForReadyRead(0);
    output_ += process_->readAll();
    return output_;
}

int ChildProcess::exitCode() {
    if (isRunning() || process_->exitStatus() != QProcess::NormalExit)
        return -1;
    return process_->exitCode();
}

bool ChildProcess::waitForExit(std::chrono::milliseconds timeout) {
    return !isRunning() || process_->waitForFinished(static_cast<int>(timeout.count()));
}

void ChildProcess::terminate() {
    process_->terminate();
}

void ChildProcess::kill() {
    process_->kill();
}

}  // namespace kestrelbay::testing
