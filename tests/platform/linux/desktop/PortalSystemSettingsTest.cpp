#include "platform/linux/desktop/PortalSystemSettings.h"

#include <chrono>
#include <memory>
#include <optional>

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QFile>

#include <gtest/gtest.h>

#include "platform/SystemSettingsContract.h"
#include "platform/linux/bus/SessionBus.h"
#include "platform/linux/glib/GObjectPtr.h"
#include "support/Poll.h"
#include "support/bus/FakeSettingsPortal.h"
#include "support/bus/PrivateSessionBus.h"

namespace kestrelbay::testing {
namespace {

using Portal = FakeSettingsPortal;

constexpr const char *kAddressVariable = "DBUS_SESSION_BUS_ADDRESS";

/// What the user has set for all programs of a desktop with GSettings.
void setDesktopScheme(const char *scheme) {
    const GObjectPtr<GSettings> settings(g_settings_new("org.gnome.desktop.interface"));
    g_settings_set_string(settings.get(), "color-scheme", scheme);
}

/// A bus, perhaps a portal on it, and the settings that are tested.
class Choice {
public:
    Choice() {
        setDesktopScheme("default");
        qputenv(kAddressVariable, bus_.address().toUtf8());
    }
    ~Choice() { qunsetenv(kAddressVariable); }

    void startPortal(std::uint32_t scheme, Portal::Manner manner = Portal::Manner::Current) {
        portal_.emplace(bus_.address(), scheme, manner);
    }
    void start() {
        sessionBus_ = std::make_unique<SessionBus>();
        settings_ = std::make_unique<PortalSystemSettings>(sessionBus_->connection());
        settings_->setAppearanceHandler([this] { ++changes_; });
    }
    bool becomes(ColorScheme scheme) {
        return waitUntil([&] { return settings_->colorScheme() == scheme; });
    }
    /// Everything the portal has told so far was taken in: an answer to a question
    /// comes after it.
    void settle() const {
        // A connection holds signals back until the event loop has run.
        QCoreApplication::processEvents();
        const QDBusMessage answer = sessionBus_->connection().call(QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.portal.Desktop"),
            QStringLiteral("/org/freedesktop/portal/desktop"),
            QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Nothing")));
        EXPECT_EQ(QDBusError(answer).type(), QDBusError::UnknownMethod);
        QCoreApplication::sendPostedEvents();
    }

    PrivateSessionBus bus_;
    std::optional<Portal> portal_;
    std::unique_ptr<SessionBus> sessionBus_;
    std::unique_ptr<PortalSystemSettings> settings_;
    int changes_ = 0;
};

class PortalChoice {
public:
    PortalChoice() {
        choice_.startPortal(Portal::kPreferLight);
        choice_.start();
    }

