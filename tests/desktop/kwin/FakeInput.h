#pragma once

#include <QProcess>

#include "desktop/display/Keyboard.h"

namespace kestrelbay::desktop {

class WaylandSession;

/// The keyboard that KWin lets a program of the session stand for.
class FakeInput : public Keyboard {
public:
    /// What the program is called in the session's home folder.
    static constexpr const char *kProgram = "desktop_keys";

    /// The program lies there. Throws std::runtime_error when KWin does not let it.
    explicit FakeInput(WaylandSession &session);
    ~FakeInput() override;

    void press(std::uint8_t xKeycode) override;
    void release(std::uint8_t xKeycode) override;

private:
    void send(char what, std::uint8_t xKeycode);
    void awaitAnswer();

    QProcess process_;
};

}  // namespace kestrelbay::desktop
