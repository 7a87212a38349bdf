#include "support/PrivateXServer.h"

#include <algorithm>
#include <memory>
#include <span>
#include <stdexcept>
#include <string_view>

#include <QFile>
#include <QTemporaryDir>

#include "support/Poll.h"
#include "support/WindowManagerStart.h"
#include "support/Xcb.h"

namespace kestrelbay::testing {

namespace {

constexpr std::string_view kList = "_NET_CLIENT_LIST";
constexpr std::uint32_t kMostWindows = 1024;
constexpr std::uint16_t kProbeSize = 20;
constexpr std::chrono::milliseconds kPatienceWithProbe{500};
/// Compositing managers set up OpenGL first, in software.
constexpr std::chrono::seconds kLongestStart{30};

/// Is what is mapped from now on managed? Some announce themselves before they listen, and
/// forget what was mapped in between; and mutter's announcement is lost when it takes over.
bool manages(xcb_connection_t *c, xcb_window_t root) {
    const xcb_window_t probe = xcb_generate_id(c);
    xcb_create_window(c, XCB_COPY_FROM_PARENT, probe, root, 0, 0, kProbeSize, kProbeSize, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(c, probe);
    const Reply<xcb_intern_atom_reply_t> list(
        xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, kList.size(), kList.data()), nullptr));
    if (!list)
        return false;
    const auto isManaged = [&] {
        const Reply<xcb_get_property_reply_t> value(xcb_get_property_reply(
            c, xcb_get_property(c, 0, root, list->atom, XCB_ATOM_WINDOW, 0, kMostWindows),
            nullptr));
        if (!value || value->format != 32)
            return false;
        const auto *first = static_cast<const xcb_window_t *>(xcb_get_property_value(value.get()));
        const std::span windows(first, value->value_len);
        return std::ranges::find(windows, probe) != windows.end();
    };
    const bool managed = waitUntil(isManaged, kPatienceWithProbe);
    xcb_destroy_window(c, probe);
    return managed && waitUntil([&] { return !isManaged(); });
}

void waitForWindowManager(const QString &display) {
    const Connection connection(xcb_connect(display.toLatin1().constData(), nullptr));
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root;
    if (!waitUntil([&] { return manages(connection.get(), root); }, kLongestStart))
        throw std::runtime_error("the window manager did not start");
}

}  // namespace

PrivateXServer::PrivateXServer(const QStringList &extraArguments) {
    const QTemporaryDir folder;
    const QString numberFile = folder.filePath(QStringLiteral("display"));
    // Xvfb picks a free number by itself and writes it to the descriptor; the
    // shell only opens that descriptor and is then replaced.
    QStringList arguments{QStringLiteral("-c"),
                          QStringLiteral("exec 7>\"$0\"; exec Xvfb -displayfd 7 \"$@\""),
                          numberFile,
                          QStringLiteral("-screen"),
                          QStringLiteral("0"),
                          QStringLiteral("1280x800x24"),
                          QStringLiteral("-nolisten"),
                          QStringLiteral("tcp"),
                          QStringLiteral("-noreset")};
    arguments += extraArguments;
    process_ = std::make_unique<ChildProcess>(QStringLiteral("/bin/sh"), arguments,
                                              QProcessEnvironment::systemEnvironment(),
                                              QProcess::nullDevice());
    QByteArray number;
    const bool up = waitUntil([&] {
        QFile file(numberFile);
        if (file.open(QIODevice::ReadOnly))
            number = file.readAll();
        return number.endsWith('\n') || !process_->isRunning();
    });
    if (!up || !number.endsWith('\n'))
        throw std::runtime_error("Xvfb did not start");
    displayName_ = u':' + QString::fromLatin1(number.trimmed());
}

QProcessEnvironment PrivateXServer::environment() const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name :
         {"WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION",
          "XAUTHORITY", "SESSION_MANAGER", "QT_QPA_PLATFORM", "DESKTOP_STARTUP_ID"})
        environment.remove(QLatin1String(name));
    environment.insert(QStringLiteral("DISPLAY"), displayName_);
    return environment;
}

std::unique_ptr<ChildProcess> PrivateXServer::launchWindowManager(
    const QString &program, const WindowManagerStart &start, const QStringList &arguments,
    const QProcessEnvironment &session) const {
    const QString bus = QStringLiteral("DBUS_SESSION_BUS_ADDRESS");
    QProcessEnvironment all = environment();
    all.insert(bus, QStringLiteral("disabled:"));
    if (!start.service.isEmpty() && !session.contains(bus)) {
        if (!managersBus_)
            managersBus_ = std::make_unique<PrivateSessionBus>();
        managersBus_->offer(start.service);
        all.insert(bus, managersBus_->address());
    }
    all.insert(session);
    all.insert(start.environment);
    auto manager = std::make_unique<ChildProcess>(program, arguments, all, QProcess::nullDevice());
    if (!manager->started())
        throw std::runtime_error("cannot start " + program.toStdString() + "; is it installed?");
    return manager;
}

std::unique_ptr<ChildProcess> PrivateXServer::startWindowManager(const QString &program,
                                                                 const QProcessEnvironment &session,
                                                                 WindowManagerKeys keys) const {
    const WindowManagerStart start = windowManagerStart(program, managerHome_.path(), keys);
    auto manager = launchWindowManager(program, start, start.arguments, session);
    waitForWindowManager(displayName_);
    return manager;
}

void PrivateXServer::replaceWindowManager(std::unique_ptr<ChildProcess> &manager,
                                          const QString &program,
                                          const QProcessEnvironment &session) const {
    const WindowManagerStart start = windowManagerStart(program, managerHome_.path());
    std::unique_ptr<ChildProcess> earlier = std::move(manager);
    if (start.takeover.isEmpty())
        earlier.reset();
    manager = launchWindowManager(program, start, start.takeover + start.arguments, session);
    if (earlier && !waitUntil([&] { return !earlier->isRunning(); }))
        throw std::runtime_error("the earlier window manager does not end");
    waitForWindowManager(displayName_);
}

}  // namespace kestrelbay::testing
