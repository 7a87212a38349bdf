#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/SystemSettings.h"
#include "platform/linux/glib/BackgroundLoop.h"
#include "platform/linux/glib/MainThreadInbox.h"

namespace kestrelbay {

/// The colour scheme among the settings of GNOME and its relatives, read and watched
/// on the thread of a loop.
class DesktopColorScheme {
public:
    /// None where the desktop has no such setting.
    using Handler = std::function<void(std::optional<ColorScheme>)>;

    /// The handler is called first with what is set, then at each change, through the
    /// inbox, which is to be closed before this ends.
    DesktopColorScheme(BackgroundLoop &loop, std::shared_ptr<MainThreadInbox> inbox,
                       Handler handler);
    ~DesktopColorScheme();
    DesktopColorScheme(const DesktopColorScheme &) = delete;
    DesktopColorScheme &operator=(const DesktopColorScheme &) = delete;

private:
    struct Remote;

    BackgroundLoop &loop_;
    /// Belongs to the thread of the loop.
    std::unique_ptr<Remote> remote_;
};

}  // namespace kestrelbay
