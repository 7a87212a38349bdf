#include "platform/linux/x11/connection/XConnection.h"

#include <algorithm>

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

XConnection::XConnection(const QString &displayName) {
    const QByteArray name = displayName.toLocal8Bit();
    connection_.reset(xcb_connect(name.isEmpty() ? nullptr : name.constData(), &defaultScreen_));
    if (!isUsable())
        return;
    for (xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(get()));
         screen.rem > 0; xcb_screen_next(&screen))
        roots_.push_back(screen.data->root);
    const auto first = static_cast<std::size_t>(std::max(defaultScreen_, 0));
    if (first < roots_.size())
        std::swap(roots_.front(), roots_[first]);
}

void XConnection::selectEvents(xcb_window_t window, std::uint32_t events) const {
    xcb_change_window_attributes(get(), window, XCB_CW_EVENT_MASK, &events);
}

xcb_window_t XConnection::createInputOnlyWindow() const {
    const xcb_window_t window = xcb_generate_id(get());
    xcb_create_window(get(), 0, window, root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    return window;
}

xcb_window_t XConnection::ownerOf(xcb_atom_t selection) const {
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(get(), xcb_get_selection_owner(get(), selection), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_NONE};
}

xcb_get_property_cookie_t XConnection::askProperty(xcb_window_t window, xcb_atom_t property,
                                                   xcb_atom_t type, std::uint32_t units) const {
    return xcb_get_property(get(), 0, window, property, type, 0, units);
}

PropertyReply XConnection::takeProperty(xcb_get_property_cookie_t cookie) const {
    return PropertyReply(xcb_get_property_reply(get(), cookie, nullptr));
}

PropertyReply XConnection::readProperty(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                                        std::uint32_t units) const {
    return takeProperty(askProperty(window, property, type, units));
}

void synchronize(xcb_connection_t *connection) {
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
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
