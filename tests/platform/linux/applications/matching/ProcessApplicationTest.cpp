#include <gtest/gtest.h>

#include <unistd.h>

#include "platform/linux/applications/matching/ProcessFacts.h"
#include "platform/linux/applications/matching/Processes.h"

namespace kestrelbay {
namespace {

QStringList list(std::initializer_list<const char *> texts) {
    QStringList result;
    for (const char *text : texts)
        result.append(QString::fromUtf8(text));
    return result;
}

TEST(ProcessApplication, UnitsOfSystemd) {
    const QByteArray user = "0::/user.slice/user-1000.slice/user@1000.service/app.slice/";
    EXPECT_EQ(scopeIdsOfCgroup(user + "app-gnome-org.gnome.Text\\x2dEditor-4711.scope\n"),
              list({"org.gnome.Text-Editor", "gnome-org.gnome.Text-Editor"}));
    EXPECT_EQ(scopeIdsOfCgroup(user + "app-org.kde.kate-8f2a.scope"), list({"org.kde.kate"}));
    EXPECT_EQ(scopeIdsOfCgroup(user + "app-gnome-firefox@autostart.service"),
              list({"firefox", "gnome-firefox"}));
    EXPECT_EQ(scopeIdsOfCgroup("12:pids:/user.slice\n0::/init.scope\n"), QStringList());
    EXPECT_EQ(scopeIdsOfCgroup("nonsense\n::\n0::/app-.scope\n0::/app-\\xzz-1.scope"),
              list({"\\xzz"}));
}

TEST(ProcessApplication, Sandboxes) {
    EXPECT_EQ(snapNameOfCgroup("0::/user.slice/snap.firefox.firefox-0a1b.scope"),
              QStringLiteral("firefox"));
    EXPECT_EQ(snapNameOfCgroup("0::/snap.only"), QString());
    EXPECT_EQ(flatpakIdOfInfo("[Application]\nname=org.example.App\nruntime=x\n"),
              QStringLiteral("org.example.App"));
    EXPECT_EQ(flatpakIdOfInfo("[Runtime]\nname=org.example.Runtime\n"), QString());
}

TEST(ProcessApplication, TheLaunchedEntryIsNotInherited) {
    const QByteArray own(
        "A=b\0GIO_LAUNCHED_DESKTOP_FILE=/x/a b.desktop\0"
        "GIO_LAUNCHED_DESKTOP_FILE_PID=77\0",
        4 + 41 + 33);
    EXPECT_EQ(launchedEntryOfEnvironment(own, 77), QStringLiteral("/x/a b.desktop"));
    EXPECT_EQ(launchedEntryOfEnvironment(own, 78), QString());
    EXPECT_EQ(launchedEntryOfEnvironment("GIO_LAUNCHED_DESKTOP_FILE=/x", 77), QString());
}

TEST(ProcessApplication, AnAppImageIsThatOfProgramsInIt) {
    const QByteArray environment =
        QByteArray("APPDIR=/tmp/.mount_x|APPIMAGE=/home/u/X.AppImage|").replace('|', '\0');
    const QString image = QStringLiteral("/home/u/X.AppImage");
    EXPECT_EQ(appImageOfEnvironment(environment, list({"", "/tmp/.mount_x/usr/bin/x"})), image);
    EXPECT_EQ(appImageOfEnvironment(environment, list({"/usr/bin/python3", "/tmp/.mount_xy/x"})),
              QString());
    EXPECT_EQ(appImageOfEnvironment("APPIMAGE=/x", list({"/y"})), QString());
}

TEST(ProcessApplication, TellsOfItsParents) {
    EXPECT_EQ(parentOfProcess(getpid()), getppid());
    EXPECT_LT(parentOfProcess(0x7fff'ffff), 1);
    EXPECT_EQ(sessionOfProcess(getpid()), getsid(0));
    EXPECT_LT(sessionOfProcess(0x7fff'ffff), 1);
    EXPECT_LT(sessionOfProcess(0), 1);
}

TEST(ProcessApplication, NamesOfPrograms) {
    // '|' stands for the NUL that ends a word.
    const auto names = [](QByteArray line) {
        return executableNamesOfCommandLine(line.replace('|', '\0'));
    };
    EXPECT_EQ(names("/usr/bin/gimp|x|"), list({"gimp"}));
    EXPECT_EQ(names("/usr/bin/python3|-O|/usr/bin/meld|x|"), list({"meld"}));
    EXPECT_EQ(names("python3|-W|ignore|/usr/bin/meld|"), list({"meld"}));
    EXPECT_EQ(names("python3|/opt/x/main.py|"), QStringList());
    EXPECT_EQ(names("java|-jar|x|"), QStringList());
    EXPECT_EQ(names("python3|"), QStringList());
    EXPECT_EQ(names("sh|-c|/bin/sh|"), QStringList());
    EXPECT_EQ(names("thing: worker|"), list({"thing:"}));
    EXPECT_EQ(names(""), QStringList());
}

TEST(ProcessApplication, ReadsThisProcess) {
    const ProcessFacts facts = readProcessFacts(getpid());
    EXPECT_TRUE(facts.executableNames.contains(QStringLiteral("linux_apps_fast_tests")));
    EXPECT_TRUE(facts.executablePath.endsWith(QStringLiteral("/linux_apps_fast_tests")));
    EXPECT_GT(processStartTime(getpid()), 0U);
    EXPECT_EQ(readProcessFacts(0), ProcessFacts());
    EXPECT_EQ(readProcessFacts(0x7fff'ffff), ProcessFacts());
    EXPECT_EQ(processStartTime(0x7fff'ffff), 0U);
}

}  // namespace
}  // namespace kestrelbay
