#include "platform/linux/applications/launching/ExecLine.h"

#include "platform/linux/glib/GObjectPtr.h"

namespace kestrelbay {

namespace {

/// As a word of an Exec line that means these bytes and nothing else.
QString quoted(const QString &text) {
    const GCharPtr shell(g_shell_quote(text.toUtf8().constData()));
    return QString::fromUtf8(shell.get()).replace(u'%', QStringLiteral("%%"));
}

/// A word of the line, taken apart at its file codes.
class WordRewriter {
public:
    WordRewriter(const ExecContext &context, FileCodes fileCodes)
        : context_(context), fileCodes_(fileCodes) {}

    /// Empty when nothing is left of the word.
    [[nodiscard]] QString rewritten(const QString &word) {
        if (word == QLatin1String("%i"))
            return context_.icon.isEmpty() ? QString()
                                           : QStringLiteral("--icon ") + quoted(context_.icon);
        bool hadCode = false;
        for (qsizetype i = 0; i < word.size(); ++i) {
            if (word[i] != u'%' || i + 1 == word.size()) {
                literal_ += word[i];
                continue;
            }
            const QChar code = word[++i];
            hadCode = hadCode || code != u'%';
            replace(code);
        }
        if (!literal_.isEmpty() || (!hadCode && result_.isEmpty()))
            endLiteral();
        return result_;
    }

private:
    void replace(QChar code) {
        switch (code.unicode()) {
            case u'%':
                literal_ += u'%';
                break;
            case u'c':
                literal_ += context_.localizedName;
                break;
            case u'k':
                literal_ += context_.entryPath;
                break;
            case u'f':
            case u'F':
            case u'u':
            case u'U':
                if (fileCodes_ == FileCodes::Keep) {
                    if (!literal_.isEmpty())
                        endLiteral();
                    result_ += u'%';
                    result_ += code;
                }
                break;
            default:
                break;
        }
    }

    void endLiteral() {
        result_ += quoted(literal_);
        literal_.clear();
    }

    const ExecContext &context_;
    FileCodes fileCodes_;
    QString literal_;
    QString result_;
};

}  // namespace

std::optional<QString> rewrittenExec(const QString &exec, const ExecContext &context,
                                     FileCodes fileCodes, const QStringList &arguments) {
    int count = 0;
    char **raw = nullptr;
    if (!g_shell_parse_argv(exec.toUtf8().constData(), &count, &raw, nullptr))
        return std::nullopt;
    const GStringList words(raw);
    QStringList line;
    for (int i = 0; i < count; ++i) {
        const QString word = WordRewriter(context, fileCodes).rewritten(QString::fromUtf8(raw[i]));
        if (!word.isEmpty())
            line.append(word);
    }
    for (const QString &argument : arguments)
        line.append(quoted(argument));
    return line.join(u' ');
}

}  // namespace kestrelbay
