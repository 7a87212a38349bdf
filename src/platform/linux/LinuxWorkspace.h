#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/SystemLog.h"
#include "platform/Workspace.h"
#include "platform/linux/WindowNews.h"
#include "platform/linux/applications/entries/ApplicationIndexKeeper.h"
#include "platform/linux/applications/launching/EntryLauncher.h"
#include "platform/linux/glib/LoopTimer.h"
#include "platform/linux/x11/windows/OpenedFile.h"
#include "platform/linux/x11/windows/WindowTracker.h"

namespace kestrelbay::x11 {

/// What windows on other machines have for a process: above every number that the
/// kernel gives, and never to be signalled.
inline constexpr ProcessIdentifier kRemoteProcess{0x7fff'ffff};

/// The applications of an X11 session: windows by EWMH, applications by desktop
/// entries. To be made and destroyed on the main thread.
///
/// Running applications come in the order of their front-most windows. Those
/// without any window can't be seen.
class LinuxWorkspace : public Workspace {
public:
    /// For programs that hand a file over to an instance of theirs that runs.
    static constexpr std::chrono::milliseconds kOpeningTakes{1000};

    /// An empty display name means the one of the environment. Without a server the
    /// object works as if there were no windows. When an application that runs was given a
    /// file, one of its windows comes forward, which for this long may be one that changes.
    LinuxWorkspace(const QString &displayName, SystemLog &log,
                   std::chrono::milliseconds openingTakes = kOpeningTakes);
    ~LinuxWorkspace() override;

    [[nodiscard]] std::vector<std::unique_ptr<RunningApplication>> runningApplications() override;
    /// Names are bytes here: one in another Unicode normal form is another name.
    [[nodiscard]] QUrl standardized(const QUrl &file) const override;
    /// A link to an entry is another entry.
    [[nodiscard]] bool followsLinks() const override { return false; }
    [[nodiscard]] QUrl resolved(const QUrl &file) const override { return standardized(file); }
    bool open(const QUrl &file) override;
    bool openUrl(const QString &url) override;
    void openApplication(const QUrl &application, const QStringList &arguments,
                         Completion completion) override;
    bool openFiles(const QList<QUrl> &files, const QUrl &application) override;
    bool showFolder(const QString &path) override;
    [[nodiscard]] QString fileManagerIdentifier() const override;
    void setActivationToken(const QString &token) override { launcher_.setActivationToken(token); }
    void prepare(const QStringList &applicationPaths) override;
    void askAhead() override;

    /// All applications, as ApplicationIndexKeeper::current(). Any thread.
    [[nodiscard]] std::shared_ptr<const ApplicationIndex> applicationIndex() const {
        return index_.current();
    }

    /// What a report of a problem has to say of the windows, as describeWindows() does.
    [[nodiscard]] std::vector<std::pair<QString, QString>> windowReport();

private:
    /// What we know of a process by having launched it.
    void addLaunch(std::int64_t pid, ProcessFacts &facts);
    /// At the active window, for the order of use, and at windows that are new. On the index's
    /// thread.
    void lookAhead();
    /// The desktop as it is, taken in.
    [[nodiscard]] DesktopPicture look(std::shared_ptr<const ApplicationIndex> index);
    /// Launches whose windows are there are over then.
    void takeIn(const DesktopPicture &picture);
    /// Has the window manager listened to the last press?
    void lookAtFocus();
    /// Until it has been brought forward, or the next press. On the index's thread.
    void follow(const std::shared_ptr<OpenedFile> &file, std::uint64_t press,
                std::chrono::steady_clock::time_point end);

    std::shared_ptr<WindowTracker> tracker_;
    EntryLauncher launcher_;
    std::optional<WindowNews> news_;
    /// How many there were.
    std::atomic<std::uint64_t> presses_{0};
    std::atomic<std::chrono::milliseconds> beforeLookAtFocus_{};
    std::optional<LoopTimer> focusTimer_;
    const std::chrono::milliseconds openingTakes_;
    // Last, so that its thread has ended before anything that the thread uses.
    ApplicationIndexKeeper index_;
};

}  // namespace kestrelbay::x11
