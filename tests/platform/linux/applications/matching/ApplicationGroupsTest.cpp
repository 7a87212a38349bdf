#include "platform/linux/applications/matching/ApplicationGroups.h"

#include <gtest/gtest.h>

#include "platform/linux/applications/matching/WindowDescription.h"

namespace kestrelbay {
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
        grouping_.add(count_++, facts, matches, active);
    }

    ApplicationGrouping grouping_;
    std::size_t count_ = 0;
};

TEST_F(Groups, ComeInTheOrderOfTheirFrontMostWindows) {
    add({3}, 30, "c");
    add({1}, 10, "a", true);
    add({3}, 31, "c");
    const auto groups = grouping_.take();
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
    const auto groups = grouping_.take();
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
    const auto groups = grouping_.take();
    ASSERT_EQ(groups.size(), 2U);
    EXPECT_EQ(groups[0].windows.size(), 2U);
    EXPECT_FALSE(groups[0].entry.has_value());
    EXPECT_EQ(groups[1].windows, (std::vector<std::size_t>{2, 3}));
    EXPECT_LT(groups[1].pid, 1);
}

TEST(WindowDescription, NamesTheEntriesAndWhy) {
    DesktopEntry entry;
    entry.path = QStringLiteral("/apps/a.desktop");
    const ApplicationIndex index(std::vector{entry, entry});
    WindowFacts facts;
    facts.pid = 30;
    facts.className = QStringLiteral("c\nWindow 7: x");
    EXPECT_EQ(
        describeWindow(facts, {{0, MatchReason::ClassIsId}, {1, MatchReason::ClassIsId}}, index),
        QStringLiteral("ordinary, class \"c?Window 7: x\", instance \"\", program unknown: "
                       "/apps/a.desktop by its class, as desktop file id, "
                       "/apps/a.desktop by its class, as desktop file id"));
    EXPECT_EQ(describeWindow({}, {}, index), QStringLiteral("ordinary, class \"\", instance \"\", "
                                                            "process unknown: no entry"));
}

}  // namespace
}  // namespace kestrelbay
