#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include <QByteArray>
#include <QString>

#include "platform/linux/applications/entries/ApplicationIndex.h"
#include "platform/linux/wayland/sway/SwayIpc.h"
#include "platform/linux/wayland/sway/windows/SwayTree.h"

namespace kestrelbay::sway {

/// A window, and the entries that it belongs to.
struct KnownWindow {
    SwayWindow window;
    std::shared_ptr<const WindowFacts> facts;
    std::shared_ptr<const std::vector<ApplicationMatch>> matches;
};

/// The desktop at one moment.
struct SwayPicture {
    std::shared_ptr<const ApplicationIndex> index;
    /// Front-most first, that is last used first.
    std::vector<KnownWindow> windows;
};

/// The windows of a sway, as its tree shows them, and what it is asked to do with them.
///
/// The tree tells which of the windows of one workspace had the focus last, and the events of the
/// focus which of all. Any thread.
class SwayDesktop {
public:
    using AddLaunch = std::function<void(std::int64_t pid, ProcessFacts &facts)>;

    SwayDesktop(QString socketPath, AddLaunch addLaunch);

    /// One question to sway. No windows when it does not answer.
    [[nodiscard]] SwayPicture read(std::shared_ptr<const ApplicationIndex> index);
    /// Asks that question of the next readAsked(), without waiting for the answer.
    void askAhead();
    /// The desktop as it was at askAhead(), if that was a moment ago; otherwise read().
    [[nodiscard]] SwayPicture readAsked(std::shared_ptr<const ApplicationIndex> index);

    /// Takes in which windows had the focus meanwhile. sway keeps the events that nobody fetches,
    /// and hangs up on who leaves too many.
    void takeInEvents();
    /// Readable when there are some; -1 when sway does not tell of any.
    [[nodiscard]] int eventDescriptor() const { return events_.descriptor(); }

    // Requests: false when sway could not be asked.
    /// Into the scratchpad, as sway has no other place to be out of view.
    bool hide(std::span<const SwayWindow> windows);
    /// Brings back those that are hidden, in their order, to where they were as far as that is
    /// known, and gives one of any window the focus, on whatever workspace that is.
    bool bringForward(std::span<const SwayWindow> hidden, std::int64_t focused);

private:
    using Clock = std::chrono::steady_clock;

    /// Where a window was before it was hidden, which sway forgets.
    struct Place {
        QString workspace;
        bool isFloating = false;
        bool isFullscreen = false;
    };
    /// What is known of a window as long as sway tells the same of it.
    struct Record {
        WindowFacts told;
        std::shared_ptr<const WindowFacts> facts;
        std::shared_ptr<const std::vector<ApplicationMatch>> matches;
        /// What the matches were made with.
        std::shared_ptr<const ApplicationIndex> index;
    };

    // With the lock held.
    [[nodiscard]] SwayPicture picture(const QJsonDocument &tree,
                                      std::shared_ptr<const ApplicationIndex> index);
    [[nodiscard]] Record recordOf(const SwayWindow &window,
                                  const std::shared_ptr<const ApplicationIndex> &index) const;
    void putInOrderOfUse(std::vector<SwayWindow> &windows);
    void takeInEventsLocked();
    void noteUse(std::int64_t window);
    [[nodiscard]] QByteArray commandsToShow(const SwayWindow &window);
    [[nodiscard]] std::optional<QJsonDocument> ask(MessageType type, const QByteArray &payload);
    bool run(const QByteArray &commands);

    const QString socketPath_;
    const AddLaunch addLaunch_;
    std::mutex mutex_;
    std::optional<SwayIpc> ipc_;
    SwayIpc events_;
    std::optional<Clock::time_point> askedAhead_;
    std::map<std::int64_t, Record> records_;
    std::map<std::int64_t, Place> places_;
    /// The last used one first.
    std::vector<std::int64_t> used_;
};

}  // namespace kestrelbay::sway
