#pragma once

#include "fakes/Journal.h"
#include "platform/NativeWindow.h"

namespace kestrelbay {

class FakeNativeWindow final : public NativeWindow {
public:
    void makeFloatingPanel(Id window) override { add("makeFloatingPanel", window); }
    [[nodiscard]] bool isTranslucencyShown() const override { return isTranslucencyShown_; }
    void setBehindWindowMaterial(Id window, const QRect &rectangle, int cornerRadius) override {
        add("setBehindWindowMaterial", window, rounded(rectangle, cornerRadius));
    }
    [[nodiscard]] bool isMaterialAGround() const override { return isMaterialAGround_; }
    void extendContentUnderTitleBar(Id window) override {
        add("extendContentUnderTitleBar", window);
    }
    void cutToRoundedRectangle(Id window, const QRect &rectangle, int cornerRadius) override {
        add("cutToRoundedRectangle", window, rounded(rectangle, cornerRadius));
    }
    [[nodiscard]] QMargins frameMargins(Id /*window*/) const override { return frameMargins_; }
    void bringProgramForward(Id window) override { add("bringProgramForward", window); }
    [[nodiscard]] std::optional<QPoint> activeWindowCenter() const override {
        return activeWindowCenter_;
    }

    // For the test:
    void setTranslucencyShown(bool shown) { isTranslucencyShown_ = shown; }
    void setMaterialAGround(bool isGround) { isMaterialAGround_ = isGround; }
    void setFrameMargins(const QMargins &margins) { frameMargins_ = margins; }
    void setActiveWindowCenter(std::optional<QPoint> center) { activeWindowCenter_ = center; }
    /// Calls since the last take: the name, the window, and what else was given.
    QStringList takeCalls() { return journal_.take(); }

private:
    void add(const char *call, Id window, const QString &rest = {}) {
        journal_.add(QStringLiteral("%1 %2").arg(QLatin1StringView(call)).arg(window) + rest);
    }

    static QString rounded(const QRect &rectangle, int cornerRadius) {
        return QStringLiteral(" %1,%2 %3x%4 radius %5")
            .arg(rectangle.x())
            .arg(rectangle.y())
            .arg(rectangle.width())
            .arg(rectangle.height())
            .arg(cornerRadius);
    }

    Journal journal_;
    QMargins frameMargins_;
    bool isTranslucencyShown_ = true;
    bool isMaterialAGround_ = false;
    std::optional<QPoint> activeWindowCenter_;
};

}  // namespace kestrelbay
