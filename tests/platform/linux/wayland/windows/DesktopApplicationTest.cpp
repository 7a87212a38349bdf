#include "platform/linux/wayland/windows/DesktopApplication.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/wayland/windows/Desktop.h"
#include "platform/linux/wayland/windows/WindowMatches.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::wayland {
namespace {

using ::testing::SizeIs;

class IdleDesktop final : public Desktop {
public:
    void listen(News /*news*/) override {}
    [[nodiscard]] std::vector<DesktopWindow> read() override { return {}; }
    void askAhead() override {}
    [[nodiscard]] std::vector<DesktopWindow> readAsked() override { return {}; }
    bool hide(std::span<const std::int64_t> /*windows*/) override { return true; }
    bool bringForward(std::span<const std::int64_t> /*hidden*/, std::int64_t /*focused*/) override {
        return true;
    }
};

TEST(DesktopApplication, HasWindowsAlsoWhenNobodyTellsItsProcess) {
    DesktopEntry entry;
    entry.path = u"/apps/a.desktop"_s;
    entry.id = u"a"_s;
    DesktopWindow window;
    window.id = 1;
    window.facts.className = u"a"_s;
    WindowMatches matches([](std::int64_t, ProcessFacts &) {});
    const Picture picture =
        matches.picture({window}, std::make_shared<const ApplicationIndex>(std::vector{entry}));
    const std::vector<ApplicationGroup> groups = groupApplications(picture);
    ASSERT_THAT(groups, SizeIs(1));
    const DesktopApplication application(std::make_shared<IdleDesktop>(), picture, groups.front());
    EXPECT_EQ(application.bundleURL(), QUrl::fromLocalFile(entry.path));
    EXPECT_THAT(application.windows(), SizeIs(1));
    // Nobody looks at the windows of what is no process.
    EXPECT_GE(application.processIdentifier(), ProcessIdentifier{1});
}

}  // namespace
}  // namespace kestrelbay::wayland
