#include <csignal>

#include <gtest/gtest.h>

#include <QStandardPaths>

#include "launcher/AppLauncher.h"
#include "model/ShortcutRule.h"
#include "platform/linux/apps/desktop.h"
#include "support/Poll.h"

namespace kestrelbay::testing {
namespace {

/// Programs for terminals, in each of the terminals that are installed.
class TerminalPrograms : public AppsDesktop, public ::testing::WithParamInterface<const char *> {
protected:
    void SetUp() override {
        AppsDesktop::SetUp();
        if (QStandardPaths::findExecutable(QLatin1String(GetParam())).isEmpty())
            GTEST_SKIP() << GetParam() << " is not installed";
        startWindowManager();
        PrivateHome::instance().offerPrograms(
            {QLatin1String(GetParam()), QStringLiteral("sh"), QStringLiteral("sleep")});
        startWorkspace();
    }
    void TearDown() override {
        if (workspace_)
            for (const auto &application : workspace().runningApplications())
                ::kill(static_cast<pid_t>(application->processIdentifier()), SIGTERM);
        AppsDesktop::TearDown();
    }

    static QString entry(const char *name, const QByteArray &lines) {
        return PrivateHome::instance().writeEntry(QLatin1String(name) + QStringLiteral(".desktop"),
                                                  lines);
    }
    void press(const QString &path) { AppLauncher(workspace(), log_).handle({.appPath = path}); }
    std::size_t windowCount() {
        return maker_->words(maker_->connection().root(), "_NET_CLIENT_LIST").size();
    }
    bool haveOneWindowEach(const QStringList &paths) {
        return std::ranges::all_of(paths, [this](const QString &path) {
            const Application application = waitForRunning(path);
            return application && application->windows().size() == 1;
        });
    }
};

TEST_P(TerminalPrograms, AreToldFromEachOtherAndFromTheTerminal) {
    const QString first = entry("first", "Terminal=true\nExec=sleep 600");
    const QString second = entry("second", "Terminal=true\nExec=sh -c \"sleep 601; true\"");
    const QString terminal = entry(GetParam(), "Exec=" + QByteArray(GetParam()));
    press(first);
    ASSERT_TRUE(haveOneWindowEach({first}));
    EXPECT_FALSE(running(terminal));
    EXPECT_TRUE(becomesActive(first));
    press(terminal);
    ASSERT_TRUE(haveOneWindowEach({first, terminal}));
    press(second);
    ASSERT_TRUE(haveOneWindowEach({first, second, terminal}));
    EXPECT_TRUE(becomesActive(second));

    for (const QString &path : {first, terminal, second, first}) {
        press(path);
        EXPECT_TRUE(becomesActive(path)) << path.toStdString();
    }
    EXPECT_EQ(windowCount(), 3U);
}

// gnome-terminal is started by the session bus, which here knows no services.
INSTANTIATE_TEST_SUITE_P(Linux, TerminalPrograms,
                         ::testing::Values("xterm", "xfce4-terminal", "mate-terminal", "konsole",
                                           "lxterminal"),
                         [](const auto &info) {
                             return QString(QLatin1String(info.param)).remove(u'-').toStdString();
                         });

}  // namespace
}  // namespace kestrelbay::testing
