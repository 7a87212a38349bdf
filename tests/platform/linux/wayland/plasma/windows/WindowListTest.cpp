#include "platform/linux/wayland/plasma/windows/WindowList.h"

#include <array>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace kestrelbay::plasma {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char *kTwo = R"([
    {"name": "{b}", "title": "A note", "pid": 7, "class": "mousepad", "instance": "pad",
     "entry": "org.xfce.mousepad", "type": "normal", "parent": "", "isActive": true,
     "isUrgent": false, "isMinimised": false, "isOutOfTaskBars": false},
    {"name": "{a}", "title": "Other", "pid": 8, "class": "xterm", "instance": "xterm",
     "entry": "", "type": "normal", "parent": "", "isActive": false, "isUrgent": true,
     "isMinimised": true, "isOutOfTaskBars": false}])";

WindowType typeOf(const char *fields) {
    WindowList list;
    return list.take(QByteArray(R"([{"name": "{a}", )") + fields + "}]").front().facts.type;
}

TEST(WindowListTest, HasWhatTheScriptTells) {
    WindowList list;
    const auto windows = list.take(kTwo);
    ASSERT_THAT(windows, SizeIs(2));
    EXPECT_EQ(windows[0].title, u"A note"_s);
    EXPECT_EQ(windows[0].facts.pid, 7);
    EXPECT_EQ(windows[0].facts.className, u"mousepad"_s);
    EXPECT_EQ(windows[0].facts.instance, u"pad"_s);
    EXPECT_EQ(windows[0].facts.kdeDesktopFile, u"org.xfce.mousepad"_s);
    EXPECT_EQ(windows[0].facts.type, WindowType::Normal);
    EXPECT_TRUE(windows[0].isFocused && !windows[0].isUrgent && !windows[0].isHidden);
    EXPECT_TRUE(!windows[1].isFocused && windows[1].isUrgent && windows[1].isHidden);
}

TEST(WindowListTest, NumbersAWindowOnceAndNoOtherOneTheSame) {
    WindowList list;
    const auto before = list.take(kTwo);
    const auto after = list.take(R"([{"name": "{c}"}, {"name": "{a}"}])");
    EXPECT_EQ(after[0].id, before[1].id);
    EXPECT_NE(after[1].id, before[0].id);
    EXPECT_EQ(list.take(R"([{"name": "{b}"}])").front().id, after[1].id + 1);
}

TEST(WindowListTest, HasTheLastUsedOneFirst) {
    constexpr const char *kThree = R"([{"name": "{a}"}, {"name": "{b}"}, {"name": "{c}"}])";
    WindowList list;
    const auto told = list.take(kThree);
    list.noteUse(u"{a}"_s);
    list.noteUse(u"{c}"_s);
    const auto used = list.take(kThree);
    EXPECT_EQ(used[0].id, told[2].id);
    EXPECT_EQ(used[1].id, told[0].id);
    EXPECT_EQ(used[2].id, told[1].id);
    EXPECT_EQ(list.take(kTwo).front().id, told[1].id);
}

TEST(WindowListTest, KnowsTheNamesOfWindowsThatAreThere) {
    WindowList list;
    const auto windows = list.take(kTwo);
    const std::array ids{windows[1].id, std::int64_t{99}, windows[0].id};
    EXPECT_EQ(list.namesOf(ids), (QJsonArray{u"{a}"_s, u"{b}"_s}));
    (void)list.take("[]");
    EXPECT_EQ(list.namesOf(ids), QJsonArray());
}

TEST(WindowListTest, TellsWindowsToSwitchToFromOthers) {
    EXPECT_EQ(typeOf(R"("type": "normal")"), WindowType::Normal);
    EXPECT_EQ(typeOf(R"("type": "normal", "isOutOfTaskBars": true)"), WindowType::Utility);
    EXPECT_EQ(typeOf(R"("type": "normal", "parent": "{p}")"), WindowType::Dialog);
    EXPECT_EQ(typeOf(R"("type": "dialog")"), WindowType::Dialog);
    EXPECT_EQ(typeOf(R"("type": "utility")"), WindowType::Utility);
    EXPECT_EQ(typeOf(R"("type": "other")"), WindowType::Decoration);
    EXPECT_EQ(typeOf(R"("type": 7)"), WindowType::Decoration);
}

TEST(WindowListTest, IsEmptyForWhatIsNoList) {
    WindowList list;
    EXPECT_THAT(list.take(""), IsEmpty());
    EXPECT_THAT(list.take("{}"), IsEmpty());
    EXPECT_THAT(list.take("no JSON"), IsEmpty());
}

}  // namespace
}  // namespace kestrelbay::plasma
