#include "platform/linux/applications/matching/ProcessFacts.h"

#include <algorithm>
#include <optional>

#include <QFile>
#include <QFileInfo>
#include <QList>

#include "platform/linux/applications/entries/CommandLine.h"
#include "platform/linux/applications/matching/Processes.h"
#include "platform/linux/glib/KeyFile.h"

namespace kestrelbay {

namespace {

/// The last parts of all paths in the text of a cgroup file, and their folders'.
QList<QByteArray> cgroupParts(const QByteArray &cgroup) {
    QList<QByteArray> parts;
    for (const QByteArray &line : cgroup.split('\n')) {
        // hierarchy:controllers:path, and the path may hold colons.
        const qsizetype first = line.indexOf(':');
        const qsizetype second = line.indexOf(':', first + 1);
        if (first < 0 || second < 0)
            continue;
        for (const QByteArray &part : line.mid(second + 1).split('/'))
            if (!part.isEmpty() && !parts.contains(part))
                parts.append(part);
    }
    return parts;
}

/// Takes systemd's \x2d back.
QString unescaped(const QByteArray &name) {
    QByteArray result;
    for (qsizetype i = 0; i < name.size(); ++i) {
        bool valid = false;
        const int code = name.mid(i, 2) == "\\x" ? name.mid(i + 2, 2).toInt(&valid, 16) : 0;
        if (valid) {
            result += static_cast<char>(code);
            i += 3;
        } else {
            result += name.at(i);
        }
    }
    return QString::fromUtf8(result);
}

}  // namespace

QStringList scopeIdsOfCgroup(const QByteArray &cgroup) {
    QStringList ids;
    const auto add = [&ids](const QByteArray &name) {
        const QString id = unescaped(name);
        if (!id.isEmpty() && !ids.contains(id))
            ids.append(id);
    };
    for (QByteArray name : cgroupParts(cgroup)) {
        if (!name.startsWith("app-"))
            continue;
        // app[-launcher]-id-random.scope, app[-launcher]-id[@random].service
        name = name.mid(4);
        if (name.endsWith(".scope")) {
            name.chop(6);
            const qsizetype dash = name.lastIndexOf('-');
            if (dash > 0)
                name.truncate(dash);
        } else if (name.endsWith(".service")) {
            name.chop(8);
            const qsizetype at = name.indexOf('@');
            if (at > 0)
                name.truncate(at);
        } else {
            continue;
        }
        const qsizetype launcher = name.indexOf('-');
        if (launcher > 0)
            add(name.mid(launcher + 1));
        add(name);
    }
    return ids;
}

QString snapNameOfCgroup(const QByteArray &cgroup) {
    for (const QByteArray &part : cgroupParts(cgroup))
        if (part.startsWith("snap.") && part.count('.') >= 2)
            return QString::fromUtf8(part.split('.').at(1));
    return {};
}

QString flatpakIdOfInfo(const QByteArray &info) {
    const std::optional<KeyFile> file = KeyFile::parse(info);
    return file ? file->string("name", "Application") : QString();
}

QString launchedEntryOfEnvironment(const QByteArray &environment, std::int64_t pid) {
    QByteArray path;
    bool forThisProcess = false;
    for (const QByteArray &variable : environment.split('\0')) {
        if (variable.startsWith("GIO_LAUNCHED_DESKTOP_FILE="))
            path = variable.mid(variable.indexOf('=') + 1);
        else if (variable.startsWith("GIO_LAUNCHED_DESKTOP_FILE_PID="))
            // A child inherits the variables, but not the number.
            forThisProcess = variable.mid(variable.indexOf('=') + 1) ==
                             QByteArray::number(static_cast<qlonglong>(pid));
    }
    return forThisProcess ? QFile::decodeName(path) : QString();
}

QStringList executableNamesOfCommandLine(const QByteArray &commandLine) {
    const QList<QByteArray> words = commandLine.split('\0');
    const auto name = [](const QByteArray &word) {
        return QFile::decodeName(word).section(u'/', -1);
    };
    // A program that rewrites its title has it all in the first word.
    const QString program = name(words.first()).section(u' ', 0, 0);
    if (!isInterpreterOrWrapper(program))
        return program.isEmpty() ? QStringList() : QStringList{program};
    const auto script = std::find_if(words.begin() + 1, words.end(), [](const QByteArray &word) {
        return !word.isEmpty() && !word.startsWith('-');
    });
    if (script == words.end() || isInterpreterOrWrapper(name(*script)))
        return {};
    return {name(*script)};
}

ProcessFacts readProcessFacts(std::int64_t pid) {
    ProcessFacts facts;
    if (pid < 1)
        return facts;
    const QByteArray cgroup = readOfProcess(pid, "cgroup");
    facts.flatpakId = flatpakIdOfInfo(readOfProcess(pid, "root/.flatpak-info"));
    facts.snapName = snapNameOfCgroup(cgroup);
    facts.scopeIds = scopeIdsOfCgroup(cgroup);
    facts.launchedEntryPath = launchedEntryOfEnvironment(readOfProcess(pid, "environ"), pid);
    facts.executableNames = executableNamesOfCommandLine(readOfProcess(pid, "cmdline"));

    QString executable = QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(pid));
    // After an update, until the program is started again.
    const QLatin1String deleted(" (deleted)");
    if (executable.endsWith(deleted))
        executable.chop(deleted.size());
    const QString name = executable.section(u'/', -1);
    if (!name.isEmpty() && !isInterpreterOrWrapper(name)) {
        facts.executablePath = executable;
        if (!facts.executableNames.contains(name))
            facts.executableNames.append(name);
    }
    return facts;
}

}  // namespace kestrelbay
