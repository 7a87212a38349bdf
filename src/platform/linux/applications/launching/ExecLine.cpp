#include "platform/linux/applications/launching/ExecLine.h"

#include <algorithm>
#include <utility>

#include "platform/linux/applications/entries/CommandLine.h"
#include "platform/linux/glib/GObjectPtr.h"

namespace kestrelbay {

namespace {

/// A word of the line with its codes filled in; empty when nothing is left of it.
QString rewrittenWord(const QString &word, const ExecContext &context, FileCodes fileCodes) {
    if (word == QLatin1String("%i"))
        return context.icon.isEmpty() ? QString()
                                      : QStringLiteral("--icon ") + quotedForExec(context.icon);
    QString result;
    QString unquoted;
    bool hadCode = false;
    for (qsizetype i = 0; i < word.size(); ++i) {
        if (word[i] != u'%' || i + 1 == word.size()) {
            unquoted += word[i];
            continue;
        }
        const QChar code = word[++i];
        hadCode = hadCode || code != u'%';
        if (code == u'%') {
            unquoted += code;
        } else if (code == u'c') {
            unquoted += context.localizedName;
        } else if (code == u'k') {
            unquoted += context.entryPath;
        } else if (fileCodes == FileCodes::Keep && QLatin1String("fFuU").contains(code)) {
            if (!unquoted.isEmpty())
                result += quotedForExec(std::exchange(unquoted, QString()));
            result += u'%';
            result += code;
        }
    }
    return unquoted.isEmpty() && hadCode ? result : result + quotedForExec(unquoted);
}

/// Does the line end in a "--" that ends a program's options? What stands behind a
/// shell's own text is the name of that text.
bool endsOptions(const QStringList &words) {
    const qsizetype last = words.size() - 1;
    if (last < 1 || words[last] != QLatin1String("--"))
        return false;
    const bool afterText =
        last >= 3 && words[last - 2].startsWith(u'-') &&
        !words[last - 2].startsWith(QLatin1String("--")) && words[last - 2].endsWith(u'c') &&
        std::ranges::any_of(words.first(last - 2),
                            [](const QString &word) { return isShell(word.section(u'/', -1)); });
    return !afterText;
}

}  // namespace

std::optional<QString> rewrittenExec(const QString &exec, const ExecContext &context,
                                     FileCodes fileCodes, const QStringList &arguments) {
    const std::optional<QStringList> words = wordsOfExec(exec);
    if (!words)
        return std::nullopt;
    QStringList line;
    QStringList kept;
    for (const QString &word : *words) {
        const QString rewritten = rewrittenWord(word, context, fileCodes);
        if (rewritten.isEmpty())
            continue;
        line.append(rewritten);
        kept.append(word);
    }
    qsizetype place = endsOptions(kept) ? line.size() - 1 : line.size();
    for (const QString &argument : arguments)
        line.insert(place++, quotedForExec(argument));
    return line.join(u' ');
}

QString quotedForExec(const QString &text) {
    const GCharPtr shell(g_shell_quote(text.toUtf8().constData()));
    return QString::fromUtf8(shell.get()).replace(u'%', QStringLiteral("%%"));
}

}  // namespace kestrelbay
