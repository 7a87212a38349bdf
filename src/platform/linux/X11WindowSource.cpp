#include "platform/linux/X11WindowSource.h"

#include <thread>
#include <utility>

#include <QStringList>
#include <QUrl>

#include "platform/SystemLog.h"
#include "platform/linux/applications/matching/WindowDescription.h"
#include "platform/linux/applications/matching/WindowSubrole.h"
#include "platform/linux/x11/windows/ApplicationWindows.h"
#include "platform/linux/x11/windows/OpenedFile.h"

namespace kestrelbay::x11 {

namespace {

constexpr std::chrono::milliseconds kBetweenPictures{1};

/// After a press has asked for the focus. Window managers have answered by then, but on busy
/// machines: each further look comes after twice the time, the last one 1.5 s after the press.
constexpr std::chrono::milliseconds kBeforeLookAtFocus{50};
constexpr std::chrono::milliseconds kLongestBeforeLookAtFocus{800};

class X11WindowElement : public WindowElement {
public:
    X11WindowElement(std::shared_ptr<ApplicationWindows> windows, std::size_t position)
        : windows_(std::move(windows)), position_(position) {}

    [[nodiscard]] std::optional<QString> subrole() const override {
        if (!windows_->state(position_))
            return std::nullopt;
        return subroleOf(windows_->type(position_));
    }

    [[nodiscard]] std::optional<bool> isMinimized() const override {
        const std::optional<WindowState> state = windows_->state(position_);
        return state ? std::optional(state->minimized) : std::nullopt;
    }

    bool setMinimized(bool minimized) override {
        return windows_->setMinimized(position_, minimized);
    }

    bool setMain() override {
        windows_->setMain(position_);
        return true;
    }

    bool setFocused() override { return windows_->focus(position_); }
    bool raise() override { return windows_->raise(position_); }

private:
    std::shared_ptr<ApplicationWindows> windows_;
    std::size_t position_;
};

class X11RunningApplication : public RunningApplication {
public:
    X11RunningApplication(std::shared_ptr<WindowTracker> tracker,
                          std::shared_ptr<const DesktopPicture> picture, ApplicationGroup group)
        : tracker_(std::move(tracker)), picture_(std::move(picture)), group_(std::move(group)) {
        if (!group_.entry)
            return;
        const DesktopEntry &entry = picture_->index->entries()[*group_.entry];
        bundleURL_ = QUrl::fromLocalFile(entry.path);
        bundleIdentifier_ = entry.id;
    }

    [[nodiscard]] QUrl bundleURL() const override { return bundleURL_; }
    [[nodiscard]] QString bundleIdentifier() const override { return bundleIdentifier_; }
    [[nodiscard]] ProcessIdentifier processIdentifier() const override { return group_.process(); }
    [[nodiscard]] bool isActive() const override {
        return group_.active && !ownWindows()->areMinimized();
    }
    /// Tool palettes, dialogs and windows that keep out of task bars are left out
    /// as long as there are others; desktops, panels and the like always.
    [[nodiscard]] std::vector<std::unique_ptr<WindowElement>> windows() const override {
        std::vector<std::unique_ptr<WindowElement>> elements;
        for (const std::size_t position : ownWindows()->listed())
            elements.push_back(std::make_unique<X11WindowElement>(ownWindows(), position));
        return elements;
    }

    bool hide() override { return ownWindows()->minimizeAll(); }
    bool activate() override { return ownWindows()->activate(); }

private:
    /// A press lists all applications, and looks at the windows of one.
    [[nodiscard]] const std::shared_ptr<ApplicationWindows> &ownWindows() const {
        if (!windows_)
            windows_ = std::make_shared<ApplicationWindows>(tracker_, *picture_, group_);
        return windows_;
    }

    const std::shared_ptr<WindowTracker> tracker_;
    const std::shared_ptr<const DesktopPicture> picture_;
    const ApplicationGroup group_;
    QUrl bundleURL_;
    QString bundleIdentifier_;
    mutable std::shared_ptr<ApplicationWindows> windows_;
};

}  // namespace

class X11WindowSource::OpeningWindow : public Opening {
public:
    OpeningWindow(X11WindowSource &source, const QString &entryPath, Index index)
        : source_(source), file_(source.tracker_, entryPath, source.look(std::move(index))) {}

