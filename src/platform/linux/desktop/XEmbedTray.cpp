#include "platform/linux/desktop/XEmbedTray.h"

#include <chrono>
#include <utility>

#include "platform/linux/desktop/PanelGround.h"

namespace kestrelbay::x11 {

namespace {

/// Red, green and blue of 16 bits each, for symbols, errors, warnings and success.
constexpr std::uint32_t kColorWords = 12;

/// From the moment a panel says that it has a tray, or the colour scheme is another one, until
/// the panel is painted, with time to spare.
constexpr std::chrono::seconds kPaintingTime{1};

}  // namespace

XEmbedTray::XEmbedTray(const QString &displayName, std::function<void()> handler)
    : connection_(displayName), handler_(std::move(handler)) {
    if (!connection_.isUsable())
        return;
    const std::string selection =
        "_NET_SYSTEM_TRAY_S" + std::to_string(connection_.defaultScreen());
    const auto atoms = internAtoms(
        connection_,
        std::array<std::string_view, 3>{selection, "MANAGER", "_NET_SYSTEM_TRAY_COLORS"});
    selection_ = atoms[0];
    manager_ = atoms[1];
    colors_ = atoms[2];
    // Before looking, so that a tray that comes right now is not missed. A new one
    // tells those who watch the root's structure.
    connection_.selectEvents(connection_.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    painted_.setSingleShot(true);
    QObject::connect(&painted_, &QTimer::timeout, &painted_, [this] {
        if (isPresent() && !tellsColors_)
            take(true);
    });
    read();
    lookSoon();
    notifier_ =
        std::make_unique<QSocketNotifier>(connection_.fileDescriptor(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { take(false); });
    // What came with the answers is no longer on the socket.
    QMetaObject::invokeMethod(
        notifier_.get(), [this] { take(false); }, Qt::QueuedConnection);
}

void XEmbedTray::lookSoon() {
    if (connection_.isUsable())
        painted_.start(kPaintingTime);
}

void XEmbedTray::take(bool isNews) {
    const auto before = std::pair(owner_, isDark_);
    do {
        if (isNews)
            read();
        isNews = false;
        while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())})
            isNews |= concernsTray(*event);
    } while (isNews);
    if (owner_ != before.first)
        lookSoon();
    if (!connection_.isUsable()) {
        // The descriptor of a server that has gone can be read forever.
        notifier_->setEnabled(false);
        owner_ = XCB_NONE;
    }
    if (before != std::pair(owner_, isDark_))
        handler_();
}

bool XEmbedTray::concernsTray(const xcb_generic_event_t &event) const {
    switch (event.response_type & 0x7fU) {
        case XCB_CLIENT_MESSAGE: {
            const auto &message = reinterpret_cast<const xcb_client_message_event_t &>(event);
            return message.type == manager_ && message.data.data32[1] == selection_;
        }
        case XCB_DESTROY_NOTIFY:
            return reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window == owner_;
        case XCB_PROPERTY_NOTIFY:
            return reinterpret_cast<const xcb_property_notify_event_t &>(event).atom == colors_;
        default:
            return false;
    }
}

void XEmbedTray::read() {
    owner_ = connection_.ownerOf(selection_);
    isDark_.reset();
    if (owner_ == XCB_NONE)
        return;
    connection_.selectEvents(owner_,
                             XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    const PropertyReply colors =
        connection_.readProperty(owner_, colors_, XCB_ATOM_CARDINAL, kColorWords);
    // Gone in the meantime, without a word to those who were about to listen.
    if (!colors)
        owner_ = XCB_NONE;
    const auto words = propertyWords(colors);
    tellsColors_ = words.size() >= 3;
    isDark_ =
        tellsColors_ ? isLight(words[0], words[1], words[2]) : isPanelDark(connection_, owner_);
}

}  // namespace kestrelbay::x11
