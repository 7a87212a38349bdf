#include <gtest/gtest.h>

#include <QFile>

#include <gio/gdesktopappinfo.h>

#include "platform/linux/applications/launching/ExecLine.h"
#include "platform/linux/applications/launching/LaunchBus.h"
#include "platform/linux/glib/GObjectPtr.h"

namespace kestrelbay {
namespace {

ExecContext context() {
    return {QStringLiteral("My App"), QStringLiteral("my icon"),
            QStringLiteral("/a b/100%.desktop")};
}

/// What the program would get: the shell's view after GLib has undone the percents.
QStringList words(const QString &exec, FileCodes codes = FileCodes::Drop,
                  const QStringList &arguments = {}) {
    const auto line = rewrittenExec(exec, context(), codes, arguments);
    if (!line)
        return {QStringLiteral("(broken)")};
    int count = 0;
    char **raw = nullptr;
    if (!g_shell_parse_argv(line->toUtf8().constData(), &count, &raw, nullptr))
        return {QStringLiteral("(unreadable)")};
    const GStringList owned(raw);
    QStringList result;
    for (int i = 0; i < count; ++i)
        result.append(QString::fromUtf8(raw[i]).replace(QStringLiteral("%%"), QStringLiteral("%")));
    return result;
}

QStringList list(std::initializer_list<const char *> texts) {
    QStringList result;
    for (const char *text : texts)
        result.append(QString::fromUtf8(text));
    return result;
}

TEST(ExecLaunch, FileAndDeprecatedCodesGo) {
    EXPECT_EQ(words(QStringLiteral("app %U --x %f %F %u %d %D %n %N %v %m y")),
              list({"app", "--x", "y"}));
    // A quoted code is no empty argument.
    EXPECT_EQ(words(QStringLiteral("app \"%f\" 'z'")), list({"app", "z"}));
}

TEST(ExecLaunch, OtherCodesAreFilledIn) {
    EXPECT_EQ(words(QStringLiteral("app %i --name=%c %k 50%%")),
              list({"app", "--icon", "my icon", "--name=My App", "/a b/100%.desktop", "50%"}));
    EXPECT_EQ(rewrittenExec(QStringLiteral("app %i"), ExecContext(), FileCodes::Drop),
              QStringLiteral("'app'"));
}

TEST(ExecLaunch, FileCodesCanStay) {
    EXPECT_EQ(rewrittenExec(QStringLiteral("app --open=%f %U"), context(), FileCodes::Keep),
              QStringLiteral("'app' '--open='%f %U"));
}

TEST(ExecLaunch, EmptyWordsOfTheLineStay) {
    EXPECT_EQ(words(QStringLiteral("app \"\" x")), list({"app", "", "x"}));
}

TEST(ExecLaunch, ArgumentsAreKeptByteForByte) {
    const QStringList arguments =
        list({"a b", "it's", "\"q\"", "$HOME", "`id`", "back\\slash", "100%", "%f", "%%", "",
              "tab\tnew\nline", "grün 日本", "*?[x]", "~", "#x", ";|&<>"});
    EXPECT_EQ(words(QStringLiteral("app %U"), FileCodes::Drop, arguments),
              QStringList(QStringLiteral("app")) + arguments);
}

TEST(ExecLaunch, ArgumentsGoBeforeTheEndOfTheOptions) {
    const QStringList arguments = list({"--fs", "a b"});
    const auto with = [&](const char *exec) {
        return words(QString::fromLatin1(exec), FileCodes::Drop, arguments);
    };
    EXPECT_EQ(with("app --gui -- %U"), list({"app", "--gui", "--fs", "a b", "--"}));
    EXPECT_EQ(with("env A=b app '--' %f %i"),
              list({"env", "A=b", "app", "--", "--icon", "my icon", "--fs", "a b"}));
    EXPECT_EQ(with("app -- x %U"), list({"app", "--", "x", "--fs", "a b"}));
    EXPECT_EQ(with("xterm -e app -c x -- %U"),
              list({"xterm", "-e", "app", "-c", "x", "--fs", "a b", "--"}));
    // There it is the shell's name for the text, and what follows are its arguments.
    for (const char *shell : {"sh -c", "/usr/bin/bash -lc", "env A=b dash -ec"})
        EXPECT_EQ(with((QByteArray(shell) + " 'exec app \"$@\"' -- %U").constData()).last(4),
                  list({"exec app \"$@\"", "--", "--fs", "a b"}))
            << shell;
    EXPECT_EQ(with("sh /opt/run -- %U"), list({"sh", "/opt/run", "--fs", "a b", "--"}));
    EXPECT_EQ(words(QStringLiteral("app -- %U")), list({"app", "--"}));
}

TEST(ExecLaunch, BrokenLinesAreSaidToBe) {
    EXPECT_FALSE(rewrittenExec(QStringLiteral("app 'x"), context(), FileCodes::Drop));
    EXPECT_FALSE(rewrittenExec(QString(), context(), FileCodes::Drop));
    EXPECT_EQ(words(QStringLiteral("app 5%")), list({"app", "5%"}));
}

TEST(ExecLaunch, ScopesHaveEscapedNames) {
    EXPECT_EQ(scopeName(QStringLiteral("debian-xterm"), 42),
              QStringLiteral("app-kestrelbay-debian\\x2dxterm-42.scope"));
    EXPECT_EQ(scopeName(QStringLiteral(".a b/ü"), 1),
              QStringLiteral("app-kestrelbay-\\x2ea\\x20b\\x2f\\xc3\\xbc-1.scope"));
}

}  // namespace
}  // namespace kestrelbay
