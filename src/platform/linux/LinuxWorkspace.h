#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "platform/Workspace.h"
#include "platform/linux/WindowSource.h"
#include "platform/linux/applications/entries/ApplicationIndexKeeper.h"
#include "platform/linux/applications/launching/EntryLauncher.h"

namespace kestrelbay {

/// The applications of a session: windows by a source of them, applications by desktop
/// entries. To be made and destroyed on the main thread.
///
/// Running applications come in the order of their front-most windows. Those
/// without any window can't be seen.
class LinuxWorkspace : public Workspace {
public:
    /// For programs that hand a file over to an instance of theirs that runs.
    static constexpr std::chrono::milliseconds kOpeningTakes{1000};

    /// The display is that of launched programs; an empty name means the one of the environment.
    /// When an application that runs was given a file, one of its windows comes forward, which for
    /// this long may be one that changes.
    LinuxWorkspace(std::unique_ptr<WindowSource> windows, const QString &displayName,
                   std::chrono::milliseconds openingTakes = kOpeningTakes);

    [[nodiscard]] std::vector<std::unique_ptr<RunningApplication>> runningApplications() override;
    [[nodiscard]] std::vector<std::unique_ptr<RunningApplication>> inactiveApplications() override;
    /// Names are bytes here: one in another Unicode normal form is another name.
    [[nodiscard]] QUrl standardized(const QUrl &file) const override;
    /// A link to an entry is another entry.
    [[nodiscard]] bool seesAllWindows() const override { return windows_->seesAllWindows(); }
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
    void askAhead() override { windows_->askAhead(); }

    /// All applications, as ApplicationIndexKeeper::current(). Any thread.
    [[nodiscard]] std::shared_ptr<const ApplicationIndex> applicationIndex() const {
        return index_.current();
    }

    /// What a report of a problem has to say of the windows.
    [[nodiscard]] std::vector<std::pair<QString, QString>> windowReport();

private:
    /// What we know of a process by having launched it.
    void addLaunch(std::int64_t pid, ProcessFacts &facts);
    /// Until it has been brought forward, or the next press. On the index's thread.
    void follow(const std::shared_ptr<WindowSource::Opening> &file, std::uint64_t press,
                std::chrono::steady_clock::time_point end);

    const std::unique_ptr<WindowSource> windows_;
    /// It may be looked at.
    std::atomic<bool> isStarted_{false};
    EntryLauncher launcher_;
    /// How many there were.
    std::atomic<std::uint64_t> presses_{0};
    const std::chrono::milliseconds openingTakes_;
    // Last, so that its thread has ended before anything that the thread uses.
    ApplicationIndexKeeper index_;
};

}  // namespace kestrelbay
