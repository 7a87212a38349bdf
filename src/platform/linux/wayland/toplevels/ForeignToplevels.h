#pragma once

#include <map>
#include <memory>

#include "platform/linux/wayland/client/Globals.h"
#include "platform/linux/wayland/toplevels/Toplevels.h"

struct wl_seat;
struct zwlr_foreign_toplevel_handle_v1;
struct zwlr_foreign_toplevel_manager_v1;

namespace kestrelbay::wayland {

/// By wlr-foreign-toplevel-management-unstable-v1, which tells of no processes.
class ForeignToplevels final : public Toplevels {
public:
    /// Of a compositor that offers it. The history has to outlive this.
    ForeignToplevels(const Globals &globals, ToplevelHistory &history);
    ~ForeignToplevels() override;
    ForeignToplevels(const ForeignToplevels &) = delete;
    ForeignToplevels &operator=(const ForeignToplevels &) = delete;

    /// 0 when it is not offered.
    [[nodiscard]] static std::uint32_t versionIn(const Globals &globals);

    [[nodiscard]] bool isWhole() const override { return true; }
    /// What was opened last stands for the front-most.
    [[nodiscard]] std::vector<DesktopWindow> windows() const override;
    void setMinimized(std::int64_t window, bool isMinimized) override;
    void activate(std::int64_t window) override;

private:
    struct Window;
    struct Listener;

    [[nodiscard]] zwlr_foreign_toplevel_handle_v1 *handleOf(std::int64_t window) const;

    ToplevelHistory &history_;
    std::unique_ptr<wl_seat, ReleaseProxy> seat_;
    std::unique_ptr<zwlr_foreign_toplevel_manager_v1, ReleaseProxy> manager_;
    std::map<std::int64_t, std::unique_ptr<Window>> windows_;
};

}  // namespace kestrelbay::wayland
