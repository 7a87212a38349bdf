#include "platform/linux/wayland/sway/windows/SwayDesktop.h"

#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/wayland/sway/FakeSway.h"
#include "platform/linux/wayland/sway/windows/SwayApplication.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::sway {
namespace {

using kestrelbay::testing::FakeSway;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

QByteArray window(int id, const QByteArray &appId, bool isFocused = false) {
    return R"({"type": "con", "pid": )" + QByteArray::number(::getpid()) + R"(, "id": )" +
           QByteArray::number(id) + R"(, "app_id": ")" + appId + R"(", "focused": )" +
           (isFocused ? "true" : "false") + '}';
}

QByteArray workspace(const QByteArray &name, const QByteArrayList &windows) {
    return R"({"type": "workspace", "name": ")" + name + R"(", "nodes": [)" + windows.join(',') +
           "]}";
}

class SwayDesktopTest : public ::testing::Test {
protected:
    void show(const QByteArrayList &workspaces) {
        const std::lock_guard lock(mutex_);
        tree_ = R"({"nodes": [)" + workspaces.join(',') + "]}";
    }
    [[nodiscard]] QByteArrayList takeCommands() {
        const std::lock_guard lock(mutex_);
        return std::exchange(commands_, {});
    }
    [[nodiscard]] int treesAsked() {
        const std::lock_guard lock(mutex_);
        return treesAsked_;
    }
    void tellFocus(int id) {
        sway_.tell(
            toBytes({MessageType::WindowEvent, R"({"change": "focus", "container": {"id": )" +
                                                   QByteArray::number(id) + "}}"}));
    }
    [[nodiscard]] std::vector<std::int64_t> order() {
        std::vector<std::int64_t> ids;
        for (const KnownWindow &known : desktop_->read(index_).windows)
            ids.push_back(known.window.id);
        return ids;
    }
    [[nodiscard]] std::unique_ptr<SwayApplication> application(const QString &path) {
        const SwayPicture picture = desktop_->readAsked(index_);
        for (const ApplicationGroup &group : groupApplications(picture)) {
            auto found = std::make_unique<SwayApplication>(desktop_, picture, group);
            if (found->bundleURL() == QUrl::fromLocalFile(path))
                return found;
        }
        return nullptr;
    }

private:
    std::optional<QByteArray> answer(const IpcMessage &message) {
        const std::lock_guard lock(mutex_);
        if (message.type == MessageType::GetTree) {
            ++treesAsked_;
            return toBytes({message.type, tree_});
        }
        if (message.type == MessageType::RunCommand)
            commands_.append(message.payload);
        return toBytes({message.type, R"({"success": true})"});
    }

    std::mutex mutex_;
    QByteArray tree_ = "{}";
    QByteArrayList commands_;
    int treesAsked_ = 0;
    FakeSway sway_{[this](const IpcMessage &message) { return answer(message); }};

protected:
    static DesktopEntry entry(const QString &name) {
        DesktopEntry made;
        made.path = u"/apps/%1.desktop"_s.arg(name);
        made.id = name;
        made.startupWmClass = name;
        return made;
    }