    SystemSettings &settings() { return *choice_.settings_; }
    void choose(ColorScheme scheme) {
        choice_.portal_->setColorScheme(scheme == ColorScheme::Dark ? Portal::kPreferDark
                                                                    : Portal::kPreferLight);
    }
    void chooseAccent(const QColor &color) { choice_.portal_->setAccentColor(color); }
    void chooseContrast(bool isHigh) { choice_.portal_->setContrastHigh(isHigh); }
    void settle() { choice_.settle(); }

private:
    Choice choice_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Portal, SystemSettingsContract, PortalChoice);

class PortalSystemSettingsTest : public ::testing::Test, protected Choice {};

TEST_F(PortalSystemSettingsTest, KnowsAllWishesAtOnce) {
    startPortal(Portal::kPreferDark);
    portal_->setAccentColor(Qt::magenta);
    portal_->setContrastHigh(true);
    start();
    EXPECT_EQ(settings_->colorScheme(), ColorScheme::Dark);
    EXPECT_EQ(settings_->accentColor(), QColor(Qt::magenta));
    EXPECT_TRUE(settings_->isContrastHigh());
}

TEST_F(PortalSystemSettingsTest, TakesAColourThatIsNoneForNoWish) {
    startPortal(Portal::kPreferLight);
    portal_->setAccentColor(Qt::magenta);
    start();
    portal_->takeAccentColorBack();
    settle();
    EXPECT_EQ(settings_->accentColor(), std::nullopt);
}

TEST_F(PortalSystemSettingsTest, TakesNoPreferenceForLightWhateverElseIsSet) {
    setDesktopScheme("prefer-dark");
    startPortal(Portal::kNoPreference);
    start();
    settle();
    EXPECT_EQ(settings_->colorScheme(), ColorScheme::Light);
}

TEST_F(PortalSystemSettingsTest, FollowsAPortalThatComesLaterAndOneThatComesBack) {
    start();
    EXPECT_EQ(settings_->colorScheme(), ColorScheme::Light);
    startPortal(Portal::kPreferDark);
    EXPECT_TRUE(becomes(ColorScheme::Dark));
    EXPECT_TRUE(settings_->isPortalPresent());

    portal_.reset();
    EXPECT_TRUE(waitUntil([&] { return !settings_->isPortalPresent(); }));
    EXPECT_EQ(settings_->colorScheme(), ColorScheme::Dark);

    startPortal(Portal::kPreferLight);
    EXPECT_TRUE(becomes(ColorScheme::Light));
    EXPECT_EQ(changes_, 2);
}

TEST_F(PortalSystemSettingsTest, HasThePortalStarted) {
    QFile service(bus_.serviceFolder() + QStringLiteral("/portal.service"));
    ASSERT_TRUE(service.open(QIODevice::WriteOnly));
    service.write("[D-BUS Service]\nName=org.freedesktop.portal.Desktop\nExec=" +
                  QByteArray(KESTRELBAY_FAKE_SETTINGS_PORTAL) + " 1\n");
    service.close();
    start();
    EXPECT_TRUE(becomes(ColorScheme::Dark));
}

TEST_F(PortalSystemSettingsTest, StartsInSpiteOfAPortalThatKeepsSilent) {
    setDesktopScheme("prefer-dark");
    startPortal(Portal::kPreferLight, Portal::Manner::KeepsSilent);
    QElapsedTimer time;
    time.start();
    start();
    EXPECT_LT(time.elapsed(), 1000);
    // The desktop's own setting, until the portal says something.
    EXPECT_TRUE(becomes(ColorScheme::Dark));
    portal_->setColorScheme(Portal::kPreferLight);
    EXPECT_TRUE(becomes(ColorScheme::Light));
    settings_.reset();
    sessionBus_.reset();
    EXPECT_LT(time.elapsed(), 5000) << "waited for the portal at the end";
}

TEST_F(PortalSystemSettingsTest, AsksTheDesktopWhenThePortalHasNoSuchSetting) {
    setDesktopScheme("prefer-dark");
    startPortal(Portal::kPreferLight, Portal::Manner::WithoutColorScheme);
    start();
    EXPECT_TRUE(becomes(ColorScheme::Dark));
}

TEST_F(PortalSystemSettingsTest, AsksTheDesktopWhenThePortalAnswersNonsense) {
    setDesktopScheme("prefer-dark");
    startPortal(Portal::kPreferLight, Portal::Manner::AnswersText);
    start();
    EXPECT_TRUE(becomes(ColorScheme::Dark));
}

TEST_F(PortalSystemSettingsTest, IgnoresSignalsOfOtherSettingsAndOtherTypes) {
    startPortal(Portal::kPreferLight);
    start();
    const QString appearance = QStringLiteral("org.freedesktop.appearance");
    portal_->tellOther(appearance, QStringLiteral("reduced-motion"), 1U);
    portal_->tellOther(appearance, QStringLiteral("contrast"), QStringLiteral("1"));
    portal_->tellOther(appearance, QStringLiteral("accent-color"), QStringLiteral("red"));
    portal_->tellOther(QStringLiteral("org.example"), QStringLiteral("color-scheme"), 1U);
    portal_->tellOther(appearance, QStringLiteral("color-scheme"), QStringLiteral("1"));
    settle();
    EXPECT_EQ(settings_->colorScheme(), ColorScheme::Light);
    EXPECT_EQ(changes_, 0);
}

TEST_F(PortalSystemSettingsTest, FollowsTheDesktopWithoutAPortal) {
    setDesktopScheme("prefer-dark");
    start();
    EXPECT_TRUE(becomes(ColorScheme::Dark));
    setDesktopScheme("prefer-light");
    EXPECT_TRUE(becomes(ColorScheme::Light));
}

TEST_F(PortalSystemSettingsTest, SurvivesTheEndOfTheBus) {
    startPortal(Portal::kPreferDark);
    start();
    ASSERT_TRUE(becomes(ColorScheme::Dark));
    bus_.process().kill();
    EXPECT_TRUE(waitUntil([&] { return !settings_->isPortalPresent(); }));
    EXPECT_EQ(settings_->colorScheme(), ColorScheme::Dark);
}

TEST_F(PortalSystemSettingsTest, FollowsTheDesktopWhenTheBusHasGone) {
    setDesktopScheme("prefer-dark");
    start();
    EXPECT_TRUE(becomes(ColorScheme::Dark));
    // GSettings has a connection of its own, which ends programs by default.
    const auto names = [&] {
        return sessionBus_->connection().interface()->registeredServiceNames().value().size();
    };
    constexpr int kTheBusQtAndGSettings = 3;
    EXPECT_TRUE(waitUntil([&] { return names() == kTheBusQtAndGSettings; }));
    bus_.process().kill();
    EXPECT_TRUE(waitUntil([&] { return !sessionBus_->connection().isConnected(); }));
    for (const bool dark : {false, true}) {
        setDesktopScheme(dark ? "prefer-dark" : "prefer-light");
        EXPECT_TRUE(becomes(dark ? ColorScheme::Dark : ColorScheme::Light));
    }
}

TEST_F(PortalSystemSettingsTest, FollowsTheDesktopWithoutABus) {
    for (const char *address : {"", "unix:path=/nonexistent/bus"}) {
        qputenv(kAddressVariable, address);
        setDesktopScheme("prefer-dark");
        start();
        EXPECT_TRUE(becomes(ColorScheme::Dark));
        EXPECT_FALSE(settings_->isPortalPresent());
        EXPECT_FALSE(sessionBus_->connection().isConnected());
        settings_.reset();
        sessionBus_.reset();
    }
}

TEST_F(PortalSystemSettingsTest, HasNoPlaceWhereKeysAreAllowed) {
    start();
    EXPECT_FALSE(settings_->openAccessibilityPane());
}

TEST_F(PortalSystemSettingsTest, MayEndInItsOwnHandler) {
    startPortal(Portal::kPreferLight);
    start();
    settings_->setAppearanceHandler([this] { settings_.reset(); });
    portal_->setColorScheme(Portal::kPreferDark);
    EXPECT_TRUE(waitUntil([&] { return settings_ == nullptr; }));
}

}  // namespace
}  // namespace kestrelbay::testing
