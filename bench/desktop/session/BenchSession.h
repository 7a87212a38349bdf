#pragma once

#include <chrono>
#include <optional>

#include <QString>

#include "desktop/stage/WaylandStage.h"

namespace kestrelbay::bench {

/// A Wayland session in which hotkeys are timed: KestrelBay's, its desktop's own, and that of the
/// least that a program can do there.
class BenchSession {
public:
    using Clock = std::chrono::steady_clock;
    using Window = desktop::StageBase::Window;

    /// Beside Super; none of KestrelBay's rules has them.
    static constexpr desktop::Key kOwnKey = desktop::keys::kH, kLimitsKey = desktop::keys::kY;

    BenchSession(const BenchSession &) = delete;
    BenchSession &operator=(const BenchSession &) = delete;
    virtual ~BenchSession() = default;

    [[nodiscard]] virtual desktop::WaylandStage &stage() = 0;
    /// What the desktop's own binding does.
    [[nodiscard]] virtual QString ownWay() const = 0;
    /// Soon the keys above bring this window forward. Once, before nextFocus(); throws
    /// std::runtime_error.
    virtual void startOthers(Window target) = 0;

    struct Focus {
        bool isTargets;
        Clock::time_point when;
    };
    /// The next time that a window has got the focus, if that comes within the time.
    [[nodiscard]] virtual std::optional<Focus> nextFocus(std::chrono::milliseconds timeout) = 0;

protected:
    BenchSession() = default;
};

}  // namespace kestrelbay::bench
