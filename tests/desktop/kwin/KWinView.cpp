#include "desktop/kwin/KWinView.h"

#include <algorithm>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace kestrelbay::desktop {

namespace {

/// What differs between KWin 5 and 6.
constexpr const char *kCommon = R"(
    const all = workspace.windowList ? workspace.windowList() : workspace.clientList();
    const key = 'activeWindow' in workspace ? 'activeWindow' : 'activeClient';
    const is6 = Boolean(workspace.windowList);
    const current = is6 ? workspace.desktops.indexOf(workspace.currentDesktop) + 1
                        : workspace.currentDesktop;
    const desktopOf = w => is6 ? (w.desktops.length == 1 ? workspace.desktops.indexOf(w.desktops[0]) + 1 : 0)
                               : (w.onAllDesktops ? 0 : w.desktop);
)";

constexpr const char *kRead = R"(
    return JSON.stringify(all.filter(w => w.normalWindow || w.dialog)
        .sort((a, b) => b.stackingOrder - a.stackingOrder)
        .map(w => ({name: String(w.internalId), windowClass: String(w.resourceClass).toLowerCase(),
                    title: w.caption, process: w.pid, active: w === workspace[key],
                    minimised: w.minimized, desktop: desktopOf(w),
                    place: [w.frameGeometry.x, w.frameGeometry.y,
                            w.frameGeometry.width, w.frameGeometry.height]})));
)";

QString script(const char *body) {
    return QLatin1String(kCommon) + QLatin1String(body);
}

}  // namespace

std::vector<KWinView::Info> KWinView::read() {
    std::vector<Info> windows;
    const QByteArray told = session_.scripts().run(script(kRead)).toUtf8();
    for (const auto &value : QJsonDocument::fromJson(told).array()) {
        const QJsonObject json = value.toObject();
        const QString name = json[QStringLiteral("name")].toString();
        auto known = std::ranges::find(names_, name);
        if (known == names_.end())
            known = names_.insert(names_.end(), name);
        const QJsonArray place = json[QStringLiteral("place")].toArray();
        windows.push_back(
            {.id = static_cast<Window>(known - names_.begin() + 1),
             .windowClass = json[QStringLiteral("windowClass")].toString(),
             .title = json[QStringLiteral("title")].toString(),
             .processId = json[QStringLiteral("process")].toInteger(),
             .isActive = json[QStringLiteral("active")].toBool(),
             .isMinimised = json[QStringLiteral("minimised")].toBool(),
             .desktop = static_cast<std::uint32_t>(json[QStringLiteral("desktop")].toInt()),
             .place = {place[0].toInt(), place[1].toInt(), place[2].toInt(), place[3].toInt()}});
    }
    return windows;
}

KWinView::Info KWinView::find(Window window) {
    const auto windows = read();
    const auto found = std::ranges::find(windows, window, &Info::id);
    return found == windows.end() ? Info() : *found;
}

void KWinView::tell(Window window, const QString &statement) {
    if (window == 0 || window > names_.size())
        return;
    (void)session_.scripts().run(
        script("") +
        QStringLiteral("for (const w of all) { if (String(w.internalId) == '%1') { %2; } }")
            .arg(nameOf(window), statement));
}

std::vector<KWinView::Window> KWinView::windowsOf(const QString &windowClass) {
    std::vector<Window> windows;
    for (const Info &info : read())
        if (info.windowClass == windowClass)
            windows.push_back(info.id);
    return windows;
}

KWinView::Window KWinView::active() {
    const auto windows = read();
    const auto found = std::ranges::find(windows, true, &Info::isActive);
    return found == windows.end() ? Window{0} : found->id;
}

bool KWinView::isMinimised(Window window) {
    return find(window).isMinimised;
}

std::optional<std::uint32_t> KWinView::desktopOf(Window window) {
    const Info info = find(window);
    return info.desktop == 0 ? std::nullopt : std::optional(info.desktop - 1);
}

std::uint32_t KWinView::currentDesktop() {
    return session_.scripts().run(script("return current;")).toUInt() - 1;
}

QString KWinView::windowClass(Window window) {
    return find(window).windowClass;
}

QString KWinView::title(Window window) {
    return find(window).title;
}

qint64 KWinView::processId(Window window) {
    return find(window).processId;
}

bool KWinView::isShown(Window window) {
    const Info info = find(window);
    return info.id != 0 && !info.isMinimised &&
           (info.desktop == 0 || info.desktop == currentDesktop() + 1);
}

KWinView::Window KWinView::frontMostAt(Window window) {
    const std::uint32_t current = currentDesktop() + 1;
    const auto windows = read();
    const auto isShown = [&](const Info &info) {
        return !info.isMinimised && (info.desktop == 0 || info.desktop == current);
    };
    const auto found = std::ranges::find(windows, window, &Info::id);
    if (found == windows.end() || !isShown(*found))
        return 0;
    return std::ranges::find_if(windows,
                                [&](const Info &info) {
                                    return isShown(info) && info.place.intersects(found->place);
                                })
        ->id;
}

void KWinView::activate(Window window) {
    tell(window, QStringLiteral("workspace[key] = w"));
}

void KWinView::minimise(Window window) {
    tell(window, QStringLiteral("w.minimized = true"));
}

void KWinView::moveToDesktop(Window window, std::uint32_t desktop) {
    tell(window, QStringLiteral("if (is6) w.desktops = [workspace.desktops[%1]]; "
                                "else w.desktop = %1 + 1")
                     .arg(desktop));
}

void KWinView::showDesktop(std::uint32_t desktop) {
    (void)session_.scripts().run(
        script("") +
        QStringLiteral("workspace.currentDesktop = is6 ? workspace.desktops[%1] : %1 + 1;")
            .arg(desktop));
}

void KWinView::close(Window window) {
    tell(window, QStringLiteral("w.closeWindow()"));
}

}  // namespace kestrelbay::desktop
