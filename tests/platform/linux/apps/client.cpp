// A program for the tests to launch: writes down how it was started and opens
// windows until it is ended. As toolkits do, it tells window managers when it was last used.
//   --windows=N --instance=NAME --class=NAME --record=FILE
//   --gate=FIFO  opens no window before somebody opens this for writing

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include <unistd.h>
#include <xcb/xcb.h>

namespace {

/// One text a NUL, in the order arguments, "--", variables, "--", what descriptors
/// are, "--", session leader or not, working folder, signals blocked and ignored.
void record(const std::string &file, int argc, char **argv) {
    const std::string unfinished = file + ".unfinished";
    {
        std::ofstream out(unfinished, std::ios::binary);
        for (int i = 0; i < argc; ++i)
            out << argv[i] << '\0';
        out << "--" << '\0';
        for (char **variable = environ; *variable != nullptr; ++variable)
            out << *variable << '\0';
        out << "--" << '\0';
        for (int descriptor = 0; descriptor < 256; ++descriptor) {
            std::error_code error;
            const auto target =
                std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), error);
            if (!error && target != unfinished)
                out << descriptor << ' ' << target.string() << '\0';
        }
        out << "--" << '\0' << (getsid(0) == getpid() ? "leader" : "member") << '\0'
            << std::filesystem::current_path().string() << '\0';
        std::ifstream status("/proc/self/status");
        for (std::string line; std::getline(status, line);)
            if (line.starts_with("SigBlk:") || line.starts_with("SigIgn:"))
                out << line << '\0';
    }
    std::filesystem::rename(unfinished, file);
}

xcb_atom_t userTime(xcb_connection_t *connection) {
    const std::string_view name = "_NET_WM_USER_TIME";
    xcb_intern_atom_reply_t *reply = xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, name.size(), name.data()), nullptr);
    const xcb_atom_t atom = reply != nullptr ? reply->atom : XCB_ATOM_NONE;
    std::free(reply);
    return atom;
}

void take(xcb_connection_t *connection, const xcb_generic_event_t &event, xcb_atom_t userTime) {
    switch (event.response_type & 0x7f) {
        case XCB_FOCUS_IN:
            // Adding nothing to a property changes nothing, but is told with the time.
            xcb_change_property(connection, XCB_PROP_MODE_APPEND,
                                reinterpret_cast<const xcb_focus_in_event_t &>(event).event,
                                XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, 0, nullptr);
            break;
        case XCB_PROPERTY_NOTIFY: {
            const auto &change = reinterpret_cast<const xcb_property_notify_event_t &>(event);
            if (change.atom == XCB_ATOM_WM_CLASS)
                xcb_change_property(connection, XCB_PROP_MODE_REPLACE, change.window, userTime,
                                    XCB_ATOM_CARDINAL, 32, 1, &change.time);
            break;
        }
        default:
            break;
    }
    xcb_flush(connection);
}

}  // namespace

int main(int argc, char **argv) {
    int windows = 0;
    std::string instance;
    std::string className;
    std::string gate;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        const std::string value(argument.substr(argument.find('=') == std::string_view::npos
                                                    ? argument.size()
                                                    : argument.find('=') + 1));
        if (argument.starts_with("--windows="))
            windows = static_cast<int>(std::strtol(value.c_str(), nullptr, 10));
        else if (argument.starts_with("--instance="))
            instance = value;
        else if (argument.starts_with("--class="))
            className = value;
        else if (argument.starts_with("--record="))
            record(value, argc, argv);
        else if (argument.starts_with("--gate="))
            gate = value;
    }
    if (!gate.empty())
        std::ifstream(gate).get();
    if (windows == 0)
        return 0;

    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0)
        return 1;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const std::string names = instance + '\0' + className + '\0';
    for (int i = 0; i < windows; ++i) {
        const xcb_window_t window = xcb_generate_id(connection);
        const std::uint32_t events = XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(connection, 0, window, root, static_cast<std::int16_t>(40 * i), 0, 200,
                          100, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_EVENT_MASK, &events);
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS,
                            XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(names.size()),
                            names.data());
        xcb_map_window(connection, window);
    }
    xcb_flush(connection);
    const xcb_atom_t used = userTime(connection);
    while (xcb_generic_event_t *event = xcb_wait_for_event(connection)) {
        take(connection, *event, used);
        std::free(event);
    }
    return 0;
}
