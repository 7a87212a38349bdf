// The least that a hotkey program can do in GNOME, which lets extensions only bind keys and see
// windows: the thread that hears of a press asks an extension to give the focus to the one window
// that it knows. What stands for the extension is GnomeBenchSession.cpp's.

#include "session/LimitBus.h"

int main() {
    using kestrelbay::bench::LimitBus;
    constexpr const char *kPath = "/org/kestrelbay/Limit";
    constexpr const char *kInterface = "org.kestrelbay.Limit";
    const LimitBus bus("Pressed", [](const LimitBus &heard) {
        heard.tell("org.gnome.Shell", kPath, kInterface, "Focus");
    });
    if (!bus.listen(kPath))
        return 1;
    LimitBus::wait();
}
