#pragma once

#include "platform/NativeWindow.h"

namespace kestrelbay {

/// Windows are named by their content views, which is what Qt names them by.
class MacNativeWindow final : public NativeWindow {
public:
    void makeFloatingPanel(Id window) override;
    [[nodiscard]] bool isTranslucencyShown() const override { return true; }
    /// Puts the system's material for heads-up displays behind the content. A second
    /// call changes the first one's.
    void setBehindWindowMaterial(Id window, const QRect &rectangle, int cornerRadius) override;
    [[nodiscard]] bool isMaterialAGround() const override { return true; }
    void extendContentUnderTitleBar(Id window) override;
    /// Never called, since translucency is always shown.
    void cutToRoundedRectangle(Id /*window*/, const QRect & /*rectangle*/,
                               int /*cornerRadius*/) override {}
    /// The title bar is left out of account.
    [[nodiscard]] QMargins frameMargins(Id /*window*/) const override { return {}; }
    void bringProgramForward(Id window) override;
    /// The middle of the screen with that window: where the windows of other programs
    /// are is told only to those with permission.
    [[nodiscard]] std::optional<QPoint> activeWindowCenter() const override;
};

}  // namespace kestrelbay
