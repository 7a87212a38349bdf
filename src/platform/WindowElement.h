#pragma once

#include <optional>

#include <QLatin1StringView>
#include <QString>

namespace kestrelbay {

/// The subrole of an ordinary top-level window.
inline constexpr QLatin1StringView kStandardWindowSubrole{"AXStandardWindow"};

/// One window of another program. Safe to use from any one thread at a time.
/// Calls may block until the window's owner or the window manager answers. A
/// window that has vanished reads as "no value", and requests to it are lost.
class WindowElement {
public:
    virtual ~WindowElement() = default;

    /// What kind of window it is, kStandardWindowSubrole for an ordinary one; no
    /// value when it can't be read.
    [[nodiscard]] virtual std::optional<QString> subrole() const = 0;

    /// No value when it can't be read.
    [[nodiscard]] virtual std::optional<bool> isMinimized() const = 0;

    // Requests: false when the request could not be delivered. True does not mean
    // that the owner obeyed.
    virtual bool setMinimized(bool minimized) = 0;
    /// Makes it the window that comes forward with its application.
    virtual bool setMain() = 0;
    /// Gives it keyboard focus.
    virtual bool setFocused() = 0;
    virtual bool raise() = 0;
};

}  // namespace kestrelbay
