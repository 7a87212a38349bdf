#include "platform/linux/applications/matching/Processes.h"

#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QList>

namespace kestrelbay {

namespace {

/// An environment may be as large as the kernel's limit for it.
constexpr qint64 kLargestProcFile = 4 << 20;

}  // namespace

QByteArray readOfProcess(std::int64_t pid, const char *name) {
    QFile file(QStringLiteral("/proc/%1/%2").arg(pid).arg(QLatin1String(name)));
    // These files have no size to be asked for.
    return file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ? file.read(kLargestProcFile)
                                                                  : QByteArray();
}

std::uint64_t processStartTime(std::int64_t pid) {
    const QByteArray stat = readOfProcess(pid, "stat");
    // The name, in parentheses, may hold anything; fields 3 and 22 count from before it.
    const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    const bool hasEnded = fields.first() == "Z" || fields.first() == "X";
    return fields.size() > 19 && !hasEnded ? fields.at(19).toULongLong() : 0;
}

bool wasStartedWith(std::int64_t pid, const QByteArray &variable) {
    return ('\0' + readOfProcess(pid, "environ")).contains('\0' + variable + '\0');
}

std::int64_t sessionOfProcess(std::int64_t pid) {
    return pid < 1 ? -1 : getsid(static_cast<pid_t>(pid));
}

std::vector<std::int64_t> allProcesses() {
    std::vector<std::int64_t> pids;
    for (const QString &name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        bool isNumber = false;
        const std::int64_t pid = name.toLongLong(&isNumber);
        if (isNumber)
            pids.push_back(pid);
    }
    return pids;
}

}  // namespace kestrelbay
