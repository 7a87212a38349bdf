#include "platform/linux/SessionSources.h"

#include <optional>

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "fakes/FakeSystemLog.h"
#include "platform/linux/wayland/gnome/FakeExtension.h"
#include "support/bus/FakeShortcutsPortal.h"
#include "support/bus/PrivateSessionBus.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {
namespace {

using testing::FakeExtension;
using testing::FakeShortcutsPortal;

/// A Wayland session of GNOME's.
class SessionSourcesTest : public ::testing::Test {
protected:
    SessionSourcesTest() {
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus_.address().toUtf8());
        qputenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
        qputenv("XDG_DATA_HOME", data_.path().toUtf8());
        qputenv("GSETTINGS_BACKEND", "memory");
    }
    ~SessionSourcesTest() override {
        for (const char *const name :
             {"DBUS_SESSION_BUS_ADDRESS", "XDG_CURRENT_DESKTOP", "XDG_DATA_HOME"})
            qunsetenv(name);
    }

    testing::PrivateSessionBus bus_;
    QTemporaryDir data_;
    FakeSystemLog log_;
    SessionSources sources_{{.isWaylandSession = true}, log_};
};

TEST_F(SessionSourcesTest, PrefersGnomesExtensionToThePortal) {
    const FakeShortcutsPortal portal(bus_.address());
    const FakeExtension extension(bus_.address());
    EXPECT_EQ(sources_.hotkeysInWords(), u"KestrelBay's extension of GNOME Shell"_s);
    EXPECT_EQ(sources_.windowsInWords(), u"KestrelBay's extension of GNOME Shell"_s);
}

TEST_F(SessionSourcesTest, HasThePortalWhereGnomesExtensionIsMissingWhichItOffersAllTheSame) {
    const FakeShortcutsPortal portal(bus_.address());
    EXPECT_EQ(sources_.hotkeysInWords(), u"the desktop portal's global shortcuts, version 1"_s);
    EXPECT_EQ(sources_.windowsInWords(), u"none"_s);
    EXPECT_NE(sources_.desktopExtension(), nullptr);
}

TEST_F(SessionSourcesTest, WaitsForGnomesExtensionWhereThereIsNoPortal) {
    EXPECT_EQ(sources_.hotkeysInWords(),
              u"KestrelBay's extension of GNOME Shell, which is not enabled"_s);
    EXPECT_EQ(sources_.windowsInWords(), sources_.hotkeysInWords());
}

}  // namespace
}  // namespace kestrelbay
