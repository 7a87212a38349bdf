#pragma once

#include <chrono>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include "platform/linux/wayland/plasma/windows/KWinLine.h"
#include "platform/linux/wayland/plasma/windows/WindowList.h"
#include "platform/linux/wayland/windows/Desktop.h"

namespace kestrelbay::plasma {

/// The windows of KWin, by a script of ours in it, for which nobody has to permit anything. KWin
/// that is started again gets the script anew. Any thread.
class KWinDesktop final : public wayland::Desktop {
public:
    /// Is there a KWin to be asked? Waits a second at most.
    [[nodiscard]] bool isThere() const { return line_.isKWinThere(); }

    void listen(News news) override;
    [[nodiscard]] std::vector<wayland::DesktopWindow> read() override;
    void askAhead() override;
    [[nodiscard]] std::vector<wayland::DesktopWindow> readAsked() override;
    /// Minimises them.
    bool hide(std::span<const std::int64_t> windows) override;
    bool bringForward(std::span<const std::int64_t> hidden, std::int64_t focused) override;

private:
    using Clock = std::chrono::steady_clock;

    struct Asked {
        KWinLine::Number number;
        Clock::time_point when;
    };

    [[nodiscard]] std::vector<wayland::DesktopWindow> take(const std::optional<QByteArray> &list);

    std::mutex mutex_;
    WindowList list_;
    std::optional<Asked> askedAhead_;
    std::optional<News> news_;
    KWinLine line_;
};

}  // namespace kestrelbay::plasma
