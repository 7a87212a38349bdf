#include "platform/linux/x11/connection/XProperty.h"

#include <QByteArray>
#include <QStringDecoder>

namespace kestrelbay::x11 {

namespace {

QString decoded(const QByteArray &bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder(bytes);
    return decoder.hasError() ? QString::fromLatin1(bytes) : text;
}

}  // namespace

xcb_get_property_cookie_t askProperty(const XConnection &connection, xcb_window_t window,
                                      xcb_atom_t property, xcb_atom_t type, std::uint32_t units) {
    return xcb_get_property(connection.get(), 0, window, property, type, 0, units);
}

PropertyReply takeProperty(const XConnection &connection, xcb_get_property_cookie_t cookie) {
    return PropertyReply(xcb_get_property_reply(connection.get(), cookie, nullptr));
}

PropertyReply readProperty(const XConnection &connection, xcb_window_t window, xcb_atom_t property,
                           xcb_atom_t type, std::uint32_t units) {
    return takeProperty(connection, askProperty(connection, window, property, type, units));
}

std::span<const std::uint32_t> propertyWords(const PropertyReply &reply) {
    if (!reply || reply->format != 32)
        return {};
    return {static_cast<const std::uint32_t *>(xcb_get_property_value(reply.get())),
            reply->value_len};
}

std::optional<std::uint32_t> propertyWord(const PropertyReply &reply) {
    const auto words = propertyWords(reply);
    return words.empty() ? std::nullopt : std::optional(words.front());
}

QStringList propertyTexts(const PropertyReply &reply) {
    if (!reply || reply->format != 8)
        return {};
    const QByteArray bytes(static_cast<const char *>(xcb_get_property_value(reply.get())),
                           static_cast<qsizetype>(reply->value_len));
    QStringList texts;
    for (const QByteArray &part : bytes.split('\0'))
        texts.append(decoded(part));
    return texts;
}

QString propertyText(const PropertyReply &reply) {
    return propertyTexts(reply).value(0);
}

}  // namespace kestrelbay::x11
