#include "desktop/session/Desktop.h"

#include <array>
#include <stdexcept>

#include "support/Poll.h"

namespace kestrelbay::desktop {

using testing::ChildProcess;
using testing::waitUntil;

namespace {
constexpr std::uint32_t kWantedDesktops = 4;
constexpr const char *kCompositorSelection = "_NET_WM_CM_S0";

/// Of settings, of window managers and of accessibility.
constexpr std::array kServices{"ca.desrt.dconf", "org.xfce.Xfconf", "org.kde.kglobalaccel",
                               "org.a11y.Bus"};

/// i3 has a workspace only while there is a window on it, and puts this one on the second.
void anchorSecondWorkspace(XClient &client) {
    const xcb_window_t window = xcb_generate_id(client.get());
    xcb_create_window(client.get(), XCB_COPY_FROM_PARENT, window, client.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    client.setText(window, "WM_CLASS", "STRING", QByteArray("anchor\0KestrelAnchor\0", 21));
    xcb_map_window(client.get(), window);
    client.sync();
}
}  // namespace

Desktop::Desktop(QString windowManager, const QStringList &serverArguments)
    : processes_(home_.path()),
      server_(serverArguments),
      environment_(server_.environment()),
      windowManager_(std::move(windowManager)) {
    home_.addTo(environment_);
    environment_.remove(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
    bus_ = std::make_unique<testing::PrivateSessionBus>(environment_);
    for (const char *const service : kServices)
        bus_->offer(QLatin1String(service));
    environment_.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus_->address());

    manager_ = server_.startWindowManager(windowManager_, environment_);
    view_.emplace(displayName());
    if (windowManager_ == u"i3")
        anchorSecondWorkspace(view_->client());
    else if (view_->desktopCount() < 2)
        view_->setDesktopCount(kWantedDesktops);
    if (!waitUntil([&] { return view_->desktopCount() >= 2; }))
        throw std::runtime_error("there is only one workspace");
}

Desktop::~Desktop() {
    programs_.clear();
    compositor_.reset();
    manager_.reset();
    bus_.reset();
    processes_.killAll();
}

Command Desktop::command(const QString &program, const QStringList &arguments) const {
    return {.program = program, .arguments = arguments};
}

void Desktop::write(const QString &path, const QByteArray &contents) {
    HomeFolder::write(path, contents);
}

void Desktop::start(const QString &program, const QStringList &arguments) {
    programs_.push_back(
        std::make_unique<ChildProcess>(program, arguments, environment_, QProcess::nullDevice()));
    if (!programs_.back()->started())
        throw std::runtime_error("cannot start " + program.toStdString());
}

void Desktop::replaceWindowManager() {
    server_.replaceWindowManager(manager_, windowManager_, environment_);
}

void Desktop::startCompositor() {
    if (view_->client().ownerOf(kCompositorSelection) != XCB_NONE)
        return;
    compositor_ = std::make_unique<ChildProcess>(
        QStringLiteral("picom"),
        QStringList{QStringLiteral("--backend"), QStringLiteral("xrender"),
                    QStringLiteral("--config"), QProcess::nullDevice()},
        environment_, QProcess::nullDevice());
    if (!waitUntil([&] { return view_->client().ownerOf(kCompositorSelection) != XCB_NONE; }))
        throw std::runtime_error("the compositor did not start");
}

void Desktop::stopCompositor() {
    if (!compositor_)
        return;
    compositor_.reset();
    if (!waitUntil([&] { return view_->client().ownerOf(kCompositorSelection) == XCB_NONE; }))
        throw std::runtime_error("the compositor did not end");
}

void Desktop::killServer() {
    server_.process().kill();
}

void Desktop::screenshot(const QString &path) {
    ChildProcess shot(QStringLiteral("import"),
                      {QStringLiteral("-window"), QStringLiteral("root"), path}, environment_);
    if (!shot.waitForExit())
        shot.kill();
}

}  // namespace kestrelbay::desktop
