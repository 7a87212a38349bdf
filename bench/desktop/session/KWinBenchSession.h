#pragma once

#include <optional>

#include "desktop/kwin/KWinStage.h"
#include "session/BenchSession.h"
#include "session/FocusOnBus.h"

namespace kestrelbay::bench {

/// Under KWin.
class KWinBenchSession final : public BenchSession {
public:
    /// Where KestrelBay has the windows from.
    enum class Windows {
        /// KWin's protocol for task bars, as what is installed with a desktop entry.
        Protocol,
        /// A script in KWin.
        Script,
    };

    KWinBenchSession(const QString &program, Windows windows);

    [[nodiscard]] desktop::KWinStage &stage() override { return stage_; }
    [[nodiscard]] QString ownWay() const override {
        return QStringLiteral("Plasma's shortcut of a program, dbus-send");
    }
    void startOthers(Window target) override;
    [[nodiscard]] std::optional<Focus> nextFocus(std::chrono::milliseconds timeout) override {
        return focus_.next(target_, timeout);
    }

private:
    desktop::KWinStage stage_;
    FocusOnBus focus_;
    /// As KWin calls it.
    QString target_;
};

}  // namespace kestrelbay::bench