    [[nodiscard]] bool wasRunning() const override { return file_.wasRunning(); }
    [[nodiscard]] bool bringForward(Index index, bool isLastResort) override {
        return file_.bringForward(source_.look(std::move(index)), isLastResort);
    }

private:
    X11WindowSource &source_;
    OpenedFile file_;
};

X11WindowSource::X11WindowSource(QString displayName, SystemLog &log, Session session)
    : displayName_(std::move(displayName)),
      log_(log),
      session_(session),
      tracker_(std::make_shared<WindowTracker>(displayName_,
                                               [this](std::int64_t pid, ProcessFacts &facts) {
                                                   if (surroundings_)
                                                       surroundings_->addLaunch(pid, facts);
                                               })) {}

void X11WindowSource::start(Surroundings surroundings) {
    surroundings_.emplace(std::move(surroundings));
    const XConnection &connection = tracker_->windowSystem().connection();
    if (!connection.isUsable()) {
        log_.write(QStringLiteral("KestrelBay [WARN] no X server: windows can't be seen"));
        return;
    }
    focusTimer_.emplace(surroundings_->loop, [this] { lookAtFocus(); });
    tracker_->setFocusAsked([this] {
        beforeLookAtFocus_ = kBeforeLookAtFocus;
        focusTimer_->start(kBeforeLookAtFocus);
    });
    news_.emplace(displayName_, *tracker_, surroundings_->loop,
                  WindowNews::Handlers{.activeChanged = [this] { lookAhead(); },
                                       .windowsChanged =
                                           [this] {
                                               if (surroundings_->isWindowAwaited())
                                                   lookAhead();
                                           }});
}

X11WindowSource::~X11WindowSource() {
    tracker_->setFocusAsked({});
}

void X11WindowSource::lookAhead() {
    takeIn(tracker_->read(surroundings_->index()));
}

DesktopPicture X11WindowSource::look(Index index) {
    DesktopPicture picture = tracker_->read(std::move(index));
    takeIn(picture);
    return picture;
}

void X11WindowSource::takeIn(const DesktopPicture &picture) {
    if (!surroundings_->isWindowAwaited())
        return;
    for (const ManagedWindow &window : picture.windows) {
        if (window.facts->type == WindowType::Decoration)
            continue;
        QStringList entryPaths;
        for (const ApplicationMatch &match : *window.matches)
            entryPaths.append(picture.index->entries()[match.entry].path);
        surroundings_->windowAppeared(window.facts->pid, entryPaths);
    }
}

void X11WindowSource::askAhead() {
    if (news_)
        news_->pressBegins();
    tracker_->askAhead();
}

std::vector<std::unique_ptr<RunningApplication>> X11WindowSource::runningApplications(Index index) {
    if (news_)
        news_->pressBegins();
    DesktopPicture picture = tracker_->readAsked(index);
    takeIn(picture);
    while (tracker_->isFocusAwaited()) {
        std::this_thread::sleep_for(kBetweenPictures);
        picture = look(index);
    }
    const auto shared = std::make_shared<const DesktopPicture>(std::move(picture));
    std::vector<std::unique_ptr<RunningApplication>> applications;
    for (ApplicationGroup &group : groupApplications(*shared))
        applications.push_back(
            std::make_unique<X11RunningApplication>(tracker_, shared, std::move(group)));
    return applications;
}

void X11WindowSource::lookAtFocus() {
    if (!tracker_->mayFocusBeUnheard())
        return;
    const DesktopPicture picture = look(surroundings_->index());
    const std::chrono::milliseconds next = beforeLookAtFocus_.load() * 2;
    if (!tracker_->repeatUnheardFocus(picture.serverTime) || next > kLongestBeforeLookAtFocus)
        return;
    beforeLookAtFocus_ = next;
    focusTimer_->start(next);
}

std::unique_ptr<WindowSource::Opening> X11WindowSource::opening(const QString &entryPath,
                                                                Index index) {
    return std::make_unique<OpeningWindow>(*this, entryPath, std::move(index));
}

std::vector<std::pair<QString, QString>> X11WindowSource::report(Index index) {
    const DesktopPicture picture = look(std::move(index));
    std::vector<std::pair<QString, QString>> lines;
    for (const ManagedWindow &window : picture.windows)
        lines.emplace_back(QStringLiteral("Window %1").arg(lines.size() + 1),
                           describeWindow(*window.facts, *window.matches, *picture.index));
    return lines;
}

}  // namespace kestrelbay::x11
