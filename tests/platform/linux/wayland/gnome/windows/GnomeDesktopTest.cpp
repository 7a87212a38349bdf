#include "platform/linux/wayland/gnome/windows/GnomeDesktop.h"

#include <array>
#include <memory>

#include <QDBusArgument>
#include <QDBusMetaType>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "../FakeExtension.h"
#include "support/Poll.h"
#include "support/bus/PrivateSessionBus.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::gnome {

/// A window as the extension tells of it.
struct ToldWindow {
    qulonglong id = 1;
    int pid = 0;
    QString className{};
    QString gtkApplicationId{};
    QString title{};
    unsigned type = 0;
    qulonglong transientFor = 0;
    bool isMinimised = false;
    bool isFocused = false;
    bool isUrgent = false;
};

QDBusArgument &operator<<(QDBusArgument &argument, const ToldWindow &window) {
    argument.beginStructure();
    argument << window.id << window.pid << window.className << window.className << QString()
             << window.gtkApplicationId << window.title << window.type << window.transientFor
             << window.isMinimised << window.isFocused << window.isUrgent;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, ToldWindow & /*window*/) {
    return argument;
}

namespace {

using kestrelbay::testing::FakeExtension;
using kestrelbay::testing::PrivateSessionBus;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class GnomeDesktopTest : public ::testing::Test {
protected:
    GnomeDesktopTest() {
        qDBusRegisterMetaType<ToldWindow>();
        qDBusRegisterMetaType<QList<ToldWindow>>();
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus_.address().toLatin1());
        extension_.emplace(bus_.address());
        desktop_.emplace(std::make_shared<ShellExtension>());
    }
    void show(const QList<ToldWindow> &windows) {
        extension_->setWindows(QVariant::fromValue(windows));
    }

    PrivateSessionBus bus_;
    std::optional<FakeExtension> extension_;
    std::optional<GnomeDesktop> desktop_;
};

TEST_F(GnomeDesktopTest, HasTheWindowsInTheOrderThatItWasTold) {
    show({{.id = 7, .pid = 99, .className = u"foot"_s, .title = u"shell"_s, .isFocused = true},
          {.id = 5,
           .className = u"mousepad"_s,
           .gtkApplicationId = u"org.xfce.mousepad"_s,
           .isMinimised = true,
           .isUrgent = true}});
    const auto windows = desktop_->read();
    ASSERT_EQ(windows.size(), 2U);
    EXPECT_EQ(windows[0].id, 7);
    EXPECT_EQ(windows[0].facts.pid, 99);
    EXPECT_EQ(windows[0].facts.className, u"foot"_s);
    EXPECT_EQ(windows[0].facts.instance, u"foot"_s);
    EXPECT_EQ(windows[0].title, u"shell"_s);
    EXPECT_TRUE(windows[0].isFocused);
    EXPECT_FALSE(windows[0].isHidden || windows[0].isUrgent);
    EXPECT_EQ(windows[1].facts.gtkApplicationId, u"org.xfce.mousepad"_s);
    EXPECT_TRUE(windows[1].isHidden && windows[1].isUrgent);
    EXPECT_FALSE(windows[1].isFocused);
}

TEST_F(GnomeDesktopTest, KnowsWhatKindAWindowIsOf) {
    const std::array kinds{
        std::pair{0U, WindowType::Normal},      std::pair{1U, WindowType::Decoration},
        std::pair{2U, WindowType::Decoration},  std::pair{3U, WindowType::Dialog},
        std::pair{4U, WindowType::Dialog},      std::pair{7U, WindowType::Utility},
        std::pair{12U, WindowType::Decoration}, std::pair{99U, WindowType::Decoration},
    };
    for (const auto &[number, type] : kinds) {
        show({{.type = number}});
        EXPECT_EQ(desktop_->read().at(0).facts.type, type) << number;
    }
    show({{.transientFor = 7}});
    EXPECT_EQ(desktop_->read().at(0).facts.type, WindowType::Dialog);
}

TEST_F(GnomeDesktopTest, AsksOnceForAPressThatWasAskedForAhead) {
    show({{.id = 7}});
    desktop_->askAhead();
    EXPECT_EQ(desktop_->readAsked().size(), 1U);
    EXPECT_EQ(extension_->calls().size(), 1);
}

TEST_F(GnomeDesktopTest, HasNoWindowsWithoutTheExtension) {
    extension_->disable();
    EXPECT_THAT(desktop_->read(), IsEmpty());
    EXPECT_FALSE(desktop_->hide(std::array<std::int64_t, 1>{7}));
}

TEST_F(GnomeDesktopTest, AsksForEachChangeInOneQuestion) {
    EXPECT_TRUE(desktop_->hide(std::array<std::int64_t, 2>{7, 8}));
    EXPECT_TRUE(desktop_->bringForward(std::array<std::int64_t, 2>{9, 8}, 7));
    EXPECT_THAT(extension_->calls(), ElementsAre(u"Minimise 7 8"_s, u"BringForward 9 8 7"_s));
}

}  // namespace
}  // namespace kestrelbay::gnome
