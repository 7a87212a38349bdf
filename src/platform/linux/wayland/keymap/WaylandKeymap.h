#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>

#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include <xkbcommon/xkbcommon.h>

#include "platform/linux/wayland/client/Connection.h"
#include "platform/linux/wayland/client/Globals.h"
#include "platform/linux/wayland/keymap/KeymapSource.h"

struct wl_keyboard;
struct wl_seat;

namespace kestrelbay::wayland {

/// The keymap of a Wayland session, with all its layouts. Which one of them is in use a compositor
/// tells only to the program with the keyboard. Main thread.
class WaylandKeymap final : public KeymapSource {
public:
    /// For each of three answers of the compositor.
    static constexpr std::chrono::milliseconds kPatience{500};

    /// Asks the compositor at that socket and waits for its answers. `changed` is called when there
    /// is another keymap later on.
    WaylandKeymap(const QString &socketPath, std::function<void()> changed);
    ~WaylandKeymap() override;
    WaylandKeymap(const WaylandKeymap &) = delete;
    WaylandKeymap &operator=(const WaylandKeymap &) = delete;

    /// The last one stays when the compositor is gone.
    [[nodiscard]] xkb_keymap *get() const override { return keymap_.get(); }

private:
    struct Listeners;
    struct Deleter {
        void operator()(xkb_context *context) const { xkb_context_unref(context); }
        void operator()(xkb_keymap *keymap) const { xkb_keymap_unref(keymap); }
    };

    void listen();
    void takeInEvents();
    void takeKeymap(int file, std::size_t size);

    const std::function<void()> changed_;
    const std::unique_ptr<xkb_context, Deleter> xkb_;
    std::unique_ptr<xkb_keymap, Deleter> keymap_;
    Connection connection_;
    const Globals globals_;
    /// Null when there is none.
    const std::unique_ptr<wl_seat, ReleaseProxy> seat_;
    std::unique_ptr<wl_keyboard, ReleaseProxy> keyboard_;
    std::optional<QSocketNotifier> notifier_;
    /// What is called later is called on this object's behalf.
    QObject context_;
};

}  // namespace kestrelbay::wayland
