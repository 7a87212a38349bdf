#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <optional>

#include <QObject>

#include "platform/SystemSettings.h"
#include "platform/linux/glib/BackgroundLoop.h"
#include "platform/linux/glib/GObjectPtr.h"
#include "platform/linux/glib/GioBus.h"

namespace kestrelbay {

/// The colour scheme among the settings of GNOME and its relatives. GSettings tells of
/// changes to a thread that runs GLib's loop, which is one of its own. To be made and
/// destroyed on the main thread.
class DesktopColorScheme {
public:
    /// None where the desktop has no such setting.
    using Handler = std::function<void(std::optional<ColorScheme>)>;

    /// The handler is called from the main event loop, first with what is set, then at each
    /// change.
    explicit DesktopColorScheme(Handler handler);
    ~DesktopColorScheme();
    DesktopColorScheme(const DesktopColorScheme &) = delete;
    DesktopColorScheme &operator=(const DesktopColorScheme &) = delete;

    /// What is set at first, if that becomes known within this time.
    [[nodiscard]] std::optional<ColorScheme> waitForFirst(std::chrono::milliseconds longest);

private:
    void start();
    void tell(std::optional<ColorScheme> scheme);
    [[nodiscard]] std::optional<ColorScheme> read() const;
    static void onChanged(GSettings *settings, const char *key, gpointer self);

    const Handler handler_;
    /// What the loop tells is dropped with it.
    QObject receiver_;
    std::promise<std::optional<ColorScheme>> firstPromise_;
    std::shared_future<std::optional<ColorScheme>> first_ = firstPromise_.get_future().share();
    GioBus bus_;
    /// Belongs to the thread of the loop.
    GObjectPtr<GSettings> settings_;
    // Last, so that its thread has ended before anything that the thread uses.
    BackgroundLoop loop_;
};

}  // namespace kestrelbay
