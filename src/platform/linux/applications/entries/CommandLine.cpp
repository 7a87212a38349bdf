#include "platform/linux/applications/entries/CommandLine.h"

#include "platform/linux/glib/GObjectPtr.h"

namespace kestrelbay {

namespace {

/// The names of programs that run other programs.
constexpr QLatin1String kWrappers(
    "AppRun appimagelauncher bash bwrap cinnamon-launcher csh dash dbus-launch "
    "dbus-run-session dbus-send electron env exec exo-open firejail fish flatpak "
    "gapplication gio gjs gksu gtk-launch ionice java javaw kdesu kioclient kioclient5 "
    "ksh kstart kstart5 mono nice node nodejs nohup perl pkexec python qdbus ruby setsid "
    "sh snap su sudo systemd-run tclsh wine wine-preloader wine64 wine64-preloader wish "
    "xdg-open zsh");

QString baseName(const QString &program) {
    return program.section(u'/', -1);
}

/// Versions are part of a name: python3.11, perl5.36, electron25.
QString withoutVersion(const QString &programName) {
    QString name = programName;
    while (!name.isEmpty() && (name.back().isDigit() || name.back() == u'.'))
        name.chop(1);
    return name;
}

}  // namespace

bool isInterpreterOrWrapper(const QString &programName) {
    static const QStringList kNames = QString(kWrappers).split(u' ');
    return kNames.contains(programName) || kNames.contains(withoutVersion(programName));
}

std::optional<QStringList> wordsOfExec(const QString &exec) {
    char **raw = nullptr;
    if (!g_shell_parse_argv(exec.toUtf8().constData(), nullptr, &raw, nullptr))
        return std::nullopt;
    const GStringList owned(raw);
    return textsOf(owned);
}

QString programOfExec(const QString &exec) {
    const QStringList words = wordsOfExec(exec).value_or(QStringList());
    qsizetype at = 0;
    if (baseName(words.value(0)) == QLatin1String("env")) {
        // "env -u NAME program" can't be told from "env -i program" by its form.
        for (at = 1; at < words.size(); ++at) {
            const QString &word = words[at];
            if (word == QLatin1String("-u") || word == QLatin1String("-C"))
                ++at;
            else if (!word.startsWith(u'-') && !word.contains(u'='))
                break;
        }
    }
    return words.value(at);
}

bool isShell(const QString &programName) {
    static const QStringList kNames = QStringLiteral("bash dash ksh sh zsh").split(u' ');
    return kNames.contains(withoutVersion(programName));
}

}  // namespace kestrelbay
