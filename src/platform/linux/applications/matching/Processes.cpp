#include "platform/linux/applications/matching/Processes.h"

#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QList>

namespace kestrelbay {

namespace {

/// An environment may be as large as the kernel's limit for it.
constexpr qint64 kLargestProcFile = 4 << 20;

// As proc(5) counts them.
constexpr int kFirstField = 3;

/// Those behind the name of the program, which is in parentheses and may hold anything.
QList<QByteArray> fieldsOfStat(std::int64_t pid) {
    const QByteArray stat = readOfProcess(pid, "stat");
    return stat.mid(stat.lastIndexOf(')') + 2).split(' ');
}

}  // namespace

QByteArray readOfProcess(std::int64_t pid, const char *name) {
    QFile file(QStringLiteral("/proc/%1/%2").arg(pid).arg(QLatin1String(name)));
    // These files have no size to be asked for.
    return file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ? file.read(kLargestProcFile)
                                                                  : QByteArray();
}

std::uint64_t processStartTime(std::int64_t pid) {
    const QList<QByteArray> fields = fieldsOfStat(pid);
    const bool hasEnded = fields.first() == "Z" || fields.first() == "X";
    return hasEnded ? 0 : fields.value(22 - kFirstField).toULongLong();
}

std::int64_t parentOfProcess(std::int64_t pid) {
    return fieldsOfStat(pid).value(4 - kFirstField).toLongLong();
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
