#pragma once

#include <optional>

#include "desktop/gnome/GnomeStage.h"
#include "session/BenchSession.h"
#include "session/FocusOnBus.h"

namespace kestrelbay::bench {

/// In GNOME, where what only extensions can do is evaluated by the Shell.
class GnomeBenchSession final : public BenchSession {
public:
    explicit GnomeBenchSession(const QString &program);

    [[nodiscard]] desktop::GnomeStage &stage() override { return stage_; }
    [[nodiscard]] QString ownWay() const override {
        return QStringLiteral("GNOME's custom shortcut, dbus-send");
    }
    void startOthers(Window target) override;
    [[nodiscard]] std::optional<Focus> nextFocus(std::chrono::milliseconds timeout) override {
        return focus_.next(target_, timeout);
    }

private:
    desktop::GnomeStage stage_;
    FocusOnBus focus_;
    /// As the Shell's scripts call it.
    QString target_;
};

}  // namespace kestrelbay::bench
