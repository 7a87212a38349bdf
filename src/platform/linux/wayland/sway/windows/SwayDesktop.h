#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include <QByteArray>
#include <QJsonDocument>
#include <QObject>
#include <QString>

#include "platform/linux/wayland/sway/SwayEvents.h"
#include "platform/linux/wayland/sway/SwayIpc.h"
#include "platform/linux/wayland/sway/windows/KeptWindows.h"
#include "platform/linux/wayland/sway/windows/SwayTree.h"
#include "platform/linux/wayland/windows/Desktop.h"

namespace kestrelbay::sway {

/// The windows of a sway, as its tree shows them, and what it is asked to do with them.
///
/// Between two looks at the tree events tell what changes, and the tree is looked at again ahead of
/// the next press when they do not tell enough. Any thread; to be made and destroyed on that of
/// the events.
class SwayDesktop final : public wayland::Desktop {
public:
    explicit SwayDesktop(std::shared_ptr<SwayEvents> events);

    /// On the thread of the events.
    void listen(News news) override;
    /// One question to sway.
    [[nodiscard]] std::vector<wayland::DesktopWindow> read() override;
    [[nodiscard]] std::optional<std::vector<wayland::DesktopWindow>> known() override;
    void askAhead() override;
    [[nodiscard]] std::vector<wayland::DesktopWindow> readAsked() override;
    /// Into the scratchpad, as sway has no other place to be out of view.
    bool hide(std::span<const std::int64_t> windows) override;
    /// In one message.
    bool bringForward(std::span<const std::int64_t> hidden, std::int64_t focused) override;

private:
    using Clock = std::chrono::steady_clock;

    /// Where a window was before it was hidden, which sway forgets.
    struct Place {
        QString workspace;
        bool isFloating = false;
        bool isFullscreen = false;
    };

    // With the lock held.
    [[nodiscard]] std::vector<wayland::DesktopWindow> takeIn(const QJsonDocument &tree,
                                                             std::uint64_t moment);
    [[nodiscard]] QByteArray commandsToShow(std::int64_t window);
    [[nodiscard]] std::optional<QJsonDocument> ask(MessageType type, const QByteArray &payload);
    bool run(const QByteArray &commands);

    void takeIn(const SwayIpc::Event &event);
    void lookSoon();

    const std::shared_ptr<SwayEvents> events_;
    KeptWindows kept_;
    /// Held while sway is asked.
    std::mutex mutex_;
    std::optional<SwayIpc> ipc_;
    struct Question {
        Clock::time_point time;
        std::uint64_t moment = 0;
    };
    std::optional<Question> askedAhead_;
    /// As the tree showed them last.
    std::map<std::int64_t, SwayWindow> windows_;
    std::map<std::int64_t, Place> places_;
    std::optional<News> news_;
    std::atomic<bool> isLooking_{false};
    std::atomic<bool> isLookWanted_{false};
    /// What is called later is called on this object's behalf.
    QObject context_;
};

}  // namespace kestrelbay::sway
