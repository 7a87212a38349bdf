#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <QString>

#include "platform/RunningApplication.h"
#include "platform/linux/applications/entries/ApplicationIndex.h"
#include "platform/linux/applications/matching/ApplicationMatch.h"
#include "platform/linux/glib/BackgroundLoop.h"

namespace kestrelbay {

/// Where the windows of other programs come from, and who does something with them. Any thread,
/// several at a time, but for start().
class WindowSource {
public:
    using Index = std::shared_ptr<const ApplicationIndex>;

    /// What a source needs of the workspace. Every function may be called on any thread.
    struct Surroundings {
        /// Has ended when the source is destroyed.
        BackgroundLoop &loop;
        /// All applications, as far as they have been read.
        std::function<Index()> index;
        /// Adds to the facts of a process what is known of it by having launched it.
        std::function<void(std::int64_t pid, ProcessFacts &facts)> addLaunch;
        /// Is there a launch of which no window is known?
        std::function<bool()> isWindowAwaited;
        /// A window of these entries is there, which is of interest only then.
        std::function<void(std::int64_t pid, const QStringList &entryPaths)> windowAppeared;
    };

    virtual ~WindowSource() = default;

    /// Once, before anything else.
    virtual void start(Surroundings surroundings) = 0;

    /// As the workspace's own.
    [[nodiscard]] virtual bool seesAllWindows() const { return true; }

    /// As Workspace::runningApplications(), by these entries.
    [[nodiscard]] virtual std::vector<std::unique_ptr<RunningApplication>> runningApplications(
        Index index) = 0;
    /// As Workspace::inactiveApplications(), by these entries.
    [[nodiscard]] virtual std::vector<std::unique_ptr<RunningApplication>> inactiveApplications(
        const Index & /*index*/) {
        return {};
    }
    /// As the workspace's own.
    virtual void askAhead() = 0;

    /// Looks at windows that are new, ahead of the next press. On the loop's thread.
    virtual void lookAhead() = 0;

    /// Milliseconds on the clock of the display, for what is launched to take the focus with; 0
    /// where it needs none.
    [[nodiscard]] virtual std::uint32_t time() = 0;

    /// An application that is given a file. Any one thread at a time.
    class Opening {
    public:
        virtual ~Opening() = default;
        /// A file is not opened in what has no windows; what is launched comes forward by itself.
        [[nodiscard]] virtual bool wasRunning() const = 0;
        /// Brings forward the window in which something has happened since, and as a last resort
        /// the front-most one. True when there is nothing more to do, because it did so or because
        /// the user has gone elsewhere.
        [[nodiscard]] virtual bool bringForward(Index index, bool isLastResort) = 0;
    };
    /// Before the application of this entry is asked.
    [[nodiscard]] virtual std::unique_ptr<Opening> opening(const QString &entryPath,
                                                           Index index) = 0;

    /// What a report of a problem has to say of the windows.
    [[nodiscard]] virtual std::vector<std::pair<QString, QString>> report(Index index) = 0;
};

}  // namespace kestrelbay