    const std::shared_ptr<const ApplicationIndex> index_ =
        std::make_shared<const ApplicationIndex>(std::vector{entry(u"a"_s), entry(u"b"_s)});
    const std::shared_ptr<SwayDesktop> desktop_ =
        std::make_shared<SwayDesktop>(sway_.socketPath(), [](std::int64_t, ProcessFacts &) {});
};

TEST_F(SwayDesktopTest, HasTheWindowsInTheOrderOfTheirUse) {
    show(
        {workspace("1", {window(4, "a", true), window(5, "b")}), workspace("2", {window(6, "a")})});
    EXPECT_THAT(order(), ElementsAre(4, 5, 6));
    // The tree does not tell which of two workspaces' windows was used last.
    tellFocus(6);
    tellFocus(5);
    EXPECT_THAT(order(), ElementsAre(4, 5, 6));
    show(
        {workspace("1", {window(4, "a"), window(5, "b", true)}), workspace("2", {window(6, "a")})});
    EXPECT_THAT(order(), ElementsAre(5, 4, 6));
    show(
        {workspace("1", {window(5, "b", true)}), workspace("2", {window(6, "a"), window(7, "a")})});
    EXPECT_THAT(order(), ElementsAre(5, 6, 7));
}

TEST_F(SwayDesktopTest, AsksNothingMoreForAPressThatWasAnnounced) {
    show({workspace("1", {window(4, "a", true)})});
    desktop_->askAhead();
    desktop_->askAhead();
    ASSERT_TRUE(application(u"/apps/a.desktop"_s));
    EXPECT_EQ(treesAsked(), 1);
}

TEST_F(SwayDesktopTest, TakesNoOldAnswerForANewOne) {
    show({workspace("1", {window(4, "a", true)})});
    desktop_->askAhead();
    while (treesAsked() == 0) {
    }
    show({workspace("1", {window(5, "a", true)})});
    EXPECT_THAT(order(), ElementsAre(5));
}

TEST_F(SwayDesktopTest, ComesForwardByOneCommand) {
    show({workspace("1", {window(4, "a"), window(5, "b", true), window(6, "a")})});
    const auto found = application(u"/apps/a.desktop"_s);
    ASSERT_TRUE(found);
    EXPECT_FALSE(found->isActive());
    EXPECT_EQ(found->windows().size(), 2U);
    EXPECT_TRUE(found->activate());
    EXPECT_THAT(takeCommands(), ElementsAre("[con_id=4] focus"));
}

TEST_F(SwayDesktopTest, CyclesByOneCommand) {
    show({workspace("1", {window(4, "a", true), window(6, "a")})});
    const auto found = application(u"/apps/a.desktop"_s);
    ASSERT_TRUE(found);
    EXPECT_TRUE(found->isActive());
    const auto windows = found->windows();
    windows.back()->setMain();
    windows.back()->setFocused();
    found->activate();
    EXPECT_THAT(takeCommands(), ElementsAre("[con_id=6] focus"));
}

TEST_F(SwayDesktopTest, HidesInTheScratchpadAndComesBackToItsPlace) {
    show({workspace("1", {window(4, "a", true)}), workspace(R"(2: \"web\")", {window(6, "a")})});
    ASSERT_TRUE(application(u"/apps/a.desktop"_s)->hide());
    EXPECT_THAT(takeCommands(),
                ElementsAre("[con_id=6] move scratchpad; [con_id=4] move scratchpad; "));

    show({workspace("__i3_scratch", {window(4, "a"), window(6, "a")}), workspace("3", {})});
    {
        const auto found = application(u"/apps/a.desktop"_s);
        EXPECT_FALSE(found->isActive());
        for (const auto &element : found->windows()) {
            EXPECT_EQ(element->isMinimized(), true);
            element->setMinimized(false);
        }
        EXPECT_THAT(takeCommands(), IsEmpty());
        found->activate();
    }
    EXPECT_THAT(
        takeCommands(),
        ElementsAre("[con_id=6] move --no-auto-back-and-forth container to workspace "
                    "\"2: \\\"web\\\"\"; [con_id=6] floating disable; "
                    "[con_id=4] move --no-auto-back-and-forth container to workspace \"1\"; "
                    "[con_id=4] floating disable; [con_id=4] focus"));
}

TEST_F(SwayDesktopTest, ShowsWhatOthersHaveHidden) {
    show({workspace("__i3_scratch", {window(4, "a")})});
    ASSERT_TRUE(application(u"/apps/a.desktop"_s)->activate());
    EXPECT_THAT(takeCommands(), ElementsAre("[con_id=4] scratchpad show; [con_id=4] focus"));
}

TEST_F(SwayDesktopTest, ForgetsThePlaceOfWhatOthersHaveBroughtBack) {
    show({workspace("1", {window(4, "a", true)})});
    application(u"/apps/a.desktop"_s)->hide();
    show({workspace("2", {window(4, "a", true)})});
    EXPECT_THAT(order(), ElementsAre(4));
    show({workspace("__i3_scratch", {window(4, "a")})});
    static_cast<void>(takeCommands());
    application(u"/apps/a.desktop"_s)->activate();
    EXPECT_THAT(takeCommands(), ElementsAre("[con_id=4] scratchpad show; [con_id=4] focus"));
}

TEST_F(SwayDesktopTest, WithoutSwayHasNoWindows) {
    SwayDesktop nowhere(u"/nowhere/ipc.sock"_s, [](std::int64_t, ProcessFacts &) {});
    nowhere.askAhead();
    EXPECT_THAT(nowhere.readAsked(index_).windows, IsEmpty());
    EXPECT_EQ(nowhere.eventDescriptor(), -1);
    EXPECT_FALSE(nowhere.bringForward({}, 1));
}

}  // namespace
}  // namespace kestrelbay::sway
