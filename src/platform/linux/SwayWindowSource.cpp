#include "platform/linux/SwayWindowSource.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include <QStringList>

#include "platform/linux/applications/matching/ApplicationLook.h"
#include "platform/linux/applications/matching/WindowDescription.h"
#include "platform/linux/wayland/sway/windows/SwayApplication.h"

namespace kestrelbay::sway {

namespace {

/// Between two looks at the events that have come, of which each change of a title is one. A press
/// takes them in by itself; sway hangs up on who leaves it 4 MB of them.
constexpr std::chrono::milliseconds kBetweenEvents{std::chrono::seconds(20)};
/// As long as a window is awaited that a launch brings.
constexpr std::chrono::milliseconds kBetweenAwaitedEvents{250};

ApplicationLook lookOf(const SwayPicture &picture, const QString &entryPath) {
    ApplicationLook look;
    for (const KnownWindow &known : picture.windows) {
        if (known.window.isFocused)
            look.active = known.window.id;
        const bool isOfIt = std::ranges::any_of(*known.matches, [&](const ApplicationMatch &match) {
            return picture.index->entries()[match.entry].path == entryPath;
        });
        if (isOfIt)
            look.windows.push_back({.window = known.window.id,
                                    .title = known.window.title.toUtf8(),
                                    .wantsAttention = known.window.isUrgent});
    }
    return look;
}

}  // namespace

class SwayWindowSource::OpeningWindow : public Opening {
public:
    OpeningWindow(SwayWindowSource &source, QString entryPath, Index index)
        : source_(source),
          entryPath_(std::move(entryPath)),
          before_(lookOf(source.look(std::move(index)), entryPath_)) {}

    [[nodiscard]] bool wasRunning() const override { return !before_.windows.empty(); }

    [[nodiscard]] bool bringForward(Index index, bool isLastResort) override {
        const SwayPicture picture = source_.look(std::move(index));
        const ApplicationLook now = lookOf(picture, entryPath_);
        if (isElsewhere(before_, now) || now.windows.empty())
            return true;
        std::optional<std::int64_t> changed = changedWindow(before_, now);
        if (!changed && isLastResort)
            changed = now.windows.front().window;
        if (!changed)
            return false;
        if (*changed == now.active)
            return true;
        std::vector<SwayWindow> hidden;
        for (const KnownWindow &known : picture.windows) {
            if (known.window.id == *changed && known.window.isHidden)
                hidden.push_back(known.window);
        }
        source_.desktop_->bringForward(hidden, *changed);
        return true;
    }

private:
    SwayWindowSource &source_;
    const QString entryPath_;
    const ApplicationLook before_;
};

SwayWindowSource::SwayWindowSource(const QString &socketPath)
    : desktop_(
          std::make_shared<SwayDesktop>(socketPath, [this](std::int64_t pid, ProcessFacts &facts) {
              if (surroundings_)
                  surroundings_->addLaunch(pid, facts);
          })) {}

void SwayWindowSource::start(Surroundings surroundings) {
    surroundings_.emplace(std::move(surroundings));
    const int descriptor = desktop_->eventDescriptor();
    if (descriptor >= 0)
        events_.emplace(surroundings_->loop, descriptor, [this] { takeInEvents(); });
}

void SwayWindowSource::takeInEvents() {
    if (surroundings_->isWindowAwaited())
        lookAhead();
    desktop_->takeInEvents();
    if (desktop_->eventDescriptor() < 0)
        events_->stop();
    else
        events_->pause(surroundings_->isWindowAwaited() ? kBetweenAwaitedEvents : kBetweenEvents);
}

std::vector<std::unique_ptr<RunningApplication>> SwayWindowSource::runningApplications(
    Index index) {
    const SwayPicture picture = desktop_->readAsked(std::move(index));
    takeIn(picture);
    std::vector<std::unique_ptr<RunningApplication>> applications;
    for (const ApplicationGroup &group : groupApplications(picture))
        applications.push_back(std::make_unique<SwayApplication>(desktop_, picture, group));
    return applications;
}

void SwayWindowSource::lookAhead() {
    static_cast<void>(look(surroundings_->index()));
}

SwayPicture SwayWindowSource::look(Index index) {
    SwayPicture picture = desktop_->read(std::move(index));
    takeIn(picture);
    return picture;
}

void SwayWindowSource::takeIn(const SwayPicture &picture) {
    if (!surroundings_->isWindowAwaited())
        return;
    for (const KnownWindow &known : picture.windows) {
        if (known.facts->type == WindowType::Decoration)
            continue;
        QStringList entryPaths;
        for (const ApplicationMatch &match : *known.matches)
            entryPaths.append(picture.index->entries()[match.entry].path);
        surroundings_->windowAppeared(known.facts->pid, entryPaths);
    }
}

std::unique_ptr<WindowSource::Opening> SwayWindowSource::opening(const QString &entryPath,
                                                                 Index index) {
    return std::make_unique<OpeningWindow>(*this, entryPath, std::move(index));
}

std::vector<std::pair<QString, QString>> SwayWindowSource::report(Index index) {
    const SwayPicture picture = look(std::move(index));
    std::vector<std::pair<QString, QString>> lines;
    for (const KnownWindow &known : picture.windows)
        lines.emplace_back(QStringLiteral("Window %1").arg(lines.size() + 1),
                           describeWindow(*known.facts, *known.matches, *picture.index));
    return lines;
}

}  // namespace kestrelbay::sway
