#include "platform/linux/applications/entries/Interpreters.h"

#include <algorithm>
#include <array>

#include <QFileInfo>

namespace kestrelbay {

namespace {

/// How an interpreter's command line is read: the options that take a word of their own, and
/// the letters of those after which the program's text, or a module's name, follows.
struct Interpreter {
    QLatin1String names;
    QLatin1String valued;
    QLatin1String text;
    QLatin1String module;
};
constexpr std::array kInterpreters{
    Interpreter{QLatin1String("bash dash ksh sh zsh"),
                QLatin1String("-o +o -O +O --rcfile --init-file"),
                QLatin1String("c"),
                {}},
    Interpreter{QLatin1String("csh fish"), {}, QLatin1String("c"), {}},
    Interpreter{QLatin1String("python"), QLatin1String("-W -X -Q --check-hash-based-pycs"),
                QLatin1String("c"), QLatin1String("m")},
    Interpreter{QLatin1String("perl"), QLatin1String("-I"), QLatin1String("eE"), {}},
    Interpreter{QLatin1String("ruby"), QLatin1String("-C -E -I -r"), QLatin1String("e"), {}},
    Interpreter{QLatin1String("electron node nodejs"),
                QLatin1String("-C -r --conditions --import --loader --require"),
                QLatin1String("ep"),
                {}},
    Interpreter{QLatin1String("gjs"),
                QLatin1String("-C -I --coverage-prefix --include-path"),
                QLatin1String("c"),
                {}},
    Interpreter{QLatin1String("mono"), QLatin1String("--config"), {}, {}},
    Interpreter{QLatin1String("tclsh wish"), QLatin1String("-encoding"), {}, {}},
};

constexpr QLatin1String kJavaValued(
    "-cp -classpath --class-path -p --module-path --upgrade-module-path --add-modules "
    "--add-reads --add-exports --add-opens --limit-modules --patch-module");

bool has(QLatin1String list, const QString &word) {
    return std::ranges::any_of(qTokenize(list, u' '),
                               [&word](QLatin1String each) { return each == word; });
}

QString nameOf(const QStringList &words) {
    return withoutVersion(words.value(0).section(u'/', -1));
}

QString realPath(const QString &path) {
    return path.isEmpty() ? QString() : QFileInfo(path).canonicalFilePath();
}

/// A module beside the caller comes before an installed one, which is as many programs as
/// there are Pythons that have it installed.
QString pythonModule(const CommandLine &command, const QString &module) {
    const QString path = pathFrom(command.folder, QString(module).replace(u'.', u'/'));
    for (const char *suffix : {".py", "/__main__.py"})
        if (QString real = path.isEmpty() ? path : realPath(path + QLatin1String(suffix));
            !real.isEmpty())
            return real;
    const QString python = command.words.first();
    const QString folder =
        python.contains(u'/') ? pathFrom(command.folder, python).section(u'/', 0, -2) : QString();
    const bool isOwn = !folder.isEmpty() && !has(QLatin1String("/bin /usr/bin"), folder);
    return QStringLiteral("python -m %1").arg(module) + (isOwn ? u' ' + folder : QString());
}

/// The places that an option of Java names, or none if it is another option.
QStringList javaPlaces(const QString &option, const QString &value, const QString &folder) {
    QStringList places;
    if (has(QLatin1String("-cp -classpath --class-path -p --module-path"), option))
        for (const QString &place : value.split(u':', Qt::SkipEmptyParts))
            places.append(pathFrom(folder, place));
    return places;
}

/// An archive is named by its path. A class, which many programs can have, by where it is
/// looked for as well.
QString javaProgram(const CommandLine &command) {
    const QStringList &words = command.words;
    QStringList places;
    for (qsizetype i = 1; i < words.size(); ++i) {
        const QString &word = words[i];
        const QString next = words.value(i + 1);
        if (word == QLatin1String("-jar"))
            return realPath(pathFrom(command.folder, next));
        if (word.startsWith(u'@'))
            return {};
        if (!word.startsWith(u'-') || has(QLatin1String("-m --module"), word)) {
            const QString mainClass = word.startsWith(u'-') ? next : word;
            if (places.isEmpty())
                places.append(command.folder);
            if (mainClass.isEmpty())
                return {};
            return (QStringList{QStringLiteral("java"), mainClass} + places).join(u' ');
        }
        if (has(kJavaValued, word)) {
            places += javaPlaces(word, next, command.folder);
            ++i;
        } else {
            places += javaPlaces(word.section(u'=', 0, 0), word.section(u'=', 1), command.folder);
        }
    }
    return {};
}

}  // namespace

ToldToInterpreter toldToInterpreter(const QStringList &words) {
    const QString name = nameOf(words);
    const auto *const interpreter = std::ranges::find_if(
        kInterpreters, [&](const Interpreter &row) { return has(row.names, name); });
    if (name.isEmpty() || interpreter == kInterpreters.end())
        return {};
    const auto endsIn = [](const QString &word, QLatin1String letters) {
        return !word.startsWith(QLatin1String("--")) && letters.contains(word.back());
    };
    Told what = Told::File;
    for (qsizetype i = 1; i < words.size(); ++i) {
        const QString &word = words[i];
        if (word == QLatin1String("-"))
            return {};
        if (word == QLatin1String("--"))
            return {what, words.value(i + 1)};
        if (word.isEmpty() || (!word.startsWith(u'-') && !word.startsWith(u'+')))
            return {what, word};
        if (endsIn(word, interpreter->text))
            what = Told::Text;
        else if (endsIn(word, interpreter->module))
            return {Told::Module, words.value(i + 1)};
        else if (has(interpreter->valued, word))
            ++i;
    }
    return {};
}

QString interpretedProgram(const CommandLine &command) {
    if (has(QLatin1String("java javaw"), nameOf(command.words)))
        return javaProgram(command);
    const auto [what, word] = toldToInterpreter(command.words);
    if (word.isEmpty())
        return {};
    if (what == Told::Module)
        return pythonModule(command, word);
    return what == Told::File ? realPath(pathFrom(command.folder, word)) : QString();
}

}  // namespace kestrelbay
