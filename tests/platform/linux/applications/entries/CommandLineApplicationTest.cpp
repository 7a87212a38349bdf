#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "platform/linux/applications/entries/CommandLine.h"
#include "platform/linux/applications/entries/Interpreters.h"

namespace kestrelbay {
namespace {

class CommandLineApplication : public ::testing::Test {
protected:
    CommandLineApplication() {
        for (const char *file : {"app.py", "other/app.py", "a b/run.sh", "pkg/__main__.py",
                                 "pkg/tool.py", "x.jar", "app/main.js", "venv/bin/python"}) {
            const QString path = in(file);
            QDir().mkpath(QFileInfo(path).path());
            QFile out(path);
            EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        }
        QFile::link(in("app.py"), in("link"));
    }

    [[nodiscard]] QString in(const char *relative) const {
        return QFileInfo(root_.path()).canonicalFilePath() + u'/' + QLatin1String(relative);
    }
    /// '@' stands for the folder.
    [[nodiscard]] CommandLine innermost(QString line) const {
        line.replace(u'@', in("").chopped(1));
        return innermostCommand({wordsOfExec(line).value_or(QStringList()), in("").chopped(1)});
    }
    /// With the folder as '@' again.
    [[nodiscard]] std::string program(const char *line) const {
        return interpretedProgram(innermost(QString::fromUtf8(line)))
            .replace(in("").chopped(1), QStringLiteral("@"))
            .toStdString();
    }
    /// The words, and the folder if it is another.
    [[nodiscard]] std::string command(const char *line) const {
        const auto [words, folder] = innermost(QString::fromUtf8(line));
        return (words.join(u'|') +
                (folder == in("").chopped(1) ? QString() : QStringLiteral(" in ") + folder))
            .toStdString();
    }

    QTemporaryDir root_;
};

TEST_F(CommandLineApplication, WrappersAreLookedThrough) {
    EXPECT_EQ(command("app x"), "app|x");
    EXPECT_EQ(command("env -u HOME A_1=b app A=b"), "app|A=b");
    EXPECT_EQ(command("nohup nice -n 5 setsid -f /usr/bin/env A=b app"), "app");
    EXPECT_EQ(command("sh -c 'exec env A=b app $1' -- x"), "app|$1");
    EXPECT_EQ(command("flatpak run org.x"), "flatpak|run|org.x");
    EXPECT_EQ(command("snap run x"), "snap|run|x");
    EXPECT_EQ(command(""), "");
}

TEST_F(CommandLineApplication, OfAShellsTextTheLastCommandCounts) {
    EXPECT_EQ(command("sh -c 'cd /opt/x && exec ./app -v'"), "./app|-v in /opt/x");
    EXPECT_EQ(command("bash -lc \"cd /opt; cd x/../y; A=b C= ./app 'a; b' >/dev/null 2>&1 &\""),
              "./app|a; b in /opt/y");
    EXPECT_EQ(command("bash -o errexit -c 'app &>/dev/null <in'"), "app");
    EXPECT_EQ(command("sh -c 'cd && app'"), "app in ");
    EXPECT_EQ(command("sh -c 'exec sh -c \"cd ~/x && app\"'"),
              "app in " + QDir::homePath().toStdString() + "/x");
    EXPECT_EQ(command("sh -c 'cd \"$HOME\"/x ; exec ${HOME}/app'"),
              QDir::homePath().toStdString() + "/app in " + QDir::homePath().toStdString() + "/x");
    EXPECT_EQ(command("sh -c 'app \\; x'"), "app|;|x");
    // What takes more of a shell than that cannot be told.
    for (const char *text : {"a | b", "a || b", "(a)", "`a`", "x=$(a); $x", "'open", ""})
        EXPECT_EQ(command((QByteArray("sh -c \"") + text + '"').constData()), "") << text;
    EXPECT_EQ(command("sh -c"), "sh|-c");
}

TEST_F(CommandLineApplication, ScriptsAreNamedByTheirFile) {
    EXPECT_EQ(program("python3 @/app.py"), "@/app.py");
    EXPECT_EQ(program("/usr/bin/python3.11 -O -W ignore -X dev ./other/../app.py -c x"),
              "@/app.py");
    EXPECT_EQ(program("python3 link"), "@/app.py");
    EXPECT_EQ(program("python3 other/app.py"), "@/other/app.py");
    EXPECT_EQ(program("bash -o errexit '@/a b/run.sh' x"), "@/a b/run.sh");
    EXPECT_EQ(program("perl -w -I @/lib app.py"), "@/app.py");
    EXPECT_EQ(program("electron25 --no-sandbox -r @/hook.js @/app"), "@/app");
    EXPECT_EQ(program("node -- app/main.js"), "@/app/main.js");
    EXPECT_EQ(program("sh -c 'cd @/other && exec python3 app.py'"), "@/other/app.py");
}

TEST_F(CommandLineApplication, WhatIsNoScriptHasNoName) {
    for (const char *line :
         {"app @/app.py", "python3", "python3 -", "python3 -c app.py", "python3 missing.py",
          "perl -we app.py", "ruby -e app.py", "python3 :", "sh", "bash -i", "fish -c app.py",
          "python3 -m", "", "wine app.py", "flatpak run app.py"})
        EXPECT_EQ(program(line), "") << line;
    EXPECT_EQ(interpretedProgram({{QStringLiteral("python3"), QStringLiteral("app.py")}, {}}),
              QString());
}

TEST_F(CommandLineApplication, ModulesAreNamedByTheirFileOrTheirPython) {
    EXPECT_EQ(program("python3 -m pkg x"), "@/pkg/__main__.py");
    EXPECT_EQ(program("python3 -Im pkg.tool"), "@/pkg/tool.py");
    EXPECT_EQ(program("python3 -m far.away"), "python -m far.away");
    EXPECT_EQ(program("/usr/bin/python3.11 -m far.away"), "python -m far.away");
    EXPECT_EQ(program("venv/bin/python -m far.away"), "python -m far.away @/venv/bin");
}

TEST_F(CommandLineApplication, JavaIsNamedByArchiveOrClassAndPlace) {
    EXPECT_EQ(program("java -Xmx1g -cp y.jar -jar x.jar a"), "@/x.jar");
    EXPECT_EQ(program("/usr/lib/jvm/bin/java -jar missing.jar"), "");
    EXPECT_EQ(program("java --add-opens java.base/x=ALL -cp '@/x.jar:lib/*' com.x.Main a"),
              "java com.x.Main @/x.jar @/lib/*");
    EXPECT_EQ(program("java --class-path=x.jar com.x.Main"), "java com.x.Main @/x.jar");
    EXPECT_EQ(program("java -p mods -m com.x/com.x.Main"), "java com.x/com.x.Main @/mods");
    EXPECT_EQ(program("java com.x.Main"), "java com.x.Main @");
    for (const char *line : {"java", "java -version", "java -jar", "java -cp"})
        EXPECT_EQ(program(line), "") << line;
    // Its options may say anything.
    EXPECT_EQ(
        interpretedProgram(
            {{QStringLiteral("java"), QStringLiteral("@options"), QStringLiteral("A")}, in("")}),
        QString());
}

}  // namespace
}  // namespace kestrelbay
