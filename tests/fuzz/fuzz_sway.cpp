#include <cstddef>
#include <cstdint>

#include <QByteArray>
#include <QJsonDocument>
#include <QString>

#include "fuzz/Check.h"
#include "platform/linux/wayland/sway/IpcMessage.h"
#include "platform/linux/wayland/sway/UserBindings.h"
#include "platform/linux/wayland/sway/windows/SwayTree.h"

namespace {

/// The stream, in pieces of this size, gives the same messages as at once.
std::size_t countMessages(const QByteArray &bytes, qsizetype piece) {
    kestrelbay::sway::IpcMessageReader reader;
    std::size_t count = 0;
    for (qsizetype begin = 0; begin < bytes.size(); begin += piece) {
        reader.append(QByteArrayView(bytes).sliced(begin, qMin(piece, bytes.size() - begin)));
        while (const auto message = reader.next()) {
            check(!reader.isForeign());
            ++count;
        }
    }
    return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    using namespace kestrelbay;
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    check(countMessages(bytes, 7) == countMessages(bytes, qMax(qsizetype{1}, bytes.size())));
    const sway::IpcMessage message{.type = sway::MessageType::GetTree, .payload = bytes};
    sway::IpcMessageReader reader;
    reader.append(sway::toBytes(message));
    check(reader.next() == message);

    static_cast<void>(sway::windowsOf(QJsonDocument::fromJson(bytes).object()));

    // Files of this machine would make a find depend on it.
    const sway::SwayConfiguration configuration = sway::readConfiguration(
        QByteArray(bytes).replace("include", "x").replace("xkb_file", "x"), QStringLiteral("/a"));
    static_cast<void>(sway::userBindings(configuration));
    return 0;
}
