#pragma once

#include "platform/NativeWindow.h"

namespace kestrelbay {

/// A desktop on which this program can do no more with its windows than Qt does, as where they
/// are Wayland's own.
class QtNativeWindow final : public NativeWindow {
public:
    /// Nothing: such a window is an ordinary one, which gets the focus where the desktop puts it.
    void makeFloatingPanel(Id /*window*/) override {}
    /// Always: Wayland's compositors blend all windows.
    [[nodiscard]] bool isTranslucencyShown() const override { return true; }
    void setBehindWindowMaterial(Id /*window*/, const QRect & /*rectangle*/,
                                 int /*cornerRadius*/) override {}
    [[nodiscard]] bool isMaterialAGround() const override { return false; }
    void extendContentUnderTitleBar(Id /*window*/) override {}
    void cutToRoundedRectangle(Id /*window*/, const QRect & /*rectangle*/,
                               int /*cornerRadius*/) override {}
    [[nodiscard]] QMargins frameMargins(Id /*window*/) const override { return {}; }
    /// As far as the desktop lets it.
    void bringProgramForward(Id window) override;
    [[nodiscard]] std::optional<QPoint> activeWindowCenter() const override { return {}; }
};

}  // namespace kestrelbay
