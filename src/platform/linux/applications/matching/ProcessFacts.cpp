#include "platform/linux/applications/matching/ProcessFacts.h"

#include <algorithm>
#include <optional>

#include <QFile>
#include <QFileInfo>
#include <QList>

#include "platform/linux/applications/entries/CommandLine.h"
#include "platform/linux/applications/entries/Interpreters.h"
#include "platform/linux/applications/matching/Processes.h"
#include "platform/linux/applications/matching/Terminals.h"
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

/// The last value of a variable; empty when there is none.
QByteArray variable(const QByteArray &environment, const QByteArray &name) {
    QByteArray value;
    for (const QByteArray &text : environment.split('\0'))
        if (text.startsWith(name + '='))
            value = text.mid(name.size() + 1);
    return value;
}

CommandLine commandOfProcess(std::int64_t pid) {
    return {wordsOfCommandLine(readOfProcess(pid, "cmdline")),
            QFile::symLinkTarget(QStringLiteral("/proc/%1/cwd").arg(pid))};
}

/// A script that starts a script that starts a program: more than any real one.
constexpr int kMostScripts = 4;

QStringList callingScriptsOf(std::int64_t pid) {
    QStringList scripts;
    while (scripts.size() < kMostScripts) {
        pid = parentOfProcess(pid);
        const CommandLine command = commandOfProcess(pid);
        const bool isOfShell = isShell(command.words.value(0).section(u'/', -1));
        const QString script = isOfShell ? interpretedProgram(command) : QString();
        if (script.isEmpty())
            break;
        scripts.append(script);
    }
    return scripts;
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
    // A child inherits the variables, but not the number.
    const bool isForThisProcess = variable(environment, "GIO_LAUNCHED_DESKTOP_FILE_PID") ==
                                  QByteArray::number(static_cast<qlonglong>(pid));
    return isForThisProcess ? QFile::decodeName(variable(environment, "GIO_LAUNCHED_DESKTOP_FILE"))
                            : QString();
}

QString appImageOfEnvironment(const QByteArray &environment, const QStringList &programs) {
    const QString image = QFile::decodeName(variable(environment, "APPIMAGE"));
    const QString folder = QFile::decodeName(variable(environment, "APPDIR")) + u'/';
    const bool isFromThere =
        folder.size() > 1 && std::ranges::any_of(programs, [&](const QString &program) {
            return program.startsWith(folder);
        });
    return isFromThere ? image : QString();
}

QStringList wordsOfCommandLine(const QByteArray &commandLine) {
    QStringList words;
    for (const QByteArray &word : commandLine.split('\0'))
        words.append(QFile::decodeName(word));
    // Each word ends with a NUL.
    if (words.last().isEmpty())
        words.removeLast();
    return words;
}

QStringList executableNamesOfCommandLine(const QByteArray &commandLine) {
    const QStringList words = wordsOfCommandLine(commandLine);
    const auto nameOf = [](const QString &path) { return path.section(u'/', -1); };
    // A program that rewrites its title has it all in the first word.
    QString name = nameOf(words.value(0)).section(u' ', 0, 0);
    if (isInterpreterOrWrapper(name)) {
        const auto [what, word] = toldToInterpreter(words);
        name = what == Told::File ? nameOf(word) : QString();
        if (isInterpreterOrWrapper(name) || name.contains(u'.'))
            name.clear();
    }
    return name.isEmpty() ? QStringList() : QStringList{name};
}

ProcessFacts readProcessFacts(std::int64_t pid) {
    ProcessFacts facts;
    if (pid < 1)
        return facts;
    const QByteArray cgroup = readOfProcess(pid, "cgroup");
    facts.flatpakId = flatpakIdOfInfo(readOfProcess(pid, "root/.flatpak-info"));
    facts.snapName = snapNameOfCgroup(cgroup);
    facts.scopeIds = scopeIdsOfCgroup(cgroup);
    const QByteArray environment = readOfProcess(pid, "environ");
    facts.launchedEntryPath = launchedEntryOfEnvironment(environment, pid);
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
    const CommandLine command = commandOfProcess(pid);
    facts.isSharedTerminal = isSharedTerminal(executable, command.words);
    facts.interpretedProgram = interpretedProgram(command);
    const QString image =
        appImageOfEnvironment(environment, {executable, facts.interpretedProgram});
    facts.appImagePath = QFileInfo(image).canonicalFilePath();
    facts.callingScripts = callingScriptsOf(pid);
    return facts;
}

}  // namespace kestrelbay
