#include <array>
#include <map>
#include <memory>
#include <string_view>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/Platform.h"
#include "platform/linux/wayland/sway/FakeSway.h"
#include "platform/linux/x11/connection/XConnection.h"
#include "support/FakeTray.h"
#include "support/Poll.h"
#include "support/PrivateXServer.h"
#include "support/bus/FakeSettingsPortal.h"
#include "support/bus/PrivateSessionBus.h"

namespace kestrelbay::testing {
namespace {

/// The environment of a session, for the time of a test.
class LinuxPlatformDiagnostics : public ::testing::Test {
protected:
    ~LinuxPlatformDiagnostics() override {
        for (const char *name : {"DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_CURRENT_DESKTOP",
                                 "XDG_SESSION_TYPE", "SWAYSOCK"})
            qunsetenv(name);
    }

    static std::map<QString, QString> read() {
        const std::unique_ptr<Platform> platform = makePlatform();
        std::map<QString, QString> values;
        for (const auto &[name, value] : platform->diagnostics())
            EXPECT_TRUE(values.emplace(name, value).second) << qPrintable(name);
        return values;
    }
};

TEST_F(LinuxPlatformDiagnostics, TellOfADesktop) {
    const PrivateXServer server;
    const PrivateSessionBus bus;
    const FakeSettingsPortal portal(bus.address(), FakeSettingsPortal::kPreferDark);
    const auto manager = server.startWindowManager(QStringLiteral("openbox"));
    qputenv("DISPLAY", server.displayName().toLatin1());
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toLatin1());
    qputenv("XDG_CURRENT_DESKTOP", "XFCE");
    auto values = read();
    EXPECT_EQ(values[QStringLiteral("Desktop")], QStringLiteral("XFCE"));
    EXPECT_TRUE(values[QStringLiteral("Session")].contains(server.displayName()));
    EXPECT_TRUE(values[QStringLiteral("X server")].endsWith(QStringLiteral("screens: 1")))
        << qPrintable(values[QStringLiteral("X server")]);
    EXPECT_EQ(values[QStringLiteral("Window manager")], QStringLiteral("Openbox"));
    EXPECT_EQ(values[QStringLiteral("Compositing")], QStringLiteral("no"));
    EXPECT_TRUE(values[QStringLiteral("XInput")].startsWith(QStringLiteral("2.")));
    EXPECT_TRUE(values[QStringLiteral("Keyboard layout")].contains(QStringLiteral("layout us")));
    EXPECT_EQ(values[QStringLiteral("Tray")], QStringLiteral("none"));
    EXPECT_EQ(values[QStringLiteral("Session bus")], QStringLiteral("reachable"));
    EXPECT_EQ(values[QStringLiteral("Portal")], QStringLiteral("present"));
}

TEST_F(LinuxPlatformDiagnostics, TellOfAWindowManagerWhoseAnnouncementHasGone) {
    const PrivateXServer server;
    qputenv("DISPLAY", server.displayName().toLatin1());
    EXPECT_EQ(read()[QStringLiteral("Window manager")], QStringLiteral("none"));
    const x11::XConnection manager(server.displayName());
    const auto [selection, name, utf8] = x11::internAtoms(
        manager, std::array<std::string_view, 3>{"WM_S0", "_NET_WM_NAME", "UTF8_STRING"});
    const xcb_window_t window = manager.createInputOnlyWindow();
    xcb_set_selection_owner(manager.get(), window, selection, XCB_CURRENT_TIME);
    x11::synchronize(manager.get());
    EXPECT_EQ(read()[QStringLiteral("Window manager")], QStringLiteral("without a name"));
    xcb_change_property(manager.get(), XCB_PROP_MODE_REPLACE, window, name, utf8, 8, 6, "Keeper");
    x11::synchronize(manager.get());
    EXPECT_EQ(read()[QStringLiteral("Window manager")], QStringLiteral("Keeper"));
}

TEST_F(LinuxPlatformDiagnostics, TellOfWindowsAndWhatTheyAreTakenFor) {
    const PrivateXServer server;
    const QTemporaryDir home;
    const QString folder = home.filePath(QStringLiteral("applications"));
    ASSERT_TRUE(QDir().mkpath(folder));
    QFile entry(folder + QStringLiteral("/clock.desktop"));
    ASSERT_TRUE(entry.open(QIODevice::WriteOnly));
    entry.write("[Desktop Entry]\nType=Application\nName=C\nExec=true\nStartupWMClass=Ticker\n");
    entry.close();
    qputenv("XDG_DATA_HOME", QFile::encodeName(home.path()));
    const auto manager = server.startWindowManager(QStringLiteral("openbox"));
    qputenv("DISPLAY", server.displayName().toLatin1());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const ChildProcess known(QStringLiteral("xterm"),
                             {QStringLiteral("-class"), QStringLiteral("Ticker"),
                              QStringLiteral("-T"), QStringLiteral("secret")},
                             environment);
    QString window;
    EXPECT_TRUE(waitUntil([&] {
        window = read()[QStringLiteral("Window 1")];
        return !window.isEmpty();
    }));
    qunsetenv("XDG_DATA_HOME");
    EXPECT_TRUE(
        window.startsWith(QStringLiteral("ordinary, class \"Ticker\", instance \"xterm\", ")))
        << qPrintable(window);
    EXPECT_TRUE(window.endsWith(folder + QStringLiteral("/clock.desktop by its class name, "
                                                        "as StartupWMClass")))
        << qPrintable(window);
    EXPECT_FALSE(window.contains(QStringLiteral("secret")));
}

TEST_F(LinuxPlatformDiagnostics, TellWhereHotkeysAndWindowsComeFrom) {
    const QString hotkeys = QStringLiteral("Source of hotkeys");
    const QString windows = QStringLiteral("Source of windows");
    EXPECT_EQ(read()[hotkeys], QStringLiteral("the X server"));
    EXPECT_EQ(read()[windows], QStringLiteral("none"));
    qputenv("XDG_SESSION_TYPE", "wayland");
    EXPECT_EQ(read()[hotkeys], QStringLiteral("none in this session"));
    const FakeSway sway([](const sway::IpcMessage &asked) {
        return sway::toBytes({asked.type, R"({"human_readable": "1.7"})"});
    });
    qputenv("SWAYSOCK", QFile::encodeName(sway.socketPath()));
    EXPECT_EQ(read()[hotkeys], QStringLiteral("bindings of sway 1.7"));
    EXPECT_EQ(read()[windows], QStringLiteral("the tree of sway 1.7"));
}

TEST_F(LinuxPlatformDiagnostics, TellWhatIsMissing) {
    auto values = read();
    EXPECT_EQ(values[QStringLiteral("X server")], QStringLiteral("none (DISPLAY is not set)"));
    EXPECT_EQ(values[QStringLiteral("Desktop")], QStringLiteral("not set"));
    EXPECT_EQ(values[QStringLiteral("Own windows")], QStringLiteral("offscreen"));
    EXPECT_EQ(values[QStringLiteral("Tray")], QStringLiteral("none"));
    EXPECT_EQ(values[QStringLiteral("Session bus")], QStringLiteral("not reachable"));
    EXPECT_EQ(values[QStringLiteral("Portal")], QStringLiteral("not present"));
    EXPECT_FALSE(values.contains(QStringLiteral("Window manager")));

    qputenv("DISPLAY", ":99999");
    EXPECT_EQ(read()[QStringLiteral("X server")], QStringLiteral(":99999 does not answer"));
}

}  // namespace
}  // namespace kestrelbay::testing
