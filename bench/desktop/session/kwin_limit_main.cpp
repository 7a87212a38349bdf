// The least that a hotkey program can do in a Plasma session: it binds one key, and the thread that
// hears of a press asks KWin to give the focus to one window known beforehand.
//
// usage: desktop_bench_kwin_limit WINDOW KEY
// The window as KWin calls it, the key as Qt numbers it with its modifiers.

#include <array>
#include <cstdint>

#include <glib.h>
#include <wayland-client.h>

#include <QByteArray>

#include "platform/linux/wayland/client/Connection.h"
#include "platform/linux/wayland/client/Globals.h"
#include "platform/linux/wayland/client/Socket.h"
#include "session/LimitBus.h"

#include "plasma-window-management.h"

#include "plasma-window-management-code.h"

namespace {

using namespace kestrelbay;

/// What KWin is asked for, on one connection.
class Target {
public:
    explicit Target(const char *window) {
        constexpr std::uint32_t kWithNames = 12;
        auto *const management = globals_.bind<org_kde_plasma_window_management>(
            org_kde_plasma_window_management_interface, kWithNames);
        if (management != nullptr)
            window_ = org_kde_plasma_window_management_get_window_by_uuid(management, window);
        connection_.flush();
    }

    [[nodiscard]] bool isThere() const { return window_ != nullptr; }

    void focus() {
        constexpr auto kActive = ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE;
        org_kde_plasma_window_set_state(window_, kActive, kActive);
        connection_.flush();
        // KWin hangs up on who leaves too much of it.
        connection_.takeInEvents();
    }

private:
    wayland::Connection connection_{wayland::socketPath(qEnvironmentVariable("WAYLAND_DISPLAY"))};
    wayland::Globals globals_{connection_};
    org_kde_plasma_window *window_ = nullptr;
};

}  // namespace

int main(int argc, char *argv[]) {
    if (argc != 3)
        return 2;
    Target target(argv[1]);
    const bench::LimitBus bus("globalShortcutPressed",
                              [&](const bench::LimitBus &) { target.focus(); });
    const std::array<const char *, 5> action{"limit", "focus", "Limit", "Focus", nullptr};
    const auto tellPlasma = [&](const char *member, GVariant *arguments) {
        return bus.call("org.kde.kglobalaccel", "/kglobalaccel", "org.kde.KGlobalAccel", member,
                        arguments);
    };
    // The last number: these keys, and not those that were stored; the program is there.
    if (!target.isThere() || !bus.listen("/component/limit") ||
        !tellPlasma("doRegister", g_variant_new("(^as)", action.data())) ||
        !tellPlasma("setShortcutKeys",
                    g_variant_new_parsed("(%^as, [([%i, 0, 0, 0],)], uint32 6)", action.data(),
                                         QByteArray(argv[2]).toInt())))
        return 1;
    bench::LimitBus::wait();
}
