#include "desktop/session/Desktop.h"

#include <stdexcept>

#include "support/Poll.h"

namespace kestrelbay::desktop {

using testing::ChildProcess;
using testing::waitUntil;

namespace {
constexpr std::uint32_t kWantedDesktops = 4;
constexpr std::chrono::milliseconds kOneQuestion{200};
constexpr const char *kCompositorSelection = "_NET_WM_CM_S0";
}  // namespace

Desktop::Desktop(QString windowManager, const QStringList &serverArguments)
    : processes_(home_.path()),
      server_(serverArguments),
      environment_(server_.environment()),
      windowManager_(std::move(windowManager)) {
    home_.addTo(environment_);
    environment_.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    // No accessibility bus: toolkits would wait for it at every start.
    environment_.insert(QStringLiteral("NO_AT_BRIDGE"), QStringLiteral("1"));
    environment_.insert(QStringLiteral("GTK_A11Y"), QStringLiteral("none"));
    environment_.insert(QStringLiteral("GVFS_DISABLE_FUSE"), QStringLiteral("1"));

    environment_.remove(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
    bus_ = std::make_unique<ChildProcess>(
        QStringLiteral("dbus-daemon"),
        QStringList{QStringLiteral("--session"), QStringLiteral("--print-address"),
                    QStringLiteral("--nofork"), QStringLiteral("--nopidfile")},
        environment_);
    if (!waitUntil([&] { return bus_->output().contains('\n'); }))
        throw std::runtime_error("the session bus did not start");
    environment_.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                        QString::fromLatin1(bus_->output().split('\n').first()));

    manager_ = server_.startWindowManager(windowManager_, managerArguments(), environment_);
    view_.emplace(displayName());
    if (view_->desktopCount() < 2)
        view_->setDesktopCount(kWantedDesktops);
    if (!waitUntil([&] { return view_->desktopCount() >= 2; }))
        throw std::runtime_error("there is only one workspace");
}

Desktop::~Desktop() {
    programs_.clear();
    compositor_.reset();
    manager_.reset();
    earlierManager_.reset();
    bus_.reset();
    processes_.killAll();
}

QStringList Desktop::managerArguments() const {
    if (windowManager_ == u"openbox")
        return {QStringLiteral("--config-file"), home_.openboxConfig(),
                QStringLiteral("--sm-disable")};
    if (windowManager_ == u"xfwm4")
        return {QStringLiteral("--compositor=off"), QStringLiteral("--sm-client-disable")};
    return {QStringLiteral("--sm-disable"), QStringLiteral("--no-composite")};
}

void Desktop::start(const QString &program, const QStringList &arguments) {
    programs_.push_back(
        std::make_unique<ChildProcess>(program, arguments, environment_, QProcess::nullDevice()));
    if (!programs_.back()->started())
        throw std::runtime_error("cannot start " + program.toStdString());
}

void Desktop::replaceWindowManager() {
    const WindowManagerView::Window before = view_->managerWindow();
    earlierManager_ = std::move(manager_);
    manager_ = std::make_unique<ChildProcess>(
        windowManager_, QStringList{QStringLiteral("--replace")} + managerArguments(), environment_,
        QProcess::nullDevice());
    const auto announced = [&] {
        const WindowManagerView::Window now = view_->managerWindow();
        return !earlierManager_->isRunning() && now != XCB_NONE && now != before;
    };
    if (!waitUntil(announced))
        throw std::runtime_error("the second window manager did not take over");
    // It announces itself before it listens, and what is asked until then is lost.
    if (!waitUntil([&] { return view_->answers(kOneQuestion); }))
        throw std::runtime_error("the second window manager does not answer");
}

void Desktop::startCompositor() {
    compositor_ = std::make_unique<ChildProcess>(
        QStringLiteral("picom"),
        QStringList{QStringLiteral("--backend"), QStringLiteral("xrender"),
                    QStringLiteral("--config"), QProcess::nullDevice()},
        environment_, QProcess::nullDevice());
    if (!waitUntil([&] { return view_->client().ownerOf(kCompositorSelection) != XCB_NONE; }))
        throw std::runtime_error("the compositor did not start");
}

void Desktop::stopCompositor() {
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
