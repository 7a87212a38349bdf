// What compositors make of it, where they are installed.

#include <array>
#include <memory>
#include <ostream>

#include <QCoreApplication>
#include <QStandardPaths>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/glib/BackgroundLoop.h"
#include "platform/linux/wayland/toplevels/CompositorSession.h"
#include "platform/linux/wayland/toplevels/ToplevelDesktop.h"
#include "support/Poll.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::wayland {
namespace {

using kestrelbay::testing::CompositorSession;
using kestrelbay::testing::waitUntil;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct CompositorTraits {
    const char *program;
    ToplevelProtocol protocol;
    bool minimizes;
    const char *terminal;
};

class ToplevelsUnderCompositorsTest : public ::testing::TestWithParam<CompositorTraits> {
protected:
    void SetUp() override {
        for (const char *const program : {GetParam().program, GetParam().terminal}) {
            if (QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty())
                GTEST_SKIP() << program << " is not installed";
        }
        session_ = std::make_unique<CompositorSession>(QString::fromLatin1(GetParam().program));
        desktop_ = std::make_unique<ToplevelDesktop>(session_->socketPath(), GetParam().protocol);
        ASSERT_GT(desktop_->version(), 0U);
    }

    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const DesktopWindow &window : desktop_->read())
            names.push_back(window.facts.className.toStdString());
        return names;
    }
    [[nodiscard]] DesktopWindow window(const QString &name) const {
        for (DesktopWindow &window : desktop_->read()) {
            if (window.facts.className == name)
                return window;
        }
        return {};
    }
    /// One after the other, each in front of those before.
    void open(const QStringList &names) {
        for (const QString &name : names) {
            session_->openWindow(name);
            ASSERT_TRUE(waitUntil([&] { return window(name).isFocused; })) << name.toStdString();
        }
    }

    std::unique_ptr<CompositorSession> session_;
    std::unique_ptr<ToplevelDesktop> desktop_;
};

TEST_P(ToplevelsUnderCompositorsTest, ListsBringsForwardAndKnowsTheOrderOfUse) {
    open({u"one"_s, u"two"_s, u"three"_s});
    EXPECT_THAT(names(), ElementsAre("three", "two", "one"));

    EXPECT_TRUE(desktop_->bringForward({}, window(u"one"_s).id));
    EXPECT_TRUE(waitUntil([this] { return window(u"one"_s).isFocused; }));
    EXPECT_THAT(names(), ElementsAre("one", "three", "two"));

    session_->closeWindow(u"three"_s);
    EXPECT_TRUE(waitUntil([this] { return names().size() == 2; }));
    EXPECT_THAT(names(), ElementsAre("one", "two"));
    EXPECT_TRUE(window(u"two"_s).title.startsWith(u"cat"_s));
}

TEST_P(ToplevelsUnderCompositorsTest, HidesAsFarAsItCan) {
    open({u"one"_s, u"two"_s});
    const std::array ids{window(u"two"_s).id};
    EXPECT_TRUE(desktop_->hide(ids));
    EXPECT_TRUE(waitUntil([this] { return window(u"one"_s).isFocused; }));
    EXPECT_EQ(window(u"two"_s).isHidden, GetParam().minimizes);
    EXPECT_FALSE(window(u"two"_s).isFocused);

    EXPECT_TRUE(desktop_->bringForward(ids, ids[0]));
    EXPECT_TRUE(waitUntil([this] { return window(u"two"_s).isFocused; }));
    EXPECT_FALSE(window(u"two"_s).isHidden);
}

TEST_P(ToplevelsUnderCompositorsTest, HasNoWindowsOfACompositorThatWasKilled) {
    open({u"one"_s});
    BackgroundLoop loop;
    desktop_->listen(
        {.loop = loop, .isWindowAwaited = [] { return false; }, .windowsChanged = [] {}});
    session_->killCompositor();
    EXPECT_TRUE(waitUntil([this] { return names().empty(); }));
    desktop_->askAhead();
    EXPECT_THAT(desktop_->readAsked(), IsEmpty());
    EXPECT_FALSE(desktop_->bringForward({}, 1));
}

constexpr std::array kCompositors{
    CompositorTraits{"sway", ToplevelProtocol::ForeignToplevelManagement, false, "foot"},
    CompositorTraits{"labwc", ToplevelProtocol::ForeignToplevelManagement, true, "foot"},
    CompositorTraits{"kwin_wayland", ToplevelProtocol::PlasmaWindowManagement, true, "xterm"},
};

INSTANTIATE_TEST_SUITE_P(Compositors, ToplevelsUnderCompositorsTest,
                         ::testing::ValuesIn(kCompositors),
                         [](const auto &tried) { return std::string(tried.param.program); });

}  // namespace
}  // namespace kestrelbay::wayland

int main(int argc, char **argv) {
    ::testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
