#include "platform/linux/LinuxWorkspace.h"

#include <chrono>
#include <thread>
#include <utility>

#include <QFileInfo>

#include <gio/gdesktopappinfo.h>

#include "files/StandardPath.h"
#include "platform/linux/x11/windows/ApplicationWindows.h"
#include "platform/linux/x11/windows/WindowReport.h"

namespace kestrelbay::x11 {

namespace {

/// While a file is being opened: soon enough that a person does not notice.
constexpr unsigned kLookAgainMilliseconds = 25;

constexpr std::chrono::milliseconds kBetweenPictures{1};

/// After a press has asked for the focus. Window managers have answered by then, but on busy
/// machines: each further look comes after twice the time, the last one 1.5 s after the press.
constexpr std::chrono::milliseconds kBeforeLookAtFocus{50};
constexpr std::chrono::milliseconds kLongestBeforeLookAtFocus{800};

class LinuxWindowElement : public WindowElement {
public:
    LinuxWindowElement(std::shared_ptr<ApplicationWindows> windows, std::size_t position)
        : windows_(std::move(windows)), position_(position) {}

    [[nodiscard]] std::optional<QString> subrole() const override {
        if (!windows_->state(position_))
            return std::nullopt;
        switch (windows_->type(position_)) {
            case WindowType::Normal:
                return QString(kStandardWindowSubrole);
            case WindowType::Dialog:
                return QStringLiteral("AXDialog");
            case WindowType::Utility:
                return QStringLiteral("AXFloatingWindow");
            case WindowType::Decoration:
                break;
        }
        return QStringLiteral("AXUnknown");
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

class LinuxRunningApplication : public RunningApplication {
public:
    LinuxRunningApplication(std::shared_ptr<WindowTracker> tracker,
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
    [[nodiscard]] ProcessIdentifier processIdentifier() const override {
        return group_.pid > 0 ? ProcessIdentifier{group_.pid} : kRemoteProcess;
    }
    [[nodiscard]] bool isActive() const override {
        return group_.active && !ownWindows()->areMinimized();
    }
    /// Tool palettes, dialogs and windows that keep out of task bars are left out
    /// as long as there are others; desktops, panels and the like always.
    [[nodiscard]] std::vector<std::unique_ptr<WindowElement>> windows() const override {
        std::vector<std::unique_ptr<WindowElement>> elements;
        for (const std::size_t position : ownWindows()->listed())
            elements.push_back(std::make_unique<LinuxWindowElement>(ownWindows(), position));
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

QString encoded(const QUrl &url) {
    return QString::fromLatin1(url.toEncoded());
}

/// The entry file of the application that opens this URL; empty when there is none.
QString defaultEntryPath(const QString &url) {
    GObjectPtr<GAppInfo> handler;
    const QString scheme = url.section(u':', 0, 0);
    if (scheme.isEmpty())
        return {};
    if (scheme.compare(QLatin1String("file"), Qt::CaseInsensitive) != 0)
        handler.reset(g_app_info_get_default_for_uri_scheme(scheme.toUtf8().constData()));
    if (!handler) {
        const GObjectPtr<GFile> file(g_file_new_for_uri(url.toUtf8().constData()));
        handler.reset(g_file_query_default_handler(file.get(), nullptr, nullptr));
    }
    if (!handler || !G_IS_DESKTOP_APP_INFO(handler.get()))
        return {};
    return QFile::decodeName(g_desktop_app_info_get_filename(G_DESKTOP_APP_INFO(handler.get())));
}

}  // namespace

LinuxWorkspace::LinuxWorkspace(const QString &displayName, SystemLog &log,
                               std::chrono::milliseconds openingTakes)
    : tracker_(std::make_shared<WindowTracker>(
          displayName, [this](std::int64_t pid, ProcessFacts &facts) { addLaunch(pid, facts); })),
      launcher_(displayName, [this] { return tracker_->serverTime(); }),
      openingTakes_(openingTakes),
      index_([this] { lookAhead(); }) {
    index_.loop().post([this] { launcher_.connect(); });
    const XConnection &connection = tracker_->windowSystem().connection();
    if (!connection.isUsable()) {
        log.write(QStringLiteral("KestrelBay [WARN] no X server: windows can't be seen"));
        return;
    }
    focusTimer_.emplace(index_.loop(), [this] { lookAtFocus(); });
    tracker_->setFocusAsked([this] {
        beforeLookAtFocus_ = kBeforeLookAtFocus;
        focusTimer_->start(kBeforeLookAtFocus);
    });
    news_.emplace(displayName, *tracker_, index_.loop(),
                  WindowNews::Handlers{.activeChanged = [this] { lookAhead(); },
                                       .windowsChanged =
                                           [this] {
                                               if (launcher_.launches().isWindowAwaited())
                                                   lookAhead();
                                           }});
}

LinuxWorkspace::~LinuxWorkspace() {
    tracker_->setFocusAsked({});
}

void LinuxWorkspace::addLaunch(std::int64_t pid, ProcessFacts &facts) {
    const Launches &launches = launcher_.launches();
    if (const QString path = launches.entryOf(pid); !path.isEmpty())
        facts.launchedEntryPath = path;
    facts.sessionsEntryPath = launches.entryOfSession(pid);
}

void LinuxWorkspace::lookAhead() {
    takeIn(tracker_->read(index_.currentOrEmpty()));
}

DesktopPicture LinuxWorkspace::look(std::shared_ptr<const ApplicationIndex> index) {
    DesktopPicture picture = tracker_->read(std::move(index));
    takeIn(picture);
    return picture;
}

void LinuxWorkspace::takeIn(const DesktopPicture &picture) {
    Launches &launches = launcher_.launches();
    if (!launches.isWindowAwaited())
        return;
    for (const ManagedWindow &window : picture.windows) {
        if (window.facts->type == WindowType::Decoration)
            continue;
        QStringList entryPaths;
        for (const ApplicationMatch &match : *window.matches)
            entryPaths.append(picture.index->entries()[match.entry].path);
        launches.windowAppeared(window.facts->pid, entryPaths);
    }
}

void LinuxWorkspace::askAhead() {
    if (news_)
        news_->pressBegins();
    tracker_->askAhead();
}

std::vector<std::unique_ptr<RunningApplication>> LinuxWorkspace::runningApplications() {
    ++presses_;
    if (news_)
        news_->pressBegins();
    DesktopPicture picture = tracker_->readAsked(index_.current());
    takeIn(picture);
    while (tracker_->isFocusAwaited()) {
        std::this_thread::sleep_for(kBetweenPictures);
        picture = look(index_.current());
    }
    const auto shared = std::make_shared<const DesktopPicture>(std::move(picture));
    std::vector<std::unique_ptr<RunningApplication>> applications;
    for (ApplicationGroup &group : groupApplications(*shared))
        applications.push_back(
            std::make_unique<LinuxRunningApplication>(tracker_, shared, std::move(group)));
    return applications;
}

void LinuxWorkspace::lookAtFocus() {
    if (!tracker_->mayFocusBeUnheard())
        return;
    const DesktopPicture picture = look(index_.currentOrEmpty());
    const std::chrono::milliseconds next = beforeLookAtFocus_.load() * 2;
    if (!tracker_->repeatUnheardFocus(picture.serverTime) || next > kLongestBeforeLookAtFocus)
        return;
    beforeLookAtFocus_ = next;
    focusTimer_->start(next);
}

std::vector<std::pair<QString, QString>> LinuxWorkspace::windowReport() {
    return describeWindows(look(index_.current()));
}

QUrl LinuxWorkspace::standardized(const QUrl &file) const {
    return QUrl::fromLocalFile(standardPath(file.toLocalFile()));
}

bool LinuxWorkspace::open(const QUrl &file) {
    return openUrl(encoded(file));
}

bool LinuxWorkspace::openUrl(const QString &url) {
    const QString path = QUrl(url).toLocalFile();
    if (path.endsWith(QLatin1String(".desktop")) && QFileInfo(path).isFile())
        return launcher_.open(path).isEmpty();
    const QString entry = defaultEntryPath(url);
    return !entry.isEmpty() && launcher_.open(entry, {url}).isEmpty();
}

void LinuxWorkspace::openApplication(const QUrl &application, const QStringList &arguments,
                                     Completion completion) {
    ++presses_;
    const QString error = launcher_.startNew(application.toLocalFile(), arguments);
    if (completion)
        completion(error);
}

bool LinuxWorkspace::openFiles(const QList<QUrl> &files, const QUrl &application) {
    const std::uint64_t press = presses_;
    QStringList uris;
    for (const QUrl &file : files)
        uris.append(encoded(file));
    const QString path = standardPath(application.toLocalFile());
    auto opened = std::make_shared<OpenedFile>(tracker_, path, look(index_.current()));
    if (!launcher_.open(path, uris).isEmpty())
        return false;
    if (opened->wasRunning())
        index_.loop().post([this, opened = std::move(opened), press,
                            end = std::chrono::steady_clock::now() + openingTakes_] {
            follow(opened, press, end);
        });
    return true;
}

void LinuxWorkspace::follow(const std::shared_ptr<OpenedFile> &file, std::uint64_t press,
                            std::chrono::steady_clock::time_point end) {
    if (press != presses_)
        return;
    const bool isLastResort = std::chrono::steady_clock::now() >= end;
    if (!file->bringForward(look(index_.currentOrEmpty()), isLastResort))
        index_.loop().postAfter(kLookAgainMilliseconds,
                                [this, file, press, end] { follow(file, press, end); });
}

bool LinuxWorkspace::showFolder(const QString &path) {
    const QString folder = encoded(QUrl::fromLocalFile(path));
    return launcher_.showFolder(folder) || openUrl(folder);
}

QString LinuxWorkspace::fileManagerIdentifier() const {
    return index_.current()->fileManagerId();
}

void LinuxWorkspace::prepare(const QStringList &applicationPaths) {
    index_.setNamedPaths(applicationPaths);
}

}  // namespace kestrelbay::x11
