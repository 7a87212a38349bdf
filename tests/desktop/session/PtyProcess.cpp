#include "desktop/session/PtyProcess.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrelbay::desktop {

namespace {

std::vector<char *> pointers(std::vector<QByteArray> &texts) {
    std::vector<char *> result;
    for (QByteArray &text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

class SpawnActions {
public:
    explicit SpawnActions(const char *terminal) {
        ::posix_spawn_file_actions_init(&actions_);
        ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, terminal, O_RDWR | O_NOCTTY, 0);
        ::posix_spawn_file_actions_adddup2(&actions_, STDIN_FILENO, STDOUT_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions_, STDIN_FILENO, STDERR_FILENO);
    }
    ~SpawnActions() { ::posix_spawn_file_actions_destroy(&actions_); }
    SpawnActions(const SpawnActions &) = delete;
    SpawnActions &operator=(const SpawnActions &) = delete;

    [[nodiscard]] const posix_spawn_file_actions_t *get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

}  // namespace

PtyProcess::PtyProcess(const QString &program, const QStringList &arguments,
                       const QProcessEnvironment &environment)
    : terminal_(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK)) {
    if (terminal_ < 0 || ::grantpt(terminal_) != 0 || ::unlockpt(terminal_) != 0)
        throw std::runtime_error("no pseudo terminal");
    std::vector<QByteArray> argumentTexts{program.toLocal8Bit()};
    for (const QString &argument : arguments)
        argumentTexts.push_back(argument.toLocal8Bit());
    std::vector<QByteArray> variableTexts;
    for (const QString &variable : environment.toStringList())
        variableTexts.push_back(variable.toLocal8Bit());
    const SpawnActions actions(::ptsname(terminal_));
    startedAt_ = std::chrono::steady_clock::now();
    if (::posix_spawnp(&processId_, argumentTexts.front().constData(), actions.get(), nullptr,
                       pointers(argumentTexts).data(), pointers(variableTexts).data()) != 0) {
        ::close(terminal_);
        throw std::runtime_error("cannot start " + program.toStdString());
    }
}

PtyProcess::~PtyProcess() {
    if (isRunning()) {
        ::kill(processId_, SIGKILL);
        ::waitpid(processId_, nullptr, 0);
    }
    ::close(terminal_);
}

void PtyProcess::readTerminal() {
    char buffer[4096];
    for (ssize_t n = 0; (n = ::read(terminal_, buffer, sizeof buffer)) > 0;)
        output_.append(buffer, n);
}

bool PtyProcess::isRunning() {
    // One that has much to say would otherwise wait for its reader and never end.
    readTerminal();
    int status = 0;
    if (!waitStatus_ && ::waitpid(processId_, &status, WNOHANG) == processId_)
        waitStatus_ = status;
    return !waitStatus_;
}

QStringList PtyProcess::lines() {
    readTerminal();
    QStringList lines = QString::fromUtf8(output_).remove(u'\r').split(u'\n');
    lines.removeAll(QString());
    return lines;
}

std::optional<QString> PtyProcess::line(const QStringList &words, qsizetype from) {
    const QStringList all = lines().mid(from);
    const auto found = std::ranges::find_if(all, [&](const QString &line) {
        return std::ranges::all_of(
            words, [&](const QString &word) { return line.contains(word, Qt::CaseInsensitive); });
    });
    return found == all.end() ? std::nullopt : std::optional(*found);
}

void PtyProcess::sendSignal(int number) {
    if (isRunning())
        ::kill(processId_, number);
}

QString PtyProcess::ending() {
    if (isRunning())
        return QStringLiteral("running");
    return WIFEXITED(*waitStatus_) ? QStringLiteral("exit %1").arg(WEXITSTATUS(*waitStatus_))
                                   : QStringLiteral("signal %1").arg(WTERMSIG(*waitStatus_));
}

std::optional<int> PtyProcess::exitCode() {
    if (isRunning() || !WIFEXITED(*waitStatus_))
        return std::nullopt;
    return WEXITSTATUS(*waitStatus_);
}

}  // namespace kestrelbay::desktop
