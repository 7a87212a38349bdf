#include "platform/linux/wayland/sway/SwayIpc.h"

#include <QJsonArray>
#include <QJsonObject>

#include <gtest/gtest.h>

#include "platform/linux/wayland/sway/FakeSway.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::sway {
namespace {

using kestrelbay::testing::FakeSway;

/// Long enough for any answer that comes, and awaited only by those that get none.
constexpr std::chrono::milliseconds kShort{50};

FakeSway::Answer always(const QByteArray &bytes) {
    return [bytes](const IpcMessage &) { return bytes; };
}

TEST(SwayIpc, GetsTheAnswerToWhatItAsks) {
    const FakeSway sway([](const IpcMessage &asked) {
        const QByteArray answer = R"({"you": ")" + asked.payload + "\"}";
        return toBytes({MessageType::WindowEvent, "{}"}) + toBytes({asked.type, answer});
    });
    SwayIpc ipc(sway.socketPath());
    for (const char *text : {"a", "b"}) {
        const auto answer = ipc.ask(MessageType::RunCommand, text);
        ASSERT_TRUE(answer) << ipc.error().toStdString();
        EXPECT_EQ(answer->object()["you"_L1].toString(), QLatin1String(text));
    }
}

TEST(SwayIpc, TellsOfEvents) {
    const QByteArray answer = toBytes({MessageType::Subscribe, R"({"success": true})"}) +
                              toBytes({MessageType::BindingEvent, R"({"change": "run"})"}) +
                              toBytes({MessageType::ModeEvent, R"({"change": "default"})"});
    const FakeSway sway(always(answer));
    SwayIpc ipc(sway.socketPath());
    ASSERT_TRUE(ipc.subscribe({u"binding"_s, u"mode"_s}));
    std::vector<SwayIpc::Event> events;
    while (events.size() < 2) {
        ASSERT_TRUE(ipc.isOpen());
        if (const auto event = ipc.nextEvent())
            events.push_back(*event);
    }
    EXPECT_EQ(events[0].type, MessageType::BindingEvent);
    EXPECT_EQ(events[1].json.object()["change"_L1].toString(), "default"_L1);
    EXPECT_FALSE(ipc.nextEvent());
    EXPECT_TRUE(ipc.isOpen());
}

TEST(SwayIpc, SaysWhenSubscribingIsRefused) {
    const FakeSway sway(always(toBytes({MessageType::Subscribe, R"({"success": false})"})));
    SwayIpc ipc(sway.socketPath());
    EXPECT_FALSE(ipc.subscribe({u"binding"_s}));
    EXPECT_EQ(ipc.error(), "sway does not tell of events"_L1);
}

TEST(SwayIpc, SaysThatNobodyIsThere) {
    for (const QString &path : {QString(), u"/nowhere/ipc.sock"_s, QString(300, u'x')}) {
        SwayIpc ipc(path);
        EXPECT_FALSE(ipc.isOpen());
        EXPECT_TRUE(ipc.error().contains("No such file"_L1)) << ipc.error().toStdString();
        EXPECT_FALSE(ipc.ask(MessageType::GetTree));
        EXPECT_FALSE(ipc.subscribe({}));
        EXPECT_FALSE(ipc.nextEvent());
    }
}

TEST(SwayIpc, SaysWhichSwayListens) {
    const FakeSway sway(always(toBytes({MessageType::GetVersion, R"({"human_readable": "1.7"})"})));
    EXPECT_EQ(versionOf(sway.socketPath()), "1.7"_L1);
    const FakeSway other(always("HTTP/1.1 400 Bad Request"));
    EXPECT_EQ(versionOf(other.socketPath()), QString());
    EXPECT_EQ(versionOf(u"/nowhere/ipc.sock"_s), QString());
    EXPECT_EQ(versionOf({}), QString());
}

struct BrokenAnswer {
    const char *name;
    std::optional<QByteArray> bytes;
    QString error;

    [[nodiscard]] bool isLate() const { return error == "sway does not answer"_L1; }
};

class BrokenSway : public ::testing::TestWithParam<BrokenAnswer> {};

TEST_P(BrokenSway, IsNamedAndHarmless) {
    const FakeSway sway([](const IpcMessage &) { return GetParam().bytes; });
    SwayIpc ipc(sway.socketPath(), GetParam().isLate() ? kShort : SwayIpc::kPatience);
    EXPECT_FALSE(ipc.ask(MessageType::GetTree));
    EXPECT_FALSE(ipc.isOpen());
    EXPECT_TRUE(ipc.error().startsWith(GetParam().error)) << ipc.error().toStdString();
    EXPECT_FALSE(ipc.ask(MessageType::GetTree));
}

INSTANTIATE_TEST_SUITE_P(
    All, BrokenSway,
    ::testing::Values(
        BrokenAnswer{"gone", std::nullopt, u"sway closed the connection"_s},
        BrokenAnswer{"silent", QByteArray(), u"sway does not answer"_s},
        BrokenAnswer{"another", "HTTP/1.1 400 Bad Request", u"what answers is not sway"_s},
        BrokenAnswer{"endless", QByteArray("i3-ipc\xff\xff\xff\xff\4\0\0\0", 14),
                     u"what answers is not sway"_s},
        BrokenAnswer{"half", toBytes({MessageType::GetTree, "{\"id\": 1}"}).chopped(3),
                     u"sway does not answer"_s},
        BrokenAnswer{"otherAnswer", toBytes({MessageType::GetVersion, "{}"}),
                     u"sway does not answer"_s},
        BrokenAnswer{"noJson", toBytes({MessageType::GetTree, "tree"}),
                     u"sway's message is not JSON"_s},
        BrokenAnswer{"empty", toBytes({MessageType::GetTree, {}}), u"sway's message is not JSON"_s},
        BrokenAnswer{"deep", toBytes({MessageType::GetTree, QByteArray(100'000, '[')}),
                     u"sway's message is not JSON"_s}),
    [](const auto &tested) { return tested.param.name; });

TEST(SwayIpc, ClosesWhenSwayGoesWhileItListens) {
    std::optional<FakeSway> sway;
    bool isFirst = true;
    sway.emplace([&](const IpcMessage &) -> std::optional<QByteArray> {
        if (!std::exchange(isFirst, false))
            return std::nullopt;
        return toBytes({MessageType::Subscribe, R"({"success": true})"});
    });
    SwayIpc ipc(sway->socketPath());
    ASSERT_TRUE(ipc.subscribe({u"binding"_s}));
    ASSERT_TRUE(ipc.send(MessageType::GetTree));
    while (ipc.isOpen())
        EXPECT_FALSE(ipc.nextEvent());
    EXPECT_EQ(ipc.error(), "sway closed the connection"_L1);
    EXPECT_EQ(ipc.descriptor(), -1);
}

}  // namespace
}  // namespace kestrelbay::sway
