#include "platform/linux/apps/desktop.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include "platform/linux/X11WindowSource.h"
#include "support/Poll.h"

namespace kestrelbay::testing {

std::unique_ptr<LinuxWorkspace> makeWorkspaceOfX(const QString &displayName, SystemLog &log,
                                                 std::chrono::milliseconds openingTakes) {
    return std::make_unique<LinuxWorkspace>(
        std::make_unique<x11::X11WindowSource>(displayName, log), displayName, openingTakes);
}

namespace {
PrivateHome *home = nullptr;
}

QByteArray clientProgram() {
    return KESTRELBAY_APPS_CLIENT;
}

PrivateHome::PrivateHome() {
    home = this;
    const auto set = [](const char *name, const QString &value) {
        qputenv(name, QFile::encodeName(value));
    };
    set("XDG_DATA_HOME", path(QStringLiteral("home")));
    // The last one holds the types of files.
    set("XDG_DATA_DIRS", path(QStringLiteral("system")) + QStringLiteral(":/usr/share"));
    set("XDG_CONFIG_HOME", path(QStringLiteral("config")));
    set("XDG_CONFIG_DIRS", path(QStringLiteral("xdg")));
    qputenv("LANGUAGE", "de");
    qputenv("LC_ALL", "C.UTF-8");
    for (const char *name : {"WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP", "DISPLAY"})
        qunsetenv(name);
    for (const char *folder : {"home/applications", "system/applications", "config"})
        QDir().mkpath(path(QLatin1String(folder)));

    bus_ = std::make_unique<PrivateSessionBus>();
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus_->address().toLatin1());
}

PrivateHome::~PrivateHome() = default;

PrivateHome &PrivateHome::instance() {
    return *home;
}

QString PrivateHome::write(const QString &relative, const QByteArray &content) const {
    QString file = path(relative);
    QDir().mkpath(QFileInfo(file).path());
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly))
        throw std::runtime_error("cannot write");
    out.write(content);
    return file;
}

QString PrivateHome::writeEntry(const QString &name, const QByteArray &lines) const {
    return write(QStringLiteral("home/applications/") + name,
                 "[Desktop Entry]\nType=Application\nName=Thing\n" + lines + '\n');
}

void PrivateHome::removeEntries() const {
    for (const char *folder : {"home/applications", "system/applications", "elsewhere"}) {
        QDir(path(QLatin1String(folder))).removeRecursively();
        QDir().mkpath(path(QLatin1String(folder)));
    }
    QFile::remove(path(QStringLiteral("config/mimeapps.list")));
}

void PrivateHome::offerPrograms(const QStringList &names) const {
    const QString folder = path(QStringLiteral("bin"));
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    for (const QString &name : names)
        QFile::link(QStandardPaths::findExecutable(name, {QStringLiteral("/usr/bin")}),
                    folder + u'/' + name);
    qputenv("PATH", QFile::encodeName(folder));
}

WindowMaker::WindowMaker(const QString &displayName) : connection_(displayName) {}

xcb_atom_t WindowMaker::atom(const char *name) {
    return x11::internAtoms(connection_, std::array<std::string_view, 1>{name})[0];
}

void WindowMaker::sync() {
    x11::synchronize(connection_.get());
}

xcb_window_t WindowMaker::make(const WindowOptions &options) {
    const xcb_window_t window = xcb_generate_id(connection_.get());
    xcb_create_window(connection_.get(), 0, window, connection_.root(), 10, 10, 120, 80, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    if (options.className != nullptr) {
        QByteArray names(options.instance != nullptr ? options.instance : "");
        names += '\0';
        names += options.className;
        names += '\0';
        setText(window, "WM_CLASS", names);
    }
    const auto setWord = [&](const char *property, const char *type, std::uint32_t word) {
        setRaw(window, property, type, 32,
               QByteArray(reinterpret_cast<const char *>(&word), sizeof word));
    };
    if (options.type != nullptr)
        setWord("_NET_WM_WINDOW_TYPE", "ATOM", atom(options.type));
    if (options.transientFor != 0)
        setWord("WM_TRANSIENT_FOR", "WINDOW", options.transientFor);
    if (options.groupLeader != 0) {
        // The flag for the last of ICCCM's nine words, and that word.
        std::array<std::uint32_t, 9> hints{1U << 6U};
        hints.back() = options.groupLeader;
        setRaw(window, "WM_HINTS", "WM_HINTS", 32,
               QByteArray(reinterpret_cast<const char *>(hints.data()), sizeof hints));
    }
    if (options.skipsTaskbar)
        setWord("_NET_WM_STATE", "ATOM", atom("_NET_WM_STATE_SKIP_TASKBAR"));
    if (!options.unmapped)
        xcb_map_window(connection_.get(), window);
    sync();
    return window;
}

void WindowMaker::setText(xcb_window_t window, const char *property, const QByteArray &text) {
    setRaw(window, property, "STRING", 8, text);
}

void WindowMaker::setRaw(xcb_window_t window, const char *property, const char *type, int format,
                         const QByteArray &bytes) {
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window, atom(property),
                        atom(type), static_cast<std::uint8_t>(format),
                        static_cast<std::uint32_t>(bytes.size() / (format / 8)), bytes.data());
    sync();
}

