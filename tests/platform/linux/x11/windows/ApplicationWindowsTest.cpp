#include <gtest/gtest.h>

#include "platform/linux/x11/windows/ApplicationWindows.h"
#include "platform/linux/x11/windows/WindowReport.h"

namespace kestrelbay::x11 {
namespace {

class Groups : public ::testing::Test {
protected:
    void add(std::initializer_list<std::size_t> entries, std::int64_t pid, const char *className,
             bool active = false) {
        WindowFacts facts;
        facts.pid = pid;
        facts.className = QLatin1String(className);
        std::vector<ApplicationMatch> matches;
        for (const std::size_t entry : entries)
            matches.push_back({entry, MatchReason::ClassIsId});
        ManagedWindow window;
        window.facts = std::make_shared<const WindowFacts>(facts);
        window.matches = std::make_shared<const std::vector<ApplicationMatch>>(matches);
        window.active = active;
        picture_.windows.push_back(window);
    }

    DesktopPicture picture_;
};

TEST_F(Groups, ComeInTheOrderOfTheirFrontMostWindows) {
    add({3}, 30, "c");
    add({1}, 10, "a", true);
    add({3}, 31, "c");
    const auto groups = groupApplications(picture_);
    ASSERT_EQ(groups.size(), 2U);
    EXPECT_EQ(groups[0].entry, 3U);
    EXPECT_EQ(groups[0].pid, 30);
    EXPECT_FALSE(groups[0].active);
    EXPECT_EQ(groups[0].windows, (std::vector<std::size_t>{0, 2}));
    EXPECT_EQ(groups[1].entry, 1U);
    EXPECT_TRUE(groups[1].active);
}

TEST_F(Groups, AWindowOfSeveralEntriesIsInAll) {
    add({4, 5}, 1, "x", true);
    const auto groups = groupApplications(picture_);
    ASSERT_EQ(groups.size(), 2U);
    EXPECT_TRUE(groups[0].active && groups[1].active);
    EXPECT_EQ(groups[1].entry, 5U);
}

TEST_F(Groups, WithoutAnEntryTheProcessOrTheClassHoldsThemTogether) {
    add({}, 7, "one");
    add({}, 7, "two");
    add({}, 0, "far");
    add({}, 0, "far");
    add({}, 0, "", true);
    const auto groups = groupApplications(picture_);
    ASSERT_EQ(groups.size(), 2U);
    EXPECT_EQ(groups[0].windows.size(), 2U);
    EXPECT_FALSE(groups[0].entry.has_value());
    EXPECT_EQ(groups[1].windows, (std::vector<std::size_t>{2, 3}));
    EXPECT_LT(groups[1].pid, 1);
}

TEST_F(Groups, AreReportedWindowByWindow) {
    DesktopEntry entry;
    entry.path = QStringLiteral("/apps/a.desktop");
    picture_.index = std::make_shared<const ApplicationIndex>(std::vector{entry, entry});
    add({0, 1}, 30, "c\nWindow 7: x");
    add({}, 0, "");
    const auto lines = describeWindows(picture_);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0],
              std::pair(QStringLiteral("Window 1"),
                        QStringLiteral("ordinary, class \"c?Window 7: x\", instance \"\", "
                                       "program unknown: /apps/a.desktop by its class, as "
                                       "desktop file id, /apps/a.desktop by its class, as "
                                       "desktop file id")));
    EXPECT_EQ(lines[1].second, QStringLiteral("ordinary, class \"\", instance \"\", "
                                              "no process here: no entry"));
}

}  // namespace
}  // namespace kestrelbay::x11
