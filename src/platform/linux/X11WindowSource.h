#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include <QString>

#include "platform/linux/WindowNews.h"
#include "platform/linux/WindowSource.h"
#include "platform/linux/glib/LoopTimer.h"
#include "platform/linux/x11/windows/WindowTracker.h"

namespace kestrelbay {
class SystemLog;
}

namespace kestrelbay::x11 {

/// The windows of an X server, by EWMH.
class X11WindowSource final : public WindowSource {
public:
    /// An empty display name means the one of the environment. Without a server the object works as
    /// if there were no windows.
    ///
    /// A session of Wayland has others besides.
    enum class Session : std::uint8_t { OfX, OfWayland };
    X11WindowSource(QString displayName, SystemLog &log, Session session = Session::OfX);
    ~X11WindowSource() override;
    X11WindowSource(const X11WindowSource &) = delete;
    X11WindowSource &operator=(const X11WindowSource &) = delete;

    void start(Surroundings surroundings) override;
    [[nodiscard]] bool seesAllWindows() const override { return session_ == Session::OfX; }
    [[nodiscard]] std::vector<std::unique_ptr<RunningApplication>> runningApplications(
        Index index) override;
    void askAhead() override;
    /// At the active window as well, for the order of use.
    void lookAhead() override;
    [[nodiscard]] std::uint32_t time() override { return tracker_->serverTime(); }
    [[nodiscard]] std::unique_ptr<Opening> opening(const QString &entryPath, Index index) override;
    [[nodiscard]] std::vector<std::pair<QString, QString>> report(Index index) override;

private:
    class OpeningWindow;

    /// The desktop as it is, taken in.
    [[nodiscard]] DesktopPicture look(Index index);
    /// Launches whose windows are there are over then.
    void takeIn(const DesktopPicture &picture);
    /// Has the window manager listened to the last press?
    void lookAtFocus();

    const QString displayName_;
    SystemLog &log_;
    const Session session_;
    const std::shared_ptr<WindowTracker> tracker_;
    std::optional<Surroundings> surroundings_;
    std::optional<WindowNews> news_;
    std::atomic<std::chrono::milliseconds> beforeLookAtFocus_{};
    std::optional<LoopTimer> focusTimer_;
};

}  // namespace kestrelbay::x11
