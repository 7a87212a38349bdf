#include "platform/linux/desktop/LinuxSystemTray.h"

#include <array>
#include <chrono>
#include <memory>
#include <optional>

#include <gtest/gtest.h>

#include <QDBusMetaType>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "fakes/FakeSystemSettings.h"
#include "platform/SystemTrayContract.h"
#include "platform/linux/bus/SessionBus.h"
#include "support/FakeTray.h"
#include "support/Poll.h"
#include "support/PrivateXServer.h"
#include "support/bus/FakeBusObject.h"
#include "support/bus/FakeNotifierWatcher.h"
#include "support/bus/PrivateSessionBus.h"

namespace kestrelbay::testing {
namespace {

constexpr const char *kAddressVariable = "DBUS_SESSION_BUS_ADDRESS";
constexpr std::array<std::uint32_t, 3> kWhite{0xFFFF, 0xFFFF, 0xFFFF};
constexpr std::array<std::uint32_t, 3> kBlack{0, 0, 0};

constexpr std::chrono::milliseconds kNoGrace{0};
constexpr std::chrono::hours kForever{1};
constexpr QLatin1StringView kReader{"org.kestrelbay.Reader"};

/// A display and a bus, and the system tray that is tested.
class Panel {
public:
    Panel() { qputenv(kAddressVariable, bus_.address().toUtf8()); }
    ~Panel() { qunsetenv(kAddressVariable); }

    void start(std::chrono::milliseconds grace, const QString &desktop = {}) {
        LinuxSystemTray::Settings settings;
        settings.displayName = server_.displayName();
        settings.desktop = desktop;
        settings.graceForNotifiers = grace;
        area_ = std::make_unique<LinuxSystemTray>(sessionBus_.connection(), scheme_, settings);
    }
    void ask() {
        area_->whenAvailable([this] { ++calls_; });
        area_->setDarkHandler([this] { ++darkCalls_; });
    }
    bool isCalled() {
        return waitUntil([this] { return calls_ > 0; });
    }
    /// The key of a menu's Ctrl+, as a panel reads it that comes up on that desktop.
    QString commaOn(const QString &desktop) {
        watcher_.emplace(bus_.address(), true);
        start(kForever, desktop);
        // As Qt does when the first icon is made.
        area_->whenAvailable([this] {
            qDBusRegisterMetaType<QList<QStringList>>();
            ++calls_;
        });
        EXPECT_TRUE(isCalled());
        const FakeBusObject reader(
            bus_.address(), kReader, QStringLiteral("/"), [](const QDBusMessage &call) {
                const auto shortcut = qdbus_cast<QList<QStringList>>(call.arguments().constFirst());
                return call.createReply(shortcut.constFirst().constLast());
            });
        QDBusMessage message = QDBusMessage::createMethodCall(kReader, QStringLiteral("/"),
                                                              QString(), QStringLiteral("Read"));
        const QList<QStringList> shortcut{{QStringLiteral("Control"), QStringLiteral(",")}};
        message << QVariant::fromValue(shortcut);
        return sessionBus_.connection().call(message).arguments().value(0).toString();
    }

    PrivateXServer server_;
    PrivateSessionBus bus_;
    FakeSystemSettings scheme_;
    SessionBus sessionBus_;
    std::unique_ptr<LinuxSystemTray> area_;
    std::optional<FakeTray> tray_;
    std::optional<FakeNotifierWatcher> watcher_;
    int calls_ = 0;
    int darkCalls_ = 0;
};

/// Of a tray that embeds windows.
class EmbeddingPanel {
public:
    EmbeddingPanel() { panel_.start(kNoGrace); }

    [[nodiscard]] SystemTray &area() const { return *panel_.area_; }
    void bring() { panel_.tray_.emplace(panel_.server_.displayName()); }
    void setDark(bool dark) { panel_.tray_->setForeground(dark ? kWhite : kBlack); }
    bool eventually(const std::function<bool()> &condition) { return waitUntil(condition); }
    void settle() const { panel_.area_->waitForAnswer(); }

private:
    Panel panel_;
};

/// Of a panel that shows notifiers, on a desktop whose panel follows the colour scheme.
class NotifierPanel {
public:
    NotifierPanel() { panel_.start(kForever, QStringLiteral("KDE")); }

