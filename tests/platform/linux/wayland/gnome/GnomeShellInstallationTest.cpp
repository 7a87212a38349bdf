#include "platform/linux/wayland/gnome/GnomeShellInstallation.h"

#include <atomic>
#include <memory>

#include <QCoreApplication>
#include <QDBusVariant>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "FakeExtension.h"
#include "support/Poll.h"
#include "support/bus/FakeBusObject.h"
#include "support/bus/PrivateSessionBus.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::gnome {
namespace {

using kestrelbay::testing::FakeBusObject;
using kestrelbay::testing::FakeExtension;
using kestrelbay::testing::PrivateSessionBus;
using kestrelbay::testing::waitUntil;

class GnomeShellInstallationTest : public ::testing::Test {
protected:
    GnomeShellInstallationTest() {
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus_.address().toLatin1());
        qputenv("GSETTINGS_BACKEND", "memory");
        shell_.emplace(bus_.address(), u"org.gnome.Shell"_s, u"/org/gnome/Shell"_s,
                       [this](const QDBusMessage &call) -> std::optional<QDBusMessage> {
                           if (call.member() == u"Get") {
                               ++versionQuestions_;
                               return call.createReply(QVariant::fromValue(QDBusVariant(version_)));
                           }
                           return call.createReply(QVariantMap(known_));
                       });
        installation_ = std::make_unique<GnomeShellInstallation>(std::make_shared<ShellExtension>(),
                                                                 data_.path());
    }
    [[nodiscard]] QString pathOf(const QString &file) const {
        return data_.filePath(u"gnome-shell/extensions/kestrelbay@kestrelbay.org/"_s + file);
    }
    [[nodiscard]] QByteArray installed(const QString &file) const {
        QFile read(pathOf(file));
        return read.open(QFile::ReadOnly) ? read.readAll() : QByteArray();
    }

    PrivateSessionBus bus_;
    QTemporaryDir data_;
    QString version_ = u"43.9"_s;
    QVariantMap known_;
    std::atomic<int> versionQuestions_ = 0;
    std::optional<FakeBusObject> shell_;
    std::unique_ptr<GnomeShellInstallation> installation_;
};

TEST_F(GnomeShellInstallationTest, InstallsTheFormatThatTheShellReads) {
    EXPECT_EQ(installation_->state(), ExtensionState::Missing);
    installation_->install();
    EXPECT_TRUE(installed(u"extension.js"_s).contains("imports.gi"));
    EXPECT_TRUE(installed(u"metadata.json"_s).contains("\"43\""));
    version_ = u"48.1"_s;
    installation_->install();
    EXPECT_TRUE(installed(u"extension.js"_s).contains("export default class"));
    EXPECT_TRUE(installed(u"metadata.json"_s).contains("\"48\""));
}

TEST_F(GnomeShellInstallationTest, RenewsWhatAnotherVersionHasInstalled) {
    installation_->install();
    const QByteArray current = installed(u"extension.js"_s);
    QFile older(pathOf(u"extension.js"_s));
    ASSERT_TRUE(older.open(QFile::WriteOnly) && older.write("older") > 0);
    older.close();
    const FakeExtension extension(bus_.address());
    EXPECT_EQ(installation_->state(), ExtensionState::Enabled);
    installation_->renew();
    EXPECT_TRUE(waitUntil([&] { return installed(u"extension.js"_s) == current; }));
    EXPECT_EQ(installation_->state(), ExtensionState::Renewed);
}

TEST_F(GnomeShellInstallationTest, LeavesWhatIsNotInstalledOrUpToDate) {
    installation_->renew();
    installation_->install();
    installation_->renew();
    const FakeExtension extension(bus_.address());
    QCoreApplication::processEvents();
    EXPECT_TRUE(waitUntil([this] { return versionQuestions_ == 2; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(installation_->state(), ExtensionState::Enabled);
}

TEST_F(GnomeShellInstallationTest, FailsForAShellThatItDoesNotKnow) {
    version_ = u"3.38.4"_s;
    installation_->install();
    EXPECT_EQ(installation_->state(), ExtensionState::Failed);
    EXPECT_EQ(installed(u"extension.js"_s), QByteArray());
}

TEST_F(GnomeShellInstallationTest, FailsWithoutTheShell) {
    shell_.reset();
    installation_->install();
    EXPECT_EQ(installation_->state(), ExtensionState::Failed);
}

TEST_F(GnomeShellInstallationTest, IsEnabledWhileItIsThere) {
    const FakeExtension extension(bus_.address());
    EXPECT_EQ(installation_->state(), ExtensionState::Enabled);
}

}  // namespace
}  // namespace kestrelbay::gnome
