#pragma once

#include "desktop/display/FrontProgram.h"
#include "desktop/display/Keyboard.h"
#include "desktop/session/PtyProcess.h"
#include "desktop/session/Session.h"

namespace kestrelbay::desktop {

/// Debian's wev, a plain Wayland program that tells of each key that reaches it.
class KeyReporter : public FrontProgram {
public:
    static constexpr const char *kApplication = "wev";

    /// Throws std::runtime_error when it cannot be started.
    KeyReporter(Session &session, WindowsView &view, Keyboard &keyboard);

    /// 0 while it has no window.
    [[nodiscard]] WindowsView::Window id() override;
    /// Without repeats, of which it does not tell.
    [[nodiscard]] int pressesOf(std::uint8_t keycode) override;
    void forget() override;

private:
    [[nodiscard]] qsizetype count(const QString &words);
    /// Returns when it has told of all keys that were sent to it.
    void catchUp();

    WindowsView &view_;
    Keyboard &keyboard_;
    PtyProcess process_;
    qsizetype forgotten_ = 0;
};

}  // namespace kestrelbay::desktop
