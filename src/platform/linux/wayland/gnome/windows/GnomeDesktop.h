#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include <QDBusPendingCall>
#include <QVariantList>

#include "platform/linux/wayland/gnome/ShellExtension.h"
#include "platform/linux/wayland/gnome/ShellNews.h"
#include "platform/linux/wayland/windows/Desktop.h"

namespace kestrelbay::gnome {

/// The windows of GNOME Shell, by the extension, which also knows in which order they were used.
/// None while it is disabled.
class GnomeDesktop final : public wayland::Desktop {
public:
    explicit GnomeDesktop(std::shared_ptr<const ShellExtension> shell);

    /// On the main thread.
    void listen(News news) override;
    /// One question to the Shell.
    [[nodiscard]] std::vector<wayland::DesktopWindow> read() override;
    void askAhead() override;
    [[nodiscard]] std::vector<wayland::DesktopWindow> readAsked() override;
    /// Minimises them.
    bool hide(std::span<const std::int64_t> windows) override;
    /// In one question.
    bool bringForward(std::span<const std::int64_t> hidden, std::int64_t focused) override;

private:
    using Clock = std::chrono::steady_clock;

    struct Asked {
        QDBusPendingCall call;
        Clock::time_point when;
    };

    bool request(const QString &method, const QVariantList &arguments) const;

    const std::shared_ptr<const ShellExtension> shell_;
    std::mutex mutex_;
    std::optional<Asked> asked_;
    std::optional<ShellNews> news_;
};

}  // namespace kestrelbay::gnome
