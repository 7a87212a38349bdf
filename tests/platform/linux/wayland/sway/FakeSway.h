#pragma once

#include <functional>
#include <list>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include "platform/linux/wayland/sway/IpcMessage.h"

namespace kestrelbay::testing {

/// A server on a socket of sway's kind that answers with what a test says, byte for byte, on any
/// number of connections.
class FakeSway {
public:
    /// What is to be sent for a message. Nothing: the connection is closed. Called on threads of
    /// the server, one call at a time.
    using Answer = std::function<std::optional<QByteArray>(const sway::IpcMessage &)>;

    explicit FakeSway(Answer answer);
    ~FakeSway();
    FakeSway(const FakeSway &) = delete;
    FakeSway &operator=(const FakeSway &) = delete;

    [[nodiscard]] QString socketPath() const {
        return folder_.filePath(QStringLiteral("ipc.sock"));
    }

    /// Sends this to all who have subscribed to events.
    void tell(const QByteArray &bytes);
    /// Ends all connections.
    void hangUp();

private:
    void serve();
    void serveOne(int connection);

    const QTemporaryDir folder_;
    const Answer answer_;
    const int listening_;
    std::mutex mutex_;
    std::vector<int> connections_;
    std::vector<int> listeners_;
    std::list<std::thread> threads_;
    std::thread thread_;
};

}  // namespace kestrelbay::testing
