#include "desktop/session/Processes.h"

#include <algorithm>
#include <csignal>

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace kestrelbay::desktop {

namespace {

QString procFile(pid_t process, const char *name) {
    return QStringLiteral("/proc/%1/%2").arg(process).arg(QLatin1String(name));
}

QByteArray contents(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The sum of the numbers on the lines that begin with one of the keys.
qint64 sumOf(const QByteArray &text, std::initializer_list<QByteArray> keys) {
    qint64 sum = 0;
    for (const QByteArray &line : text.split('\n')) {
        for (const QByteArray &key : keys) {
            if (line.startsWith(key + ':'))
                sum += line.mid(key.size() + 1).simplified().split(' ').first().toLongLong();
        }
    }
    return sum;
}

pid_t parentOf(pid_t process) {
    return static_cast<pid_t>(sumOf(contents(procFile(process, "status")), {"PPid"}));
}

template <class Condition>
std::vector<pid_t> only(std::vector<pid_t> processes, Condition condition) {
    std::erase_if(processes, [&](pid_t process) { return !condition(process); });
    // A child is a copy of its parent until it becomes a program of its own.
    const std::vector<pid_t> alike = processes;
    std::erase_if(processes, [&](pid_t process) {
        return std::ranges::find(alike, parentOf(process)) != alike.end();
    });
    return processes;
}

}  // namespace

std::vector<pid_t> Processes::all() const {
    const QByteArray mark = "HOME=" + QFile::encodeName(home_);
    std::vector<pid_t> found;
    for (const QString &name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        bool isNumber = false;
        const pid_t process = name.toInt(&isNumber);
        if (isNumber && contents(procFile(process, "environ")).split('\0').contains(mark))
            found.push_back(process);
    }
    return found;
}

std::vector<pid_t> Processes::withArgument(const QString &argument) const {
    return only(all(), [&](pid_t p) { return commandLine(p).contains(argument); });
}

std::vector<pid_t> Processes::named(const QString &name) const {
    return only(all(), [&](pid_t p) {
        return QFileInfo(QFile::symLinkTarget(procFile(p, "exe"))).fileName() == name;
    });
}

void Processes::killAll() const {
    // A process may start another one while we look, so look until there is none.
    for (auto left = all(); !left.empty(); left = all()) {
        for (const pid_t process : left)
            ::kill(process, SIGKILL);
    }
}

QStringList Processes::commandLine(pid_t process) {
    QByteArray text = contents(procFile(process, "cmdline"));
    if (text.endsWith('\0'))
        text.chop(1);
    return text.isEmpty() ? QStringList() : QString::fromUtf8(text).split(QChar(u'\0'));
}

std::map<pid_t, qint64> Processes::wakeUpsOfThreads(pid_t process) {
    std::map<pid_t, qint64> wakeUps;
    const QStringList threads =
        QDir(procFile(process, "task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &thread : threads) {
        const QString status = procFile(process, "task/") + thread + QStringLiteral("/status");
        wakeUps[thread.toInt()] =
            sumOf(contents(status), {"voluntary_ctxt_switches", "nonvoluntary_ctxt_switches"});
    }
    return wakeUps;
}

std::optional<qint64> Processes::wakeUps(pid_t process) {
    const auto threads = wakeUpsOfThreads(process);
    qint64 sum = 0;
    for (const auto &[thread, wakeUps] : threads)
        sum += wakeUps;
    return threads.empty() ? std::nullopt : std::optional(sum);
}

qint64 Processes::wakeUpsSince(const std::map<pid_t, qint64> &before, pid_t process) {
    std::map<pid_t, qint64> now = wakeUpsOfThreads(process);
    qint64 sum = 0;
    for (const auto &[thread, wakeUps] : before)
        if (const auto left = now.extract(thread); !left.empty())
            sum += left.mapped() - wakeUps;
        else
            ++sum;
    for (const auto &[thread, wakeUps] : now)
        sum += wakeUps;
    return sum;
}

std::optional<qint64> Processes::privateMemory(pid_t process) {
    const QByteArray text = contents(procFile(process, "smaps_rollup"));
    return text.isEmpty() ? std::nullopt
                          : std::optional(sumOf(text, {"Private_Clean", "Private_Dirty"}));
}

}  // namespace kestrelbay::desktop
