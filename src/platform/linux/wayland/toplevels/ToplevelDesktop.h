#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include <QLatin1StringView>
#include <QString>

#include "platform/linux/glib/LoopReader.h"
#include "platform/linux/wayland/client/Connection.h"
#include "platform/linux/wayland/client/Globals.h"
#include "platform/linux/wayland/toplevels/EventPause.h"
#include "platform/linux/wayland/toplevels/Toplevels.h"
#include "platform/linux/wayland/windows/Desktop.h"

namespace kestrelbay::wayland {

enum class ToplevelProtocol : std::uint8_t {
    PlasmaWindowManagement,
    ForeignToplevelManagement,
};

/// As compositors call it.
[[nodiscard]] QLatin1StringView nameOf(ToplevelProtocol protocol);

/// The windows of a compositor by one of the protocols made for task bars, on a connection of its
/// own. The compositor tells of each change by itself, so what a press asks is only whether all of
/// it has come. A compositor that has gone is looked for again each second. Any thread.
class ToplevelDesktop final : public Desktop {
public:
    ToplevelDesktop(QString socketPath, ToplevelProtocol protocol,
                    std::chrono::milliseconds patience = Connection::kPatience);

    /// Of the protocol; 0 when the compositor does not offer it to this program.
    [[nodiscard]] std::uint32_t version();

    void listen(News news) override;
    /// As they were told last when the compositor does not answer, or has just gone.
    [[nodiscard]] std::vector<DesktopWindow> read() override;
    void askAhead() override;
    [[nodiscard]] std::vector<DesktopWindow> readAsked() override;
    /// Minimises them. What a compositor leaves as it is gives its focus to the last used of the
    /// other windows.
    bool hide(std::span<const std::int64_t> windows) override;
    bool bringForward(std::span<const std::int64_t> hidden, std::int64_t focused) override;

private:
    using Clock = std::chrono::steady_clock;

    /// One connection, and what was made on it.
    struct Session {
        Session(const QString &socketPath, ToplevelProtocol protocol,
                std::chrono::milliseconds patience, ToplevelHistory &history);

        Connection connection;
        Globals globals;
        std::uint32_t version = 0;
        /// Null when the protocol is not offered.
        std::unique_ptr<Toplevels> toplevels;
    };

    /// Waits for the compositor; may be called without the lock.
    [[nodiscard]] std::unique_ptr<Session> makeSession();

    // With the lock held.
    [[nodiscard]] bool isOpen() const;
    void begin(std::unique_ptr<Session> session);
    [[nodiscard]] std::vector<DesktopWindow> takeIn(bool isUpToDate);
    [[nodiscard]] std::vector<DesktopWindow> windows();

    // On the loop.
    void startListening();
    void takeInEvents();
    void lookForCompositor();

    const QString socketPath_;
    const ToplevelProtocol protocol_;
    const std::chrono::milliseconds patience_;
    std::mutex mutex_;
    ToplevelHistory history_;
    /// The one that broke until the compositor has been looked for.
    std::unique_ptr<Session> session_;
    std::optional<Clock::time_point> askedAhead_;
    std::optional<News> news_;
    std::optional<LoopReader> reader_;
    EventPause pause_;
};

}  // namespace kestrelbay::wayland