void WindowMaker::destroy(xcb_window_t window) {
    xcb_destroy_window(connection_.get(), window);
    sync();
}

void WindowMaker::activate(xcb_window_t window, xcb_timestamp_t time) {
    tellWindowManager(window, "_NET_ACTIVE_WINDOW", {2, time});
}

void WindowMaker::moveToWorkspace(xcb_window_t window, std::uint32_t workspace) {
    tellWindowManager(window, "_NET_WM_DESKTOP", {workspace, 2});
}

void WindowMaker::tellWindowManager(xcb_window_t window, const char *message,
                                    std::initializer_list<std::uint32_t> words) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(message);
    std::ranges::copy(words, event.data.data32);
    xcb_send_event(connection_.get(), 0, connection_.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&event));
    sync();
}

std::vector<std::uint32_t> WindowMaker::words(xcb_window_t window, const char *property) {
    const x11::PropertyReply reply =
        connection_.readProperty(window, atom(property), XCB_ATOM_ANY, 4096);
    const auto list = x11::propertyWords(reply);
    return {list.begin(), list.end()};
}

xcb_window_t WindowMaker::active() {
    const auto value = words(connection_.root(), "_NET_ACTIVE_WINDOW");
    return value.empty() ? 0 : value.front();
}

bool WindowMaker::managed(const std::vector<xcb_window_t> &windows) {
    auto list = words(connection_.root(), "_NET_CLIENT_LIST_STACKING");
    // xfwm4 tells no order while there is one window only.
    if (list.empty())
        list = words(connection_.root(), "_NET_CLIENT_LIST");
    return std::all_of(windows.begin(), windows.end(), [&](xcb_window_t window) {
        return std::find(list.begin(), list.end(), window) != list.end();
    });
}

bool WindowMaker::isIconic(xcb_window_t window) {
    const auto state = words(window, "WM_STATE");
    return !state.empty() && state.front() == 3;
}

bool WindowMaker::isInView(xcb_window_t window) {
    const x11::Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        connection_.get(), xcb_get_window_attributes(connection_.get(), window), nullptr));
    const auto states = words(window, "_NET_WM_STATE");
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE && !isIconic(window) &&
           std::ranges::count(states, atom("_NET_WM_STATE_HIDDEN")) == 0;
}

void WindowMaker::listen() {
    connection_.selectEvents(connection_.root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    sync();
}

std::vector<WindowMaker::Message> WindowMaker::heard() {
    sync();
    std::vector<Message> messages;
    while (const x11::Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE)
            continue;
        const auto &message = reinterpret_cast<const xcb_client_message_event_t &>(*event);
        Message heardOne{message.window, message.type, {}};
        std::memcpy(heardOne.data.data(), message.data.data32, sizeof heardOne.data);
        messages.push_back(heardOne);
    }
    return messages;
}

void AppsDesktop::SetUp() {
    PrivateHome::instance().removeEntries();
    server_ = std::make_unique<PrivateXServer>();
    maker_ = std::make_unique<WindowMaker>(server_->displayName());
}

void AppsDesktop::TearDown() {
    workspace_.reset();
    maker_.reset();
    windowManager_.reset();
    server_.reset();
    PrivateHome::instance().offerAllPrograms();
}

void AppsDesktop::startWindowManager(const QString &program) {
    windowManager_.reset();
    windowManager_ = server_->startWindowManager(program);
}

void AppsDesktop::startWorkspace() {
    workspace_ = makeWorkspaceOfX(server_->displayName(), log_);
}

AppsDesktop::Application AppsDesktop::running(const QString &entryPath) {
    for (auto &application : workspace_->runningApplications())
        if (application->bundleURL() == QUrl::fromLocalFile(entryPath))
            return std::move(application);
    return nullptr;
}

AppsDesktop::Application AppsDesktop::waitForRunning(const QString &entryPath,
                                                     std::size_t windows) {
    Application application;
    if (!waitUntil([&] {
            application = running(entryPath);
            return application && application->windows().size() >= windows;
        }))
        return nullptr;
    return application;
}

bool AppsDesktop::becomesActive(const QString &entryPath) {
    return waitUntil([&] {
        const Application application = running(entryPath);
        return application && application->isActive();
    });
}

}  // namespace kestrelbay::testing
