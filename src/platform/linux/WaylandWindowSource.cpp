#include "platform/linux/WaylandWindowSource.h"

#include <algorithm>
#include <utility>

#include <QStringList>

#include "platform/linux/applications/matching/ApplicationLook.h"
#include "platform/linux/applications/matching/WindowDescription.h"
#include "platform/linux/wayland/windows/DesktopApplication.h"

namespace kestrelbay::wayland {

namespace {

ApplicationLook lookOf(const Picture &picture, const QString &entryPath) {
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

class WaylandWindowSource::OpeningWindow : public Opening {
public:
    OpeningWindow(WaylandWindowSource &source, QString entryPath, Index index)
        : source_(source),
          entryPath_(std::move(entryPath)),
          before_(lookOf(source.look(std::move(index)), entryPath_)) {}

    [[nodiscard]] bool wasRunning() const override { return !before_.windows.empty(); }

    [[nodiscard]] bool bringForward(Index index, bool isLastResort) override {
        const Picture picture = source_.look(std::move(index));
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
        std::vector<std::int64_t> hidden;
        for (const KnownWindow &known : picture.windows) {
            if (known.window.id == *changed && known.window.isHidden)
                hidden.push_back(known.window.id);
        }
        source_.desktop_->bringForward(hidden, *changed);
        return true;
    }

private:
    WaylandWindowSource &source_;
    const QString entryPath_;
    const ApplicationLook before_;
};

WaylandWindowSource::WaylandWindowSource(std::shared_ptr<Desktop> desktop)
    : desktop_(std::move(desktop)), matches_([this](std::int64_t pid, ProcessFacts &facts) {
          if (surroundings_)
              surroundings_->addLaunch(pid, facts);
      }) {}

void WaylandWindowSource::start(Surroundings surroundings) {
    surroundings_.emplace(std::move(surroundings));
    desktop_->listen({.loop = surroundings_->loop,
                      .isWindowAwaited = surroundings_->isWindowAwaited,
                      .windowsChanged = [this] { lookAhead(); }});
}

std::vector<std::unique_ptr<RunningApplication>> WaylandWindowSource::runningApplications(
    Index index) {
    const Picture picture = matches_.picture(desktop_->readAsked(), std::move(index));
    takeIn(picture);
    return applicationsOf(picture);
}

std::vector<std::unique_ptr<RunningApplication>> WaylandWindowSource::inactiveApplications(
    const Index &index) {
    std::optional<std::vector<DesktopWindow>> known = desktop_->known();
    if (!known)
        return {};
    auto applications = applicationsOf(matches_.picture(*std::move(known), index));
    std::erase_if(applications, [](const auto &application) { return application->isActive(); });
    return applications;
}

std::vector<std::unique_ptr<RunningApplication>> WaylandWindowSource::applicationsOf(
    const Picture &picture) const {
    std::vector<std::unique_ptr<RunningApplication>> applications;
    for (const ApplicationGroup &group : groupApplications(picture))
        applications.push_back(std::make_unique<DesktopApplication>(desktop_, picture, group));
    return applications;
}

void WaylandWindowSource::lookAhead() {
    static_cast<void>(look(surroundings_->index()));
}

Picture WaylandWindowSource::look(Index index) {
    Picture picture = matches_.picture(desktop_->read(), std::move(index));
    takeIn(picture);
    return picture;
}

void WaylandWindowSource::takeIn(const Picture &picture) {
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

std::unique_ptr<WindowSource::Opening> WaylandWindowSource::opening(const QString &entryPath,
                                                                    Index index) {
    return std::make_unique<OpeningWindow>(*this, entryPath, std::move(index));
}

std::vector<std::pair<QString, QString>> WaylandWindowSource::report(Index index) {
    const Picture picture = look(std::move(index));
    std::vector<std::pair<QString, QString>> lines;
    for (const KnownWindow &known : picture.windows)
        lines.emplace_back(QStringLiteral("Window %1").arg(lines.size() + 1),
                           describeWindow(*known.facts, *known.matches, *picture.index));
    return lines;
}

}  // namespace kestrelbay::wayland
