#pragma once

#include <map>
#include <memory>

#include <QStringList>

#include "platform/linux/wayland/client/Globals.h"
#include "platform/linux/wayland/toplevels/Toplevels.h"

struct org_kde_plasma_window;
struct org_kde_plasma_window_management;

namespace kestrelbay::wayland {

/// By org_kde_plasma_window_management. KWin offers it to programs only whose desktop file asks for
/// it in X-KDE-Wayland-Interfaces.
class PlasmaWindows final : public Toplevels {
public:
    /// Of a compositor that offers it. The history has to outlive this.
    PlasmaWindows(const Globals &globals, ToplevelHistory &history);
    ~PlasmaWindows() override;
    PlasmaWindows(const PlasmaWindows &) = delete;
    PlasmaWindows &operator=(const PlasmaWindows &) = delete;

    /// 0 when it is not offered.
    [[nodiscard]] static std::uint32_t versionIn(const Globals &globals);

    [[nodiscard]] bool isWhole() const override;
    [[nodiscard]] std::vector<DesktopWindow> windows() const override;
    void setMinimized(std::int64_t window, bool isMinimized) override;
    void activate(std::int64_t window) override;

private:
    struct Window;
    struct Listener;

    void setState(std::int64_t window, std::uint32_t flag, bool isSet);

    ToplevelHistory &history_;
    std::unique_ptr<org_kde_plasma_window_management, ReleaseProxy> management_;
    std::map<std::int64_t, std::unique_ptr<Window>> windows_;
    /// KWin's names of the windows, the lowest one first.
    QStringList stack_;
};

}  // namespace kestrelbay::wayland
