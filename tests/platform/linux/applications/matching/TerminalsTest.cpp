#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/linux/applications/matching/Terminals.h"

namespace kestrelbay {
namespace {

class Terminals : public ::testing::Test {
protected:
    Terminals() { qputenv("PATH", QFile::encodeName(folder_.path())); }
    ~Terminals() override { qputenv("PATH", path_); }

    void install(const char *name) const {
        QFile file(folder_.filePath(QLatin1String(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    }
    [[nodiscard]] std::string prefix(const char *entry = "/apps/top.desktop") const {
        return terminalPrefix(QString::fromUtf8(entry))
            .value_or(QStringList())
            .join(u' ')
            .toStdString();
    }

    const QByteArray path_ = qgetenv("PATH");
    QTemporaryDir folder_;
};

TEST_F(Terminals, TheFirstThatIsThereRunsTheCommand) {
    EXPECT_FALSE(terminalPrefix(QStringLiteral("/x")).has_value());
    for (const auto &[name, words] :
         {std::pair("x-terminal-emulator", "x-terminal-emulator -e"),
          std::pair("xterm", "xterm -e"), std::pair("kgx", "kgx -e"),
          std::pair("lxterminal", "lxterminal --no-remote -e"),
          std::pair("konsole", "konsole --separate -e"),
          std::pair("tilix", "tilix --new-process -e"),
          std::pair("xfce4-terminal",
                    "xfce4-terminal --role=kestrelbay-command:/apps/top.desktop -x"),
          std::pair("mate-terminal",
                    "mate-terminal --role=kestrelbay-command:/apps/top.desktop -x"),
          std::pair("gnome-terminal",
                    "gnome-terminal --role=kestrelbay-command:/apps/top.desktop --"),
          std::pair("xdg-terminal-exec", "xdg-terminal-exec")}) {
        install(name);
        EXPECT_EQ(prefix(), words);
    }
}

TEST_F(Terminals, RolesNameAnyEntry) {
    install("xfce4-terminal");
    for (const char *entry : {"/a b/100%.desktop", "/grün/日本.desktop", "/x:\"y'.desktop"}) {
        const QString role = terminalPrefix(QString::fromUtf8(entry))->at(1).mid(7);
        EXPECT_EQ(entryOfTerminalRole(role), QString::fromUtf8(entry));
        // Any text survives as a property.
        EXPECT_EQ(QString::fromLatin1(role.toLatin1()), role);
    }
    for (const char *role : {"", "MainWindow#1", "kestrelbay-command:", "x-kestrelbay-command:/y"})
        EXPECT_EQ(entryOfTerminalRole(QLatin1String(role)), QString()) << role;
}

TEST_F(Terminals, OneProcessMayHaveAllWindows) {
    const auto isShared = [](const char *executable, const char *words) {
        return isSharedTerminal(QLatin1String(executable), QString::fromLatin1(words).split(u' '));
    };
    EXPECT_TRUE(isShared("/usr/libexec/gnome-terminal-server", "gnome-terminal-server"));
    EXPECT_TRUE(isShared("/usr/bin/xfce4-terminal", "xfce4-terminal -x top"));
    EXPECT_TRUE(isShared("/usr/bin/konsole", "konsole -e top"));
    EXPECT_TRUE(isShared("/usr/bin/kgx", "kgx -e top"));
    EXPECT_FALSE(isShared("/usr/bin/konsole", "konsole --separate -e top"));
    EXPECT_FALSE(isShared("/usr/bin/gnome-terminal", "gnome-terminal -- top"));
    EXPECT_FALSE(isShared("/usr/bin/xterm", "xterm -e top"));
    EXPECT_FALSE(isShared("", ""));
}

}  // namespace
}  // namespace kestrelbay
