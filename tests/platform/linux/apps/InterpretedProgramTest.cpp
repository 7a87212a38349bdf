#include <csignal>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "launcher/AppLauncher.h"
#include "model/ShortcutRule.h"
#include "platform/linux/applications/matching/Processes.h"
#include "platform/linux/apps/desktop.h"
#include "support/ChildProcess.h"

namespace kestrelbay::testing {
namespace {

/// A Python program with a window that says nothing of itself, until the server ends.
constexpr const char *kProgram =
    "import ctypes\n"
    "x = ctypes.CDLL('libX11.so.6')\n"
    "x.XOpenDisplay.restype = ctypes.c_void_p\n"
    "for name in ('XDefaultRootWindow', 'XCreateSimpleWindow'):\n"
    "    getattr(x, name).restype = ctypes.c_ulong\n"
    "display = ctypes.c_void_p(x.XOpenDisplay(None))\n"
    "root = ctypes.c_ulong(x.XDefaultRootWindow(display))\n"
    "window = ctypes.c_ulong(x.XCreateSimpleWindow(display, root, 0, 0, 200, 100, 0, 0, 0))\n"
    "x.XMapWindow(display, window)\n"
    "event = ctypes.create_string_buffer(192)\n"
    "while True:\n"
    "    x.XNextEvent(display, event)\n";

/// Programs whose processes do not bear their names, started by somebody else.
class InterpretedProgram : public AppsDesktop {
protected:
    void SetUp() override {
        AppsDesktop::SetUp();
        for (const char *folder : {"one", "two"})
            home_.write(QLatin1String(folder) + QStringLiteral("/main.py"), kProgram);
        one_ = home_.path(QStringLiteral("one")).toUtf8();
        two_ = home_.path(QStringLiteral("two")).toUtf8();
        startWindowManager();
        startWorkspace();
    }

    [[nodiscard]] QString entry(const char *name, const QByteArray &exec) const {
        return home_.writeEntry(QLatin1String(name) + QStringLiteral(".desktop"), "Exec=" + exec);
    }
    [[nodiscard]] QString executable(const QString &relative, const QByteArray &content) const {
        QString path = home_.write(relative, content);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }
    /// Not by us.
    [[nodiscard]] std::unique_ptr<ChildProcess> start(const QByteArray &text) const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DISPLAY"), server_->displayName());
        return std::make_unique<ChildProcess>(
            QStringLiteral("sh"), QStringList{QStringLiteral("-c"), QString::fromUtf8(text)},
            environment);
    }
    void press(const QString &entryPath) {
        AppLauncher(workspace(), log_).handle({.appPath = entryPath});
    }

    const PrivateHome &home_ = PrivateHome::instance();
    QByteArray one_, two_;
};

TEST_F(InterpretedProgram, IsKnownByItsScript) {
    const QString one = entry("one", "python3 " + one_ + "/main.py %U");
    const QString inFolder = entry("folder", "sh -c \"cd " + one_ + " && exec python3 main.py\"");
    const QString two = entry("two", "python3 " + two_ + "/main.py");
    const auto program = start("cd " + one_ + " && exec python3 -O main.py --new");
    ASSERT_TRUE(waitForRunning(one));
    EXPECT_TRUE(running(inFolder));
    EXPECT_FALSE(running(two));
    const auto other = start("exec python3 " + two_ + "/main.py");
    ASSERT_TRUE(waitForRunning(two));
    EXPECT_EQ(running(one)->windows().size(), 1U);
    EXPECT_EQ(running(two)->windows().size(), 1U);
}

TEST_F(InterpretedProgram, IsKnownByTheScriptThatWaitsForIt) {
    const QString launcher = executable(QStringLiteral("suite/start.sh"),
                                        "#!/bin/sh\npython3 " + one_ + "/main.py\nexit\n");
    const QString suite = entry("suite", launcher.toUtf8());
    const QString two = entry("two", "python3 " + two_ + "/main.py");
    const auto program = start("exec " + launcher.toUtf8());
    EXPECT_TRUE(waitForRunning(suite));
    EXPECT_FALSE(running(two));
}

TEST_F(InterpretedProgram, IsKnownByItsAppImage) {
    const QString image = executable(QStringLiteral("Thing 1.0.AppImage"), "image");
    const QString thing = entry("thing", "\"" + image.toUtf8() + "\" %U");
    const QString inside = home_.path(QStringLiteral("mount/usr/bin/inner"));
    QDir().mkpath(QFileInfo(inside).path());
    QFile::remove(inside);
    ASSERT_TRUE(QFile::copy(QFile::decodeName(clientProgram()), inside));
    const QByteArray variables = "APPIMAGE='" + image.toUtf8() +
                                 "' APPDIR=" + home_.path(QStringLiteral("mount")).toUtf8() +
                                 " exec ";
    const auto program = start(variables + inside.toUtf8() + " --windows=1");
    ASSERT_TRUE(waitForRunning(thing));

    // What it starts inherits the variables.
    const QString one = entry("one", "python3 " + one_ + "/main.py");
    const auto other = start(variables + "python3 " + one_ + "/main.py");
    ASSERT_TRUE(waitForRunning(one));
    EXPECT_EQ(running(thing)->windows().size(), 1U);
}

TEST_F(InterpretedProgram, IsKnownByOurLaunch) {
    // Neither its class nor its file is that of the entry, and the launcher has ended.
    const QString launcher =
        executable(QStringLiteral("fork.sh"),
                   "#!/bin/sh\n" + clientProgram() + " --windows=1 --class=Nobody &\nexit 0\n");
    const QString forked = entry("forked", launcher.toUtf8());
    press(forked);
    const Application application = waitForRunning(forked);
    ASSERT_TRUE(application);
    press(forked);
    press(forked);
    EXPECT_EQ(running(forked)->windows().size(), 1U);
    ::kill(static_cast<pid_t>(application->processIdentifier()), SIGTERM);
}

}  // namespace
}  // namespace kestrelbay::testing
