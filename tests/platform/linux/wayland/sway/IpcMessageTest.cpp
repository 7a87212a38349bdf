#include "platform/linux/wayland/sway/IpcMessage.h"

#include <gtest/gtest.h>

namespace kestrelbay::sway {
namespace {

const QByteArray kTwoMessages =
    toBytes({MessageType::GetVersion, {}}) + toBytes({MessageType::WindowEvent, "{\"a\": 1}"});

TEST(SwayIpcMessage, IsWrittenAsSwayReadsIt) {
    // Magic, length, type: as swaymsg sends "nop" on a little-endian machine.
    EXPECT_EQ(toBytes({MessageType::RunCommand, "nop"}), QByteArray::fromHex("69332d697063"
                                                                             "03000000"
                                                                             "00000000") +
                                                             "nop");
}

TEST(SwayIpcMessage, IsReadHoweverTheBytesAreCut) {
    for (qsizetype cut = 0; cut <= kTwoMessages.size(); ++cut) {
        IpcMessageReader reader;
        std::vector<IpcMessage> messages;
        for (const QByteArray &part : {kTwoMessages.first(cut), kTwoMessages.sliced(cut)}) {
            reader.append(part);
            while (std::optional<IpcMessage> message = reader.next())
                messages.push_back(*message);
        }
        EXPECT_FALSE(reader.isForeign());
        EXPECT_EQ(messages, (std::vector<IpcMessage>{{MessageType::GetVersion, {}},
                                                     {MessageType::WindowEvent, "{\"a\": 1}"}}))
            << cut;
    }
}

TEST(SwayIpcMessage, OfSomebodyElseIsNone) {
    for (const QByteArray &bytes :
         {QByteArray("HTTP/1.1 400"), QByteArray("i3-ipX"), QByteArray(1, '\0'),
          QByteArray("i3-ipc\xff\xff\xff\xff\0\0\0\0", 14),
          kTwoMessages + QByteArray("{\"a\": 1}")}) {
        IpcMessageReader reader;
        reader.append(bytes);
        int messages = 0;
        while (reader.next())
            ++messages;
        EXPECT_TRUE(reader.isForeign()) << bytes.toStdString();
        EXPECT_EQ(messages, bytes.startsWith(kTwoMessages) ? 2 : 0);
    }
}

TEST(SwayIpcMessage, IsNotThereBeforeItsEnd) {
    const QByteArray message = toBytes({MessageType::GetTree, "{}"});
    for (qsizetype size = 0; size < message.size(); ++size) {
        IpcMessageReader reader;
        reader.append(QByteArrayView(message).first(size));
        EXPECT_FALSE(reader.next());
        EXPECT_FALSE(reader.isForeign());
    }
}

}  // namespace
}  // namespace kestrelbay::sway
