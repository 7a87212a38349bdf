#include "IdleStates.h"

#include <optional>
#include <stdexcept>

#include "desktop/display/FrontWindow.h"
#include "desktop/display/HotkeyHolder.h"
#include "desktop/display/XClient.h"
#include "desktop/session/Processes.h"
#include "desktop/session/TrayHost.h"
#include "support/Poll.h"

namespace kestrelbay::bench {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using desktop::Processes;
using desktop::TrayHost;
using testing::waitUntil;

namespace {

/// Longer than what only windows need is kept after the last one was closed.
constexpr auto kUntilRest = 35s;
/// Longer than after its arrival a panel is looked at again.
constexpr auto kQuiet = 3s;
/// Qt looks through its cache of pictures half a minute after the first one has come in, and once
/// or twice more.
constexpr auto kUntilPicturesRest = 60s;

void waitFor(Clock::duration time) {
    const Clock::time_point end = Clock::now() + time;
    (void)waitUntil([&] { return Clock::now() >= end; },
                    std::chrono::ceil<std::chrono::milliseconds>(time) + 1s);
}

}  // namespace

IdleStates::IdleStates(desktop::Desktop &desktop, Contender &kestrelbay, std::chrono::seconds time)
    : desktop_(desktop),
      kestrelbay_(kestrelbay),
      time_(time),
      table_({QStringLiteral("state"), QStringLiteral("wake-ups"), QStringLiteral("goal")}) {}

void IdleStates::run() {
    measure(QStringLiteral("no window"));
    otherPrograms();
    withPreferences();
    withoutTray();
    withRefusedHotkey();
    table_.print(QStringLiteral("Wake-ups of KestrelBay in %1 s").arg(time_.count()));
}

void IdleStates::measure(const QString &state, const std::function<void()> &each) {
    kestrelbay_.settle(kQuiet);
    kestrelbay_.expectRunning();
    const auto before = Processes::wakeUpsOfThreads(kestrelbay_.processId());
    const Clock::time_point end = Clock::now() + time_;
    while (Clock::now() < end) {
        if (each)
            each();
        waitFor(1s);
    }
    kestrelbay_.expectRunning();
    table_.add({state, QString::number(Processes::wakeUpsSince(before, kestrelbay_.processId())),
                QStringLiteral("0")});
}

void IdleStates::ask(const QString &action) {
    desktop_.start(kestrelbay_.program(), {QStringLiteral("--action=") + action});
}

void IdleStates::otherPrograms() {
    desktop::XClient client(desktop_.displayName());
    const xcb_window_t window = desktop_.view().windowsOf(QStringLiteral("XTerm")).at(0);
    int number = 0;
    const auto changeTitle = [&] {
        client.setText(window, "_NET_WM_NAME", "UTF8_STRING", QByteArray::number(++number));
        client.sync();
    };
    changeTitle();
    measure(QStringLiteral("a title that changes each second"), changeTitle);
    measure(QStringLiteral("a menu that comes and goes each second"), [&] {
        const xcb_window_t menu = xcb_generate_id(client.get());
        const std::uint32_t overrideRedirect = 1;
        xcb_create_window(client.get(), XCB_COPY_FROM_PARENT, menu, client.root(), 0, 0, 10, 10, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
        xcb_map_window(client.get(), menu);
        client.sync();
        xcb_destroy_window(client.get(), menu);
        client.sync();
    });
}

void IdleStates::withPreferences() {
    const std::size_t windows = desktop_.view().stacking().size();
    ask(QStringLiteral("preferences"));
    if (!waitUntil([&] { return desktop_.view().stacking().size() == windows + 1; }, 10s))
        throw std::runtime_error("the preferences did not open");
    waitFor(kUntilPicturesRest);
    measure(QStringLiteral("preferences open"));
    desktop_.view().close(desktop_.view().active());
    if (!waitUntil([&] { return desktop_.view().stacking().size() == windows; }, 10s))
        throw std::runtime_error("the preferences did not close");
    waitFor(kUntilRest);
    measure(QStringLiteral("preferences closed again, at rest"));
}

void IdleStates::withoutTray() {
    {
        const TrayHost host(desktop_, TrayHost::Kind::Notifiers);
        waitFor(kUntilPicturesRest);
        measure(QStringLiteral("in a tray"));
    }
    waitFor(kUntilPicturesRest);
    measure(QStringLiteral("its tray gone"));
}

void IdleStates::withRefusedHotkey() {
    kestrelbay_.stop(desktop_);
    desktop::HotkeyHolder holder(desktop_.displayName(), kestrelbay_.key().xKeycode);
    kestrelbay_.start(desktop_);
    // Longer than it is asked for again.
    waitFor(kUntilPicturesRest);
    measure(QStringLiteral("its hotkey refused"));
    holder.letGo();
    kestrelbay_.stop(desktop_);
    kestrelbay_.start(desktop_);
}

}  // namespace kestrelbay::bench
