#include "platform/linux/wayland/sway/windows/KeptWindows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QByteArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace kestrelbay::sway {
namespace {

using ::testing::ElementsAre;

QJsonObject object(const QByteArray &json) {
    return QJsonDocument::fromJson(json).object();
}

QJsonObject event(const QByteArray &change, const QByteArray &window) {
    return object(R"({"change": ")" + change + R"(", "container": )" + window + '}');
}

const QByteArray kTree = R"({"nodes": [{"type": "workspace", "name": "1", "nodes": [
    {"id": 4, "pid": 40, "app_id": "a", "focused": true},
    {"id": 5, "pid": 50, "app_id": "b"}]}]})";

class KeptWindowsTest : public ::testing::Test {
protected:
    KeptWindowsTest() {
        kept_.setInformed(true);
        kept_.takeIn(object(kTree), kept_.moment());
    }

    [[nodiscard]] std::vector<std::int64_t> order() {
        std::vector<std::int64_t> ids;
        for (const SwayWindow &window : kept_.known().value_or(std::vector<SwayWindow>()))
            ids.push_back(window.id);
        return ids;
    }

    KeptWindows kept_;
};

TEST_F(KeptWindowsTest, AreKnownFromATreeOn) {
    KeptWindows fresh;
    EXPECT_FALSE(fresh.known() || fresh.areKnown() || fresh.isLookDue());
    fresh.setInformed(true);
    EXPECT_TRUE(!fresh.known() && fresh.isLookDue());
    EXPECT_TRUE(kept_.areKnown() && !kept_.isLookDue());
    EXPECT_THAT(order(), ElementsAre(4, 5));
}

TEST_F(KeptWindowsTest, AreNotKnownByATreeOfAMomentBeforeAChange) {
    const std::uint64_t before = kept_.moment();
    kept_.takeIn(event("focus", R"({"id": 5, "pid": 50, "app_id": "b"})"));
    EXPECT_THAT(order(), ElementsAre(5, 4));
    kept_.takeIn(object(kTree), before);
    EXPECT_TRUE(!kept_.areKnown() && kept_.isLookDue());
    kept_.takeIn(object(R"({"nodes": [{"id": 4, "pid": 40}, {"id": 5, "pid": 50}]})"),
                 kept_.moment());
    EXPECT_THAT(order(), ElementsAre(5, 4)) << "a panel has the focus";
}

TEST_F(KeptWindowsTest, AreNotKnownByATreeOfAMomentBeforeARequest) {
    const std::uint64_t before = kept_.moment();
    kept_.willChange();
    EXPECT_FALSE(kept_.areKnown());
    kept_.takeIn(object(kTree), before);
    EXPECT_FALSE(kept_.areKnown());
    kept_.takeIn(object(kTree), kept_.moment());
    EXPECT_TRUE(kept_.areKnown());
}

TEST_F(KeptWindowsTest, AreNotKnownWhenNobodyAnswers) {
    kept_.takeIn(QJsonObject(), kept_.moment());
    EXPECT_FALSE(kept_.areKnown());
}

TEST_F(KeptWindowsTest, AreNotKnownWithoutEvents) {
    kept_.setInformed(false);
    EXPECT_FALSE(kept_.areKnown() || kept_.isLookDue());
    kept_.takeIn(object(kTree), kept_.moment());
    EXPECT_FALSE(kept_.areKnown());
}

TEST_F(KeptWindowsTest, AreNotKnownWithOneThatIsNotInTheTree) {
    kept_.takeIn(event("focus", R"({"id": 9, "pid": 90, "app_id": "c"})"));
    EXPECT_FALSE(kept_.areKnown());
}

TEST_F(KeptWindowsTest, AreNotKnownWhenOneIsCalledOtherwise) {
    kept_.takeIn(event("title", R"({"id": 5, "pid": 50, "app_id": "b"})"));
    EXPECT_TRUE(kept_.areKnown());
    kept_.takeIn(event("title", R"({"id": 5, "pid": 50, "app_id": "late"})"));
    EXPECT_FALSE(kept_.areKnown());
}

TEST_F(KeptWindowsTest, AreNotKnownAfterWhatIsNotUnderstood) {
    for (const char *json : {"{}", "[]", R"({"change": 7})", R"({"change": "title"})",
                             R"({"change": "mark", "container": 7})"}) {
        kept_.takeIn(object(json));
        EXPECT_TRUE(kept_.isLookDue()) << json;
        kept_.takeIn(object(kTree), kept_.moment());
        EXPECT_THAT(order(), ElementsAre(4, 5)) << json;
    }
}

}  // namespace
}  // namespace kestrelbay::sway
