#include "desktop/gnome/GnomeView.h"

#include <QJsonArray>

namespace kestrelbay::desktop {

namespace {

/// All windows, the front-most last.
const auto kAll = QStringLiteral(
    "global.display.sort_windows_by_stacking(global.get_window_actors().map(a => a.meta_window)"
    ".filter(w => !w.is_override_redirect()))");

QString withIt(WindowsView::Window window, const QString &expression) {
    return QStringLiteral("(it => it && (%3))(%1.find(w => w.get_stable_sequence() === %2))")
        .arg(kAll)
        .arg(window)
        .arg(expression);
}

}  // namespace

QJsonValue GnomeView::of(Window window, const QString &expression) {
    return session_.shell().evaluate(withIt(window, expression));
}

void GnomeView::tell(Window window, const QString &statement) {
    session_.shell().run(withIt(window, statement + QStringLiteral(", 0")));
}

std::vector<GnomeView::Window> GnomeView::windowsOf(const QString &application) {
    const QJsonValue found = session_.shell().evaluate(
        QStringLiteral("%1.reverse().filter(w => w.get_wm_class() === '%2')"
                       ".map(w => w.get_stable_sequence())")
            .arg(kAll, application));
    std::vector<Window> windows;
    for (const auto &window : found.toArray())
        windows.push_back(static_cast<Window>(window.toInteger()));
    return windows;
}

GnomeView::Window GnomeView::active() {
    return static_cast<Window>(
        session_.shell()
            .evaluate(QStringLiteral("global.display.focus_window?.get_stable_sequence() ?? 0"))
            .toInteger());
}

bool GnomeView::hasFocus(Window window) {
    if (active() != window)
        return false;
    // As "0x600004 (its title)", or "W3 (its title)" of a window that is none of X's.
    const QString description = of(window, QStringLiteral("it.get_description()")).toString();
    if (!description.startsWith(QStringLiteral("0x")))
        return true;
    // Keys reach a program on Xwayland only once its window has a surface of Wayland's, and its
    // server has heard of the focus, too.
    return of(window, QStringLiteral("it.get_compositor_private().get_texture() !== null"))
               .toBool() &&
           session_.x().hasFocus(description.section(u' ', 0, 0).toUInt(nullptr, 16));
}

bool GnomeView::isMinimised(Window window) {
    return of(window, QStringLiteral("it.minimized")).toBool();
}

std::optional<std::uint32_t> GnomeView::desktopOf(Window window) {
    const QJsonValue found =
        of(window, QStringLiteral("it.is_on_all_workspaces() ? null : it.get_workspace().index()"));
    return found.isDouble() ? std::optional(static_cast<std::uint32_t>(found.toInt()))
                            : std::nullopt;
}

std::uint32_t GnomeView::currentDesktop() {
    return static_cast<std::uint32_t>(
        session_.shell()
            .evaluate(QStringLiteral("global.workspace_manager.get_active_workspace_index()"))
            .toInt());
}

QString GnomeView::windowClass(Window window) {
    return of(window, QStringLiteral("it.get_wm_class()")).toString();
}

QString GnomeView::title(Window window) {
    return of(window, QStringLiteral("it.get_title()")).toString();
}

qint64 GnomeView::processId(Window window) {
    return of(window, QStringLiteral("it.get_pid()")).toInteger();
}

bool GnomeView::isShown(Window window) {
    return of(window, QStringLiteral("it.showing_on_its_workspace() && "
                                     "it.located_on_workspace("
                                     "global.workspace_manager.get_active_workspace())"))
        .toBool();
}

GnomeView::Window GnomeView::frontMostAt(Window window) {
    return static_cast<Window>(
        of(window,
           QStringLiteral(
               "%1.reverse().find(w => w.showing_on_its_workspace() && w.located_on_workspace("
               "global.workspace_manager.get_active_workspace()) && "
               "w.get_frame_rect().overlap(it.get_frame_rect()))?.get_stable_sequence() ?? 0")
               .arg(kAll))
            .toInteger());
}

void GnomeView::activate(Window window) {
    tell(window,
         QStringLiteral("Main.activateWindow(it, global.display.get_current_time_roundtrip())"));
}

void GnomeView::minimise(Window window) {
    tell(window, QStringLiteral("it.minimize()"));
}

void GnomeView::moveToDesktop(Window window, std::uint32_t desktop) {
    tell(window, QStringLiteral("it.change_workspace_by_index(%1, true)").arg(desktop));
}

void GnomeView::showDesktop(std::uint32_t desktop) {
    session_.shell().run(
        QStringLiteral("global.workspace_manager.get_workspace_by_index(%1).activate("
                       "global.display.get_current_time_roundtrip())")
            .arg(desktop));
}

void GnomeView::close(Window window) {
    tell(window, QStringLiteral("it.delete(global.display.get_current_time_roundtrip())"));
}

}  // namespace kestrelbay::desktop
