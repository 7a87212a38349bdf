#pragma once

#include <chrono>
#include <optional>

#include <QByteArray>
#include <QJsonDocument>
#include <QString>

#include "platform/linux/wayland/sway/IpcMessage.h"

namespace kestrelbay::sway {

/// $SWAYSOCK; empty outside sway.
[[nodiscard]] QString socketOfSession();

/// A connection to sway's IPC socket. Once something has failed it is closed for good, and error()
/// says why. Any one thread at a time.
class SwayIpc {
public:
    /// sway answers within a millisecond; this is for busy machines.
    static constexpr std::chrono::milliseconds kPatience{1000};

    explicit SwayIpc(const QString &socketPath, std::chrono::milliseconds patience = kPatience);
    ~SwayIpc();
    SwayIpc(const SwayIpc &) = delete;
    SwayIpc &operator=(const SwayIpc &) = delete;

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    /// As one phrase; empty while it is open.
    [[nodiscard]] const QString &error() const { return error_; }

    /// Sends one message and waits for its answer, events that come before it being dropped.
    /// So a connection is either asked or listened to. Not JSON counts as a failure.
    [[nodiscard]] std::optional<QJsonDocument> ask(MessageType type,
                                                   const QByteArray &payload = {});
    /// The halves of ask(), for who has something to do meanwhile.
    bool send(MessageType type, const QByteArray &payload = {});
    [[nodiscard]] std::optional<QJsonDocument> answer(MessageType type);

    /// Wants to be told of these events, each as sway calls it. False when sway did not agree.
    [[nodiscard]] bool subscribe(const QStringList &events);
    /// Readable when there are events, and when sway has gone. -1 once it is closed.
    [[nodiscard]] int descriptor() const { return descriptor_; }
    /// The next event that has come, without waiting. What is no JSON closes the connection.
    struct Event {
        MessageType type{};
        QJsonDocument json;
    };
    [[nodiscard]] std::optional<Event> nextEvent();

private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] std::optional<IpcMessage> receive(Clock::time_point end);
    /// False when nothing came until then, or it is closed.
    bool readMore(Clock::time_point end);
    [[nodiscard]] bool waitFor(short what, Clock::time_point end);
    [[nodiscard]] std::optional<QJsonDocument> parsed(const QByteArray &payload);
    void fail(const QString &error);

    const std::chrono::milliseconds patience_;
    int descriptor_ = -1;
    QString error_;
    IpcMessageReader reader_;
};

/// Of the sway that listens there, as people call it; empty when none does.
[[nodiscard]] QString versionOf(const QString &socketPath);

}  // namespace kestrelbay::sway
