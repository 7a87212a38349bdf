#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "platform/linux/applications/entries/ApplicationIndex.h"
#include "platform/linux/wayland/windows/Desktop.h"

namespace kestrelbay::wayland {

/// A window, and the entries that it belongs to.
struct KnownWindow {
    DesktopWindow window;
    std::shared_ptr<const WindowFacts> facts;
    std::shared_ptr<const std::vector<ApplicationMatch>> matches;
};

/// The desktop at one moment.
struct Picture {
    std::shared_ptr<const ApplicationIndex> index;
    /// Front-most first, that is last used first.
    std::vector<KnownWindow> windows;
};

/// Does a compositor tell the same of both, but for what changes while they are used?
[[nodiscard]] bool isToldAlike(const WindowFacts &one, const WindowFacts &other);

/// Finds the entries that windows belong to, and keeps them as long as the same is told of the
/// windows. Any thread.
class WindowMatches {
public:
    /// Adds to the facts of a process what is known of it by having launched it. Any thread.
    using AddLaunch = std::function<void(std::int64_t pid, ProcessFacts &facts)>;

    explicit WindowMatches(AddLaunch addLaunch) : addLaunch_(std::move(addLaunch)) {}

    /// These windows are all there are.
    [[nodiscard]] Picture picture(std::vector<DesktopWindow> windows,
                                  std::shared_ptr<const ApplicationIndex> index);

private:
    /// What is known of a window as long as the compositor tells the same of it.
    struct Record {
        WindowFacts told;
        std::shared_ptr<const WindowFacts> facts;
        std::shared_ptr<const std::vector<ApplicationMatch>> matches;
        /// What the matches were made with.
        std::shared_ptr<const ApplicationIndex> index;
    };

    // With the lock held.
    [[nodiscard]] Record recordOf(const DesktopWindow &window,
                                  const std::shared_ptr<const ApplicationIndex> &index) const;

    const AddLaunch addLaunch_;
    std::mutex mutex_;
    std::map<std::int64_t, Record> records_;
};

}  // namespace kestrelbay::wayland
