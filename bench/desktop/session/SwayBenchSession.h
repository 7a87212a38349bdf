#pragma once

#include <optional>

#include "desktop/sway/SwayStage.h"
#include "platform/linux/wayland/sway/SwayIpc.h"
#include "session/BenchSession.h"

namespace kestrelbay::bench {

/// Under sway, which tells of the focus by its events.
class SwayBenchSession final : public BenchSession {
public:
    explicit SwayBenchSession(const QString &program);

    [[nodiscard]] desktop::SwayStage &stage() override { return stage_; }
    [[nodiscard]] QString ownWay() const override { return QStringLiteral("sway's exec swaymsg"); }
    void startOthers(Window target) override;
    [[nodiscard]] std::optional<Focus> nextFocus(std::chrono::milliseconds timeout) override;

private:
    desktop::SwayStage stage_;
    sway::SwayIpc events_;
    Window target_ = 0;
};

}  // namespace kestrelbay::bench