    [[nodiscard]] SystemTray &area() const { return *panel_.area_; }
    void bring() { panel_.watcher_.emplace(panel_.bus_.address(), true); }
    void setDark(bool dark) {
        panel_.scheme_.setColorScheme(dark ? ColorScheme::Dark : ColorScheme::Light);
        panel_.area_->colorSchemeChanged();
    }
    bool eventually(const std::function<bool()> &condition) { return waitUntil(condition); }
    void settle() const { panel_.area_->waitForAnswer(); }

private:
    Panel panel_;
};

using Panels = ::testing::Types<EmbeddingPanel, NotifierPanel>;
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, SystemTrayContract, Panels);

class LinuxSystemTrayTest : public ::testing::Test, protected Panel {};

TEST_F(LinuxSystemTrayTest, WaitsForAPanelBesideItsWatcher) {
    watcher_.emplace(bus_.address(), false);
    start(kForever);
    ask();
    area_->waitForAnswer();
    EXPECT_EQ(calls_, 0);
    EXPECT_EQ(area_->description(), QStringLiteral("none"));
    watcher_->registerHost();
    EXPECT_TRUE(isCalled());
    EXPECT_EQ(area_->description(), QStringLiteral("StatusNotifier host"));
}

TEST_F(LinuxSystemTrayTest, PrefersNotifiersWhileThereIsGrace) {
    tray_.emplace(server_.displayName());
    start(kForever);
    ask();
    area_->waitForAnswer();
    EXPECT_EQ(calls_, 0);
    watcher_.emplace(bus_.address(), true);
    EXPECT_TRUE(isCalled());
    EXPECT_EQ(area_->description(), QStringLiteral("StatusNotifier host"));
}

TEST_F(LinuxSystemTrayTest, MakesDoWithEmbeddingAfterwards) {
    tray_.emplace(server_.displayName());
    start(std::chrono::milliseconds(50));
    ask();
    EXPECT_TRUE(isCalled());
    EXPECT_EQ(area_->description(), QStringLiteral("XEmbed tray"));
    // Qt has chosen: what comes later changes nothing.
    watcher_.emplace(bus_.address(), true);
    area_->waitForAnswer();
    EXPECT_EQ(area_->description(), QStringLiteral("XEmbed tray"));
    tray_.reset();
    EXPECT_TRUE(waitUntil([&] { return !area_->isAvailable(); }));
}

TEST_F(LinuxSystemTrayTest, EmbedsWithoutABus) {
    qputenv(kAddressVariable, "unix:path=/nonexistent/bus");
    start(kNoGrace);
    ask();
    tray_.emplace(server_.displayName());
    EXPECT_TRUE(isCalled());
}

TEST_F(LinuxSystemTrayTest, FollowsATrayThatComesBackInOtherColours) {
    tray_.emplace(server_.displayName());
    tray_->setForeground(kBlack);
    start(kNoGrace);
    ask();
    ASSERT_TRUE(isCalled());
    EXPECT_EQ(area_->isDark(), false);
    tray_.reset();
    EXPECT_TRUE(waitUntil([&] { return area_->description() == QStringLiteral("none"); }));
    tray_.emplace(server_.displayName());
    tray_->setForeground(kWhite);
    EXPECT_TRUE(waitUntil([&] { return area_->isDark() == true; }));
    EXPECT_GT(darkCalls_, 0);
    EXPECT_EQ(calls_, 1);
}

TEST_F(LinuxSystemTrayTest, TakesAPanelThatSaysNothingForDark) {
    tray_.emplace(server_.displayName());
    start(kNoGrace);
    ask();
    ASSERT_TRUE(isCalled());
    EXPECT_EQ(area_->isDark(), true);
}

TEST_F(LinuxSystemTrayTest, LooksAtAPanelThatSaysNothing) {
    constexpr std::uint32_t kLightGround = 0xF0F0F0;
    constexpr std::uint32_t kDarkGround = 0x202020;
    tray_.emplace(server_.displayName());
    tray_->paintPanel(kLightGround);
    start(kNoGrace);
    ask();
    ASSERT_TRUE(isCalled());
    EXPECT_EQ(area_->isDark(), false);
    tray_->paintPanel(kDarkGround);
    area_->colorSchemeChanged();
    EXPECT_TRUE(waitUntil([&] { return area_->isDark() == true; }));
    EXPECT_EQ(darkCalls_, 1);
    // One that says that it is there before it is painted.
    tray_.reset();
    EXPECT_TRUE(waitUntil([&] { return area_->description() == QStringLiteral("none"); }));
    tray_.emplace(server_.displayName());
    EXPECT_TRUE(waitUntil([&] { return area_->description() == QStringLiteral("XEmbed tray"); }));
    tray_->paintPanel(kLightGround);
    EXPECT_TRUE(waitUntil([&] { return area_->isDark() == false; }));
    // What it says counts for more.
    tray_->setForeground(kWhite);
    EXPECT_TRUE(waitUntil([&] { return area_->isDark() == true; }));
}

TEST_F(LinuxSystemTrayTest, DoesNotFollowTheColourSchemeElsewhere) {
    start(kForever, QStringLiteral("ubuntu:GNOME"));
    ask();
    area_->colorSchemeChanged();
    EXPECT_EQ(darkCalls_, 0);
    EXPECT_EQ(area_->isDark(), true);
}

TEST_F(LinuxSystemTrayTest, BelievesAPanelOfBothKindsInItsColours) {
    tray_.emplace(server_.displayName());
    tray_->setForeground(kBlack);
    watcher_.emplace(bus_.address(), true);
    start(kForever, QStringLiteral("XFCE"));
    ask();
    ASSERT_TRUE(isCalled());
    EXPECT_EQ(area_->description(), QStringLiteral("StatusNotifier host"));
    EXPECT_EQ(area_->isDark(), false);
    tray_->setForeground(kWhite);
    EXPECT_TRUE(waitUntil([&] { return area_->isDark() == true; }));
    EXPECT_GT(darkCalls_, 0);
}

TEST_F(LinuxSystemTrayTest, NamesTheKeysOfMenusAsPanelsOfGtkReadThem) {
    EXPECT_EQ(commaOn(QStringLiteral("XFCE")), QStringLiteral("comma"));
}

TEST_F(LinuxSystemTrayTest, LeavesTheKeysOfMenusToPanelsOfQt) {
    EXPECT_EQ(commaOn(QStringLiteral("KDE")), QStringLiteral(","));
}

TEST_F(LinuxSystemTrayTest, HasInstalledIconsTintedWhereThatIsDone) {
    const QTemporaryDir data;
    const QString icons = data.filePath(QStringLiteral("icons/hicolor/symbolic/apps"));
    ASSERT_TRUE(QDir().mkpath(icons));
    ASSERT_TRUE(QFile(icons + QStringLiteral("/there-symbolic.svg")).open(QIODevice::WriteOnly));
    qputenv("XDG_DATA_HOME", data.path().toUtf8());
    const QString there = QStringLiteral("there-symbolic");
    watcher_.emplace(bus_.address(), true);
    for (const char *desktop : {"KDE", "ubuntu:GNOME", "XFCE", "MATE", "LXQt", ""}) {
        start(kForever, QLatin1String(desktop));
        area_->waitForAnswer();
        const bool isKnown = *desktop && qstrcmp(desktop, "LXQt") != 0;
        EXPECT_EQ(area_->tintsIcon(there), isKnown) << desktop;
        EXPECT_FALSE(area_->tintsIcon(QStringLiteral("missing-symbolic"))) << desktop;
    }
    watcher_.reset();
    tray_.emplace(server_.displayName());
    start(kNoGrace, QStringLiteral("XFCE"));
    ask();
    ASSERT_TRUE(isCalled());
    EXPECT_FALSE(area_->tintsIcon(there)) << "in a tray that embeds";
    qunsetenv("XDG_DATA_HOME");
}

TEST_F(LinuxSystemTrayTest, SurvivesTheEndOfTheBusAndOfTheDisplay) {
    tray_.emplace(server_.displayName());
    watcher_.emplace(bus_.address(), true);
    start(kForever);
    ask();
    ASSERT_TRUE(isCalled());
    bus_.process().kill();
    server_.process().kill();
    EXPECT_TRUE(waitUntil([&] { return area_->description() == QStringLiteral("none"); }));
}

TEST(LinuxSystemTrayWithoutDisplay, IsNone) {
    SessionBus bus;
    const FakeSystemSettings scheme;
    LinuxSystemTray::Settings settings;
    settings.displayName = QStringLiteral(":99999");
    LinuxSystemTray area(bus.connection(), scheme, settings);
    area.whenAvailable([] { FAIL(); });
    area.waitForAnswer();
    EXPECT_EQ(area.description(), QStringLiteral("none"));
}

}  // namespace
}  // namespace kestrelbay::testing
