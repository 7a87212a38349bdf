#include "platform/linux/wayland/sway/IpcMessage.h"

#include <algorithm>
#include <cstring>

namespace kestrelbay::sway {

namespace {

constexpr QByteArrayView kMagic = "i3-ipc";
constexpr qsizetype kWord = sizeof(std::uint32_t);
constexpr qsizetype kHeader = kMagic.size() + 2 * kWord;

// Numbers are in the byte order of the machine.

QByteArrayView bytesOf(const std::uint32_t &number) {
    return {reinterpret_cast<const char *>(&number), kWord};
}

std::uint32_t numberAt(const QByteArray &bytes, qsizetype position) {
    std::uint32_t number = 0;
    std::memcpy(&number, bytes.constData() + position, sizeof(number));
    return number;
}

}  // namespace

QByteArray toBytes(const IpcMessage &message) {
    const auto length = static_cast<std::uint32_t>(message.payload.size());
    const auto type = static_cast<std::uint32_t>(message.type);
    QByteArray bytes;
    bytes.reserve(kHeader + message.payload.size());
    bytes.append(kMagic).append(bytesOf(length)).append(bytesOf(type)).append(message.payload);
    return bytes;
}

std::optional<IpcMessage> IpcMessageReader::next() {
    const QByteArrayView begun =
        QByteArrayView(waiting_).first(std::min(kMagic.size(), waiting_.size()));
    isForeign_ = isForeign_ || !kMagic.startsWith(begun);
    if (isForeign_ || waiting_.size() < kHeader)
        return std::nullopt;
    const std::uint32_t length = numberAt(waiting_, kMagic.size());
    if (length > kLongestPayload) {
        isForeign_ = true;
        return std::nullopt;
    }
    const qsizetype end = kHeader + static_cast<qsizetype>(length);
    if (waiting_.size() < end)
        return std::nullopt;
    const auto type = static_cast<MessageType>(numberAt(waiting_, kMagic.size() + kWord));
    IpcMessage message{.type = type, .payload = waiting_.sliced(kHeader, length)};
    waiting_.remove(0, end);
    return message;
}

}  // namespace kestrelbay::sway
