#include "platform/linux/wayland/toplevels/FoundAgain.h"

#include <array>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrelbay::wayland {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

DesktopWindow window(std::int64_t id, const char *appId, const char *title, std::int64_t pid = 0) {
    DesktopWindow window;
    window.id = id;
    window.title = QString::fromUtf8(title);
    window.facts.className = QString::fromUtf8(appId);
    window.facts.pid = pid;
    return window;
}

TEST(FoundAgain, HasTheWindowsInTheOrderOfThoseBefore) {
    const std::array before{window(1, "foot", "one"), window(2, "edit", "text"),
                            window(3, "foot", "two")};
    const std::array now{window(11, "foot", "two"), window(12, "foot", "one"),
                         window(13, "edit", "text")};
    EXPECT_THAT(foundAgain(before, now), ElementsAre(12, 13, 11));
}

TEST(FoundAgain, LeavesAWindowToTheOneThatIsMoreAlike) {
    const std::array before{window(1, "foot", "one"), window(2, "foot", "two")};
    const std::array now{window(11, "foot", "two"), window(12, "foot", "has changed")};
    EXPECT_THAT(foundAgain(before, now), ElementsAre(12, 11));
}

TEST(FoundAgain, HasNoneThatWereNotThereOrAreGone) {
    const std::array before{window(1, "gone", ""), window(2, "foot", "", 7)};
    const std::array now{window(11, "new", ""), window(12, "foot", "", 8)};
    EXPECT_THAT(foundAgain(before, now), IsEmpty());
}

}  // namespace
}  // namespace kestrelbay::wayland
