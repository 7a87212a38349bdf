#include "platform/linux/wayland/keymap/WaylandKeymap.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <utility>

#include <wayland-client.h>

#include "platform/linux/wayland/client/IgnoreEvent.h"

namespace kestrelbay::wayland {

namespace {

/// The only one whose events are all known here.
constexpr std::uint32_t kSeatVersion = 1;

}  // namespace

/// What the compositor calls.
struct WaylandKeymap::Listeners {
    static void capabilities(void *data, wl_seat *seat, std::uint32_t all) {
        auto &self = *static_cast<WaylandKeymap *>(data);
        if ((all & WL_SEAT_CAPABILITY_KEYBOARD) == 0) {
            self.keyboard_.reset();
        } else if (!self.keyboard_) {
            self.keyboard_.reset(wl_seat_get_keyboard(seat));
            wl_keyboard_add_listener(self.keyboard_.get(), &kKeyboard, data);
        }
    }
    static void keymap(void *data, wl_keyboard * /*keyboard*/, std::uint32_t format,
                       std::int32_t file, std::uint32_t size) {
        if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1)
            static_cast<WaylandKeymap *>(data)->takeKeymap(file, size);
        ::close(file);
    }

    static constexpr wl_seat_listener kSeat{.capabilities = &capabilities, .name = &ignoreEvent};
    static constexpr wl_keyboard_listener kKeyboard{.keymap = &keymap,
                                                    .enter = &ignoreEvent,
                                                    .leave = &ignoreEvent,
                                                    .key = &ignoreEvent,
                                                    .modifiers = &ignoreEvent,
                                                    .repeat_info = &ignoreEvent};
};

WaylandKeymap::WaylandKeymap(const QString &socketPath, std::function<void()> changed)
    : changed_(std::move(changed)),
      xkb_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)),
      connection_(socketPath, kPatience),
      globals_(connection_),
      seat_(globals_.bind<wl_seat>(wl_seat_interface, kSeatVersion)) {
    if (!seat_)
        return;
    wl_seat_add_listener(seat_.get(), &Listeners::kSeat, this);
    // What the seat has, and the keyboard's keymap.
    for (int i = 0; i < 2; ++i)
        connection_.roundTrip();
    // By the event loop, which need not be there yet.
    QMetaObject::invokeMethod(
        &context_, [this] { listen(); }, Qt::QueuedConnection);
}

WaylandKeymap::~WaylandKeymap() = default;

void WaylandKeymap::listen() {
    notifier_.emplace(connection_.descriptor(), QSocketNotifier::Read);
    QObject::connect(&*notifier_, &QSocketNotifier::activated, &context_,
                     [this] { takeInEvents(); });
    takeInEvents();
}

void WaylandKeymap::takeInEvents() {
    connection_.takeInEvents();
    if (!connection_.isOpen())
        notifier_->setEnabled(false);
}

void WaylandKeymap::takeKeymap(int file, std::size_t size) {
    void *const text = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    if (text == MAP_FAILED)
        return;
    std::unique_ptr<xkb_keymap, Deleter> keymap(xkb_keymap_new_from_buffer(
        xkb_.get(), static_cast<const char *>(text), size == 0 ? 0 : size - 1,
        XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS));
    ::munmap(text, size);
    if (!keymap)
        return;
    keymap_ = std::move(keymap);
    if (notifier_)
        changed_();
}

}  // namespace kestrelbay::wayland
