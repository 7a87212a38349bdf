#pragma once

#include <functional>
#include <optional>
#include <thread>

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include "platform/linux/wayland/sway/IpcMessage.h"

namespace kestrelbay::testing {

/// A server on a socket of sway's kind that answers one connection after the other with what a
/// test says, byte for byte. Its thread ends when this object goes.
class FakeSway {
public:
    /// What is to be sent for a message. Nothing: the connection is closed.
    using Answer = std::function<std::optional<QByteArray>(const sway::IpcMessage &)>;

    explicit FakeSway(Answer answer);
    ~FakeSway();
    FakeSway(const FakeSway &) = delete;
    FakeSway &operator=(const FakeSway &) = delete;

    [[nodiscard]] QString socketPath() const {
        return folder_.filePath(QStringLiteral("ipc.sock"));
    }

private:
    void serve() const;
    void serveOne(int connection) const;

    const QTemporaryDir folder_;
    const Answer answer_;
    const int listening_;
    std::thread thread_;
};

}  // namespace kestrelbay::testing
