#include "platform/linux/x11/keymap/X11KeyboardLayout.h"

#include <gtest/gtest.h>

#include "fixtures/QtPrinters.h"
#include "support/ChildProcess.h"
#include "support/KeyboardSettings.h"
#include "support/Poll.h"
#include "support/PrivateXServer.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::x11 {
namespace {

using testing::waitUntil;

constexpr KeyCode kT{17};

class X11KeyboardLayoutTest : public ::testing::Test {
protected:
    void setLayouts(const QString &names) {
        testing::ChildProcess process(u"setxkbmap"_s, {u"-layout"_s, names}, server_.environment());
        ASSERT_TRUE(process.waitForExit());
        ASSERT_EQ(process.exitCode(), 0) << process.output().toStdString();
    }
    [[nodiscard]] bool prints(const QString &cap) {
        return waitUntil([&] { return layout_.printedOn(kT) == cap; });
    }

    testing::PrivateXServer server_;
    X11KeyboardLayout layout_{server_.displayName()};
};

TEST_F(X11KeyboardLayoutTest, KnowsTheLayoutAtOnce) {
    EXPECT_EQ(layout_.printedOn(kT), u"T"_s);
    EXPECT_EQ(layout_.printedOn(key::kEscape), QString());
}

TEST_F(X11KeyboardLayoutTest, FollowsAnotherLayoutAndTells) {
    QStringList told;
    layout_.setChangeHandler([&] { told.append(layout_.printedOn(kT)); });
    setLayouts(u"us,ru"_s);
    testing::KeyboardSettings keyboard(server_.displayName());
    keyboard.useLayout(1);
    EXPECT_TRUE(prints(u"Е"_s));
    keyboard.useLayout(0);
    EXPECT_TRUE(prints(u"T"_s));
    setLayouts(u"us(dvorak)"_s);
    EXPECT_TRUE(prints(u"Y"_s));
    EXPECT_EQ(told, (QStringList{u"Е"_s, u"T"_s, u"Y"_s})) << "of what has not changed as well";
}

TEST_F(X11KeyboardLayoutTest, TellsNobodyOnceTheHandlerIsTakenBack) {
    int told = 0;
    layout_.setChangeHandler([&] { ++told; });
    layout_.setChangeHandler({});
    setLayouts(u"ru"_s);
    EXPECT_TRUE(prints(u"Е"_s));
    EXPECT_EQ(told, 0);
}

TEST(X11KeyboardLayout, KeepsTheLastLayoutOfAServerThatHasGone) {
    auto server = std::make_unique<testing::PrivateXServer>();
    X11KeyboardLayout layout(server->displayName());
    server.reset();
    EXPECT_FALSE(
        waitUntil([&] { return layout.printedOn(kT).isEmpty(); }, std::chrono::milliseconds(100)));
    EXPECT_EQ(X11KeyboardLayout(u":nowhere"_s).printedOn(kT), QString());
}

}  // namespace
}  // namespace kestrelbay::x11
