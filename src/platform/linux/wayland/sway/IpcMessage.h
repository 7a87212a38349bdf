#pragma once

#include <cstdint>
#include <optional>

#include <QByteArray>
#include <QByteArrayView>

namespace kestrelbay::sway {

/// What sway is asked for, and what its answer calls itself; the numbers are those of sway-ipc(7).
enum class MessageType : std::uint32_t {
    RunCommand = 0,
    Subscribe = 2,
    GetTree = 4,
    GetVersion = 7,
    GetConfig = 9,
    GetBindingState = 12,
    // Events.
    WorkspaceEvent = 0x80000000,
    ModeEvent = 0x80000002,
    WindowEvent = 0x80000003,
    BindingEvent = 0x80000005,
};

/// One message of sway's IPC, either way. The payload is JSON but for what is asked for.
struct IpcMessage {
    MessageType type{};
    QByteArray payload;

    bool operator==(const IpcMessage &) const = default;
};

/// The bytes of it on the socket.
[[nodiscard]] QByteArray toBytes(const IpcMessage &message);

/// Takes messages out of the bytes of a stream, whatever these are.
class IpcMessageReader {
public:
    /// A tree of 10,000 windows has some 20 MB; what claims to be longer than this is no message.
    static constexpr std::uint32_t kLongestPayload = 64U * 1024U * 1024U;

    void append(QByteArrayView bytes) { waiting_.append(bytes); }

    /// The next one that has come as a whole.
    [[nodiscard]] std::optional<IpcMessage> next();

    /// These are not messages of sway's. Nothing comes after that.
    [[nodiscard]] bool isForeign() const { return isForeign_; }

private:
    QByteArray waiting_;
    bool isForeign_ = false;
};

}  // namespace kestrelbay::sway
