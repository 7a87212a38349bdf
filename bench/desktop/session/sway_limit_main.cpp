// The least that a hotkey program can do under sway: it binds Super and one key, and at each press
// sends one command that gives the focus to one window known beforehand.
//
// usage: desktop_bench_sway_limit WINDOW KEYCODE

#include <poll.h>

#include <QByteArray>

#include "platform/linux/wayland/sway/SwayIpc.h"

int main(int argc, char *argv[]) {
    using namespace kestrelbay::sway;
    if (argc != 3)
        return 2;
    const QByteArray focus = "[con_id=" + QByteArray(argv[1]) + "] focus";
    SwayIpc commands(socketOfSession());
    SwayIpc events(socketOfSession());
    if (!events.subscribe({QStringLiteral("binding")}))
        return 1;
    const QByteArray command = "nop limit";
    if (!commands.ask(MessageType::RunCommand,
                      "bindcode --no-repeat Mod4+" + QByteArray(argv[2]) + ' ' + command))
        return 1;
    while (events.isOpen()) {
        pollfd socket{.fd = events.descriptor(), .events = POLLIN, .revents = 0};
        ::poll(&socket, 1, -1);
        while (const auto event = events.nextEvent()) {
            const QString pressed = event->json[u"binding"][u"command"].toString();
            if (pressed == QLatin1StringView(command) &&
                !commands.ask(MessageType::RunCommand, focus))
                return 1;
        }
    }
    return 0;
}
