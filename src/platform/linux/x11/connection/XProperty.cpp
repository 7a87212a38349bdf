#include "platform/linux/x11/connection/XProperty.h"

#include <QStringDecoder>

namespace kestrelbay::x11 {

namespace {

QString decoded(const QByteArray &bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder(bytes);
    return decoder.hasError() ? QString::fromLatin1(bytes) : text;
}

}  // namespace

std::span<const std::uint32_t> propertyWords(const PropertyReply &reply) {
    if (!reply || reply->format != 32)
        return {};
    return {static_cast<const std::uint32_t *>(xcb_get_property_value(reply.get())),
            reply->value_len};
}

QByteArray propertyBytes(const PropertyReply &reply) {
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(reply.get())),
            static_cast<qsizetype>(reply->value_len)};
}

QString propertyText(const PropertyReply &reply) {
    const QByteArray bytes = propertyBytes(reply);
    const qsizetype end = bytes.indexOf('\0');
    return decoded(end < 0 ? bytes : bytes.first(end));
}

QList<QString> propertyTexts(const PropertyReply &reply) {
    QList<QString> texts;
    for (const QByteArray &part : propertyBytes(reply).split('\0'))
        texts.append(decoded(part));
    return texts;
}

}  // namespace kestrelbay::x11
