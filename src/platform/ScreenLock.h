#pragma once

#include <functional>
#include <memory>

namespace kestrelbay {

/// The lock of the screen. On systems where it is a program like any other it fails
/// while another one has grabbed the keyboard, and the screen stays open. Main thread.
class ScreenLock {
public:
    /// Listens as long as it exists.
    class Watch {
    public:
        virtual ~Watch() = default;
    };

    virtual ~ScreenLock() = default;

    /// Calls the handler whenever the session is about to be locked or the machine to
    /// sleep, before the keyboard is needed for it, as far as the desktop tells. The
    /// handler may destroy the watch. Null where the lock gets the keyboard anyway.
    [[nodiscard]] virtual std::unique_ptr<Watch> watch(std::function<void()> aboutToLock) = 0;
};

}  // namespace kestrelbay
