#include "platform/linux/applications/entries/CommandLine.h"

#include <algorithm>
#include <array>

#include <QDir>
#include <QFile>

#include "platform/linux/applications/entries/Interpreters.h"
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

/// Wrappers of which nothing is left once the program runs, and their options that take
/// a word of their own.
struct Wrapper {
    QLatin1String name;
    QLatin1String valued;
};
constexpr std::array kTransparent{
    Wrapper{QLatin1String("env"), QLatin1String("-u -C")},
    Wrapper{QLatin1String("exec"), QLatin1String("-a")},
    Wrapper{QLatin1String("nohup"), QLatin1String()},
    Wrapper{QLatin1String("setsid"), QLatin1String()},
    Wrapper{QLatin1String("nice"), QLatin1String("-n")},
    Wrapper{QLatin1String("ionice"), QLatin1String("-c -n")},
    Wrapper{QLatin1String("dbus-run-session"), QLatin1String("--config-file --dbus-daemon")},
    Wrapper{QLatin1String("dbus-launch"), QLatin1String()},
};

/// Shells in wrappers in shells: deeper than any real line.
constexpr int kDeepestCommand = 8;

bool isAssignment(const QString &word) {
    const qsizetype equals = word.indexOf(u'=');
    return equals > 0 && std::ranges::all_of(word.first(equals), [](QChar c) {
               return c.isLetterOrNumber() || c == u'_';
           });
}

/// Past one wrapper; the words as they are when they begin with none.
QStringList pastWrapper(const QStringList &words) {
    const auto *const wrapper =
        std::ranges::find(kTransparent, baseName(words.value(0)), &Wrapper::name);
    if (wrapper == kTransparent.end())
        return words;
    const QStringList valued = QString(wrapper->valued).split(u' ');
    qsizetype at = 1;
    for (; at < words.size(); ++at) {
        const QString &word = words[at];
        if (valued.contains(word))
            ++at;
        else if (!word.startsWith(u'-') && !isAssignment(word))
            break;
    }
    return words.mid(at);
}

/// The commands that a shell's text has one after the other. None where it has more to it
/// than that. What is said of descriptors is left out.
QStringList commandsOfText(const QString &text) {
    QStringList commands{QString()};
    QChar quote;
    bool isRedirection = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const QChar next = i + 1 < text.size() ? text[i + 1] : QChar();
        QString &command = commands.last();
        const bool isEscape = c == u'\\' && quote != u'\'' && !next.isNull();
        if (isEscape) {
            if (!isRedirection)
                command += c;
            ++i;
        } else if (!quote.isNull()) {
            if (c == quote)
                quote = QChar();
        } else if (c == u'"' || c == u'\'') {
            quote = c;
        } else if (QLatin1String("|()`").contains(c)) {
            return {};
        } else if (c == u'<' || c == u'>' || (c == u'&' && next == u'>')) {
            if (command.size() > 1 && command.back().isDigit() &&
                command[command.size() - 2].isSpace())
                command.chop(1);
            isRedirection = true;
        } else if (c == u';' || c == u'\n' ||
                   (c == u'&' && (i == 0 || !QLatin1String("<>").contains(text[i - 1])))) {
            isRedirection = false;
            commands.append(QString());
            continue;
        }
        if (!isRedirection)
            command += text[i];
    }
    return commands;
}

QString withHome(const QString &word) {
    for (const QLatin1String home :
         {QLatin1String("~"), QLatin1String("$HOME"), QLatin1String("${HOME}")})
        if (word == home || (word.startsWith(home) && word[home.size()] == u'/'))
            return QDir::homePath() + word.mid(home.size());
    return word;
}

/// The last command of the text, in the folder that those before it change to.
CommandLine commandOfText(const QString &text, const QString &folder) {
    CommandLine result{{}, folder};
    for (const QString &command : commandsOfText(text)) {
        QStringList words = wordsOfExec(command).value_or(QStringList());
        while (!words.isEmpty() && isAssignment(words.first()))
            words.removeFirst();
        if (words.isEmpty())
            continue;
        std::ranges::transform(words, words.begin(), withHome);
        if (words.first() == QLatin1String("cd"))
            result.folder = pathFrom(result.folder, words.size() == 2 ? words[1] : QString());
        else
            result.words = words;
    }
    return result;
}

}  // namespace

bool isInterpreterOrWrapper(const QString &programName) {
    static const QStringList kNames = QString(kWrappers).split(u' ');
    return kNames.contains(programName) || kNames.contains(withoutVersion(programName));
}

QString baseName(const QString &program) {
    return program.section(u'/', -1);
}

std::optional<QStringList> wordsOfExec(const QString &exec) {
    char **raw = nullptr;
    if (!g_shell_parse_argv(exec.toUtf8().constData(), nullptr, &raw, nullptr))
        return std::nullopt;
    const GStringList owned(raw);
    return textsOf(owned);
}

QString executable(const QString &program) {
    // Qt's own search takes five times as long, which counts for thousands of entries.
    const GCharPtr found(g_find_program_in_path(QFile::encodeName(program).constData()));
    return QFile::decodeName(found.get());
}

QString programOfExec(const QString &exec) {
    QStringList words = wordsOfExec(exec).value_or(QStringList());
    if (baseName(words.value(0)) == QLatin1String("env"))
        words = pastWrapper(words);
    return words.value(0);
}

QString pathFrom(const QString &folder, const QString &text) {
    // Not by Qt, to which ":" begins a path of its own kind.
    const bool isAbsolute = text.startsWith(u'/');
    if (text.isEmpty() || (folder.isEmpty() && !isAbsolute))
        return {};
    return QDir::cleanPath(isAbsolute ? text : folder + u'/' + text);
}

CommandLine innermostCommand(CommandLine command) {
    for (int depth = 0; depth < kDeepestCommand; ++depth) {
        const QStringList inner = pastWrapper(command.words);
        const QString name = baseName(inner.value(0));
        const bool isWrapped = inner.size() < command.words.size();
        command.words = inner;
        if (const auto told = toldToInterpreter(inner); isShell(name) && told.what == Told::Text)
            command = commandOfText(told.word, command.folder);
        else if (!isWrapped)
            return command;
    }
    return {};
}

QString withoutVersion(const QString &programName) {
    QString name = programName;
    while (!name.isEmpty() && (name.back().isDigit() || name.back() == u'.'))
        name.chop(1);
    return name;
}

bool isShell(const QString &programName) {
    static const QStringList kNames = QStringLiteral("bash dash ksh sh zsh").split(u' ');
    return kNames.contains(withoutVersion(programName));
}

}  // namespace kestrelbay
