#include "platform/linux/wayland/sway/windows/SwayTree.h"

#include <QJsonDocument>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace kestrelbay::sway {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<SwayWindow> windowsIn(const QByteArray &json) {
    return windowsOf(QJsonDocument::fromJson(json).object());
}

std::vector<std::int64_t> idsIn(const QByteArray &json) {
    std::vector<std::int64_t> ids;
    for (const SwayWindow &window : windowsIn(json))
        ids.push_back(window.id);
    return ids;
}

// What sway 1.7 answers, but for what nobody reads.
const QByteArray kTree = R"({"id": 1, "type": "root", "focus": [3], "nodes": [
    {"id": 2147483647, "type": "output", "name": "__i3", "focus": [2147483646], "nodes": [
        {"id": 2147483646, "type": "workspace", "name": "__i3_scratch", "focus": [], "nodes": [],
         "floating_nodes": [{"id": 9, "type": "floating_con", "name": "notes", "focus": [],
             "nodes": [], "floating_nodes": [], "pid": 90, "app_id": "notes"}]}]},
    {"id": 3, "type": "output", "name": "HEADLESS-1", "focus": [5, 4], "nodes": [
        {"id": 4, "type": "workspace", "name": "1", "focus": [6], "nodes": [
            {"id": 6, "type": "con", "name": "shell", "urgent": true, "focus": [], "nodes": [],
             "pid": 60, "app_id": "foot", "fullscreen_mode": 1}]},
        {"id": 5, "type": "workspace", "name": "2: web", "focus": [8, 7], "nodes": [
            {"id": 7, "type": "con", "focus": [11, 10], "nodes": [
                {"id": 10, "type": "con", "nodes": [], "pid": 100, "app_id": "a"},
                {"id": 11, "type": "con", "nodes": [], "pid": 110, "app_id": "b"}]}],
         "floating_nodes": [{"id": 8, "type": "floating_con", "focused": true, "nodes": [],
             "pid": 80, "app_id": null, "window": 4194307,
             "window_properties": {"class": "Gimp", "instance": "gimp", "window_role": "dock",
                                   "window_type": "utility", "transient_for": 12}}]}]}]})";

TEST(SwayTree, HasTheLastUsedWindowsFirst) {
    EXPECT_THAT(idsIn(kTree), ElementsAre(8, 11, 10, 6, 9));
}

TEST(SwayTree, TellsOfWindowsOfWayland) {
    const SwayWindow shell = windowsIn(kTree)[3];
    EXPECT_EQ(shell.facts.pid, 60);
    EXPECT_EQ(shell.facts.className, "foot"_L1);
    EXPECT_EQ(shell.facts.instance, "foot"_L1);
    EXPECT_EQ(shell.title, "shell"_L1);
    EXPECT_EQ(shell.workspace, "1"_L1);
    EXPECT_TRUE(shell.isUrgent);
    EXPECT_TRUE(shell.isFullscreen);
    EXPECT_FALSE(shell.isFocused || shell.isFloating || shell.isHidden);
}

TEST(SwayTree, TellsOfWindowsOfX) {
    const SwayWindow tool = windowsIn(kTree)[0];
    EXPECT_EQ(tool.facts.className, "Gimp"_L1);
    EXPECT_EQ(tool.facts.instance, "gimp"_L1);
    EXPECT_EQ(tool.facts.role, "dock"_L1);
    EXPECT_EQ(tool.facts.type, WindowType::Utility);
    EXPECT_EQ(tool.facts.transientFor, 12U);
    EXPECT_EQ(tool.workspace, "2: web"_L1);
    EXPECT_TRUE(tool.isFocused);
    EXPECT_TRUE(tool.isFloating);
}

TEST(SwayTree, TellsWhatIsInTheScratchpad) {
    const SwayWindow notes = windowsIn(kTree)[4];
    EXPECT_TRUE(notes.isHidden);
    EXPECT_EQ(notes.workspace, QString());
}

TEST(SwayTree, OfSomethingElseIsEmptyOrWhatCanBeUnderstood) {
    for (const char *json : {"", "[]", "{}", "7", R"({"nodes": 7})", R"({"nodes": [7, null, []]})",
                             R"({"nodes": [{"nodes": {"pid": 1}}]})"})
        EXPECT_THAT(idsIn(json), IsEmpty()) << json;
    const auto windows = windowsIn(
        R"({"nodes": [{"pid": "x", "id": -1.5, "focus": {}, "window_properties": {"class": 4}},
                      {"pid": 1e300, "type": [], "window_properties": [1]}]})");
    ASSERT_EQ(windows.size(), 2U);
    EXPECT_EQ(windows[0].facts.pid, 0);
    EXPECT_EQ(windows[1].facts.pid, 0);
}

}  // namespace
}  // namespace kestrelbay::sway
