#include "support/PrivateXServer.h"

#include <memory>
#include <stdexcept>

#include <QFile>
#include <QTemporaryDir>

#include "support/Poll.h"
#include "support/Xcb.h"

namespace kestrelbay::testing {

namespace {

/// Has a window manager announced itself, and is the window it named alive?
bool windowManagerPresent(xcb_connection_t *c) {
    const char name[] = "_NET_SUPPORTING_WM_CHECK";
    const Reply<xcb_intern_atom_reply_t> atom(
        xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, sizeof name - 1, name), nullptr));
    if (!atom)
        return false;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
    const Reply<xcb_get_property_reply_t> value(xcb_get_property_reply(
        c, xcb_get_property(c, 0, root, atom->atom, XCB_ATOM_WINDOW, 0, 1), nullptr));
    if (!value || xcb_get_property_value_length(value.get()) != sizeof(xcb_window_t))
        return false;
    const auto window = *static_cast<xcb_window_t *>(xcb_get_property_value(value.get()));
    const Reply<xcb_get_window_attributes_reply_t> alive(
        xcb_get_window_attributes_reply(c, xcb_get_window_attributes(c, window), nullptr));
    return alive != nullptr;
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

std::unique_ptr<ChildProcess> PrivateXServer::startWindowManager(
    const QString &program, const QStringList &arguments, const QProcessEnvironment &extra) const {
    QProcessEnvironment all = environment();
    all.insert(extra);
    auto manager = std::make_unique<ChildProcess>(program, arguments, all, QProcess::nullDevice());
    const Connection connection(xcb_connect(displayName_.toLatin1().constData(), nullptr));
    if (!waitUntil([&] { return windowManagerPresent(connection.get()); }))
        throw std::runtime_error("the window manager did not start");
    return manager;
}

}  // namespace kestrelbay::testing
