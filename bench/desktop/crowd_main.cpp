// A program with many plain windows, to fill a desktop.
//
// usage: desktop_bench_crowd COUNT CLASS

#include <stdexcept>

#include <unistd.h>

#include <QByteArray>

#include "desktop/display/XClient.h"

namespace {

using kestrelbay::desktop::Reply;
using kestrelbay::desktop::XClient;

void openWindow(XClient &client, const QByteArray &windowClass, int number) {
    const xcb_window_t window = xcb_generate_id(client.get());
    const auto shift = static_cast<std::int16_t>(number * 20);
    xcb_create_window(client.get(), XCB_COPY_FROM_PARENT, window, client.root(), shift, shift, 320,
                      200, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    client.setText(window, "WM_CLASS", "STRING", windowClass.toLower() + '\0' + windowClass + '\0');
    client.setText(window, "_NET_WM_NAME", "UTF8_STRING",
                   windowClass + " window " + QByteArray::number(number));
    char host[256] = {};
    ::gethostname(host, sizeof host - 1);
    client.setText(window, "WM_CLIENT_MACHINE", "STRING", host);
    client.setNumbers(window, "_NET_WM_PID", XCB_ATOM_CARDINAL,
                      {static_cast<std::uint32_t>(::getpid())});
    client.setNumbers(window, "WM_PROTOCOLS", XCB_ATOM_ATOM, {client.atom("WM_DELETE_WINDOW")});
    client.setNumbers(window, "WM_HINTS", XCB_ATOM_WM_HINTS, {1, 1, 0, 0, 0, 0, 0, 0, 0});
    xcb_map_window(client.get(), window);
}

}  // namespace

int main(int argc, char *argv[]) {
    if (argc != 3)
        return 2;
    try {
        XClient client(qEnvironmentVariable("DISPLAY"));
        const int count = QByteArray(argv[1]).toInt();
        for (int number = 0; number < count; ++number)
            openWindow(client, argv[2], number);
        client.sync();
        while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(client.get())}) {
        }
    } catch (const std::runtime_error &) {
        return 1;
    }
    return 0;
}
