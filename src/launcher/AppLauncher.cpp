#include "launcher/AppLauncher.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include <QDir>
#include <QUrl>

#include "launcher/FilePath.h"
#include "launcher/UrlText.h"
#include "model/ShortcutRule.h"
#include "model/TrimmedText.h"
#include "platform/RunningApplication.h"
#include "platform/SystemLog.h"
#include "platform/Workspace.h"

namespace kestrelbay {

/// The running application of one press.
class TargetApplication {
public:
    using Windows = std::vector<std::unique_ptr<WindowElement>>;

    TargetApplication(std::unique_ptr<RunningApplication> application, Workspace &workspace)
        : application_(std::move(application)), workspace_(workspace) {}

    [[nodiscard]] bool isActive() const { return application_->isActive(); }
    void hide() { application_->hide(); }
    void activate() { application_->activate(); }

    /// Asked for at most once, since finding it may be slow.
    [[nodiscard]] bool isFileManager() {
        if (!isFileManager_) {
            const QString identifier = application_->bundleIdentifier();
            isFileManager_ =
                !identifier.isEmpty() && identifier == workspace_.fileManagerIdentifier();
        }
        return *isFileManager_;
    }

    /// All windows, front-most first.
    [[nodiscard]] Windows windows() const {
        const bool isProcess = application_->processIdentifier() >= ProcessIdentifier{1};
        return isProcess ? application_->windows() : Windows();
    }

    /// Those of them that count: all, but of the file manager only ordinary windows,
    /// since the desktop is a window of it too.
    [[nodiscard]] std::vector<WindowElement *> standardWindows(const Windows &windows) {
        std::vector<WindowElement *> standard;
        if (windows.empty())
            return standard;
        const bool isFiltered = isFileManager();
        standard.reserve(windows.size());
        for (const auto &window : windows) {
            if (!isFiltered || window->subrole() == kStandardWindowSubrole)
                standard.push_back(window.get());
        }
        return standard;
    }

private:
    std::unique_ptr<RunningApplication> application_;
    Workspace &workspace_;
    std::optional<bool> isFileManager_;
};

/// One press, its rule read.
struct AppLauncher::Press {
    Press(const ShortcutRule &rule, const MayChangeFront &mayChange)
        : appUrl(fileUrl(rule.appPath)),
          text(trimmedHorizontalSpace(rule.launchArguments)),
          kind(text.isEmpty() ? ArgumentKind::None : rule.argumentKind),
          repeatAction(rule.repeatAction),
          mayChangeFront(mayChange) {}

    QUrl appUrl;
    QString text;       ///< the argument, trimmed
    ArgumentKind kind;  ///< None when there is no text
    RepeatAction repeatAction;
    const MayChangeFront &mayChangeFront;
};

AppLauncher::Outcome AppLauncher::handle(const ShortcutRule &rule,
                                         const MayChangeFront &mayChangeFront) const {
    if (rule.appPath.isEmpty())
        return Outcome::Done;
    const Press press(rule, mayChangeFront);
    // Every press starts a new instance, running or not, whatever the repeat action.
    if (press.kind == ArgumentKind::LaunchArgs) {
        launchWithCommandLineArgs(press);
        return Outcome::Done;
    }
    if (auto application = runningInstance(press)) {
        TargetApplication app(std::move(application), workspace_);
        handleRunning(press, app);
        return Outcome::Done;
    }
    if (press.kind == ArgumentKind::UrlScheme)
        openUrl(press.text);
    else if (press.kind == ArgumentKind::FilePath)
        openPathWithoutRunning(press);
    else
        workspace_.open(press.appUrl);
    return workspace_.seesAllWindows() ? Outcome::Done : Outcome::OpenedUnseen;
}

std::unique_ptr<RunningApplication> AppLauncher::runningInstance(const Press &press) const {
    // Only the place counts: a copy elsewhere is another application.
    const QUrl place = workspace_.standardized(press.appUrl);
    const auto isThere = [&](const auto &application) { return application->bundleURL() == place; };
    auto applications = workspace_.inactiveApplications();
    auto found = std::ranges::find_if(applications, isThere);
    if (found != applications.end())
        return std::move(*found);
    applications = workspace_.runningApplications();
    found = std::ranges::find_if(applications, isThere);
    if (found == applications.end() && workspace_.followsLinks()) {
        // The system may know it by the place that a link leads to.
        const QUrl target = workspace_.resolved(place);
        found = std::ranges::find_if(applications, [&](const auto &application) {
            const QUrl bundle = application->bundleURL();
            return !bundle.isEmpty() && workspace_.resolved(bundle) == target;
        });
    }
    return found == applications.end() ? nullptr : std::move(*found);
}

void AppLauncher::handleRunning(const Press &press, TargetApplication &app) const {
    if (press.repeatAction != RepeatAction::KeepOpen && app.isActive()) {
        if (press.repeatAction == RepeatAction::ToggleVisibility) {
            if (press.mayChangeFront())
                app.hide();
            return;
        }
        const TargetApplication::Windows windows = app.windows();
        const std::vector<WindowElement *> standard = app.standardWindows(windows);
        if (standard.size() >= 2) {
            if (!press.mayChangeFront())
                return;
            // The back-most, so that repeated presses walk through all of them.
            standard.back()->setMain();
            standard.back()->setFocused();
            app.activate();
            return;
        }
    }
    if (press.kind == ArgumentKind::UrlScheme)
        openUrl(press.text);
    else if (press.kind == ArgumentKind::FilePath)
        openPath(press, app);
    else
        bringToFront(press, app);
}

void AppLauncher::bringToFront(const Press &press, TargetApplication &app) const {
    const TargetApplication::Windows windows = app.windows();
    if (!press.mayChangeFront())
        return;
    if (app.standardWindows(windows).empty()) {
        openNewWindow(press, app);
        return;
    }
    for (const auto &window : windows) {
        if (window->isMinimized() == true)
            window->setMinimized(false);
    }
    if (app.isFileManager()) {
        // Its desktop may be the window in front; make sure that a real one comes
        // forward. Listed anew, since restoring may have changed the order.
        const TargetApplication::Windows restored = app.windows();
        const std::vector<WindowElement *> standard = app.standardWindows(restored);
        if (!standard.empty()) {
            standard.front()->setMain();
            standard.front()->raise();
        }
    }
    if (press.mayChangeFront())
        app.activate();
}

void AppLauncher::launchWithCommandLineArgs(const Press &press) const {
    const QStringList arguments = parseCommandLineArgs(press.text);
    if (arguments.isEmpty()) {
        workspace_.open(press.appUrl);
        return;
    }
    workspace_.openApplication(press.appUrl, arguments, [&log = log_](const QString &errorText) {
        if (!errorText.isEmpty())
            log.write(QStringLiteral("KestrelBay: launch with args failed: ") + errorText);
    });
}

void AppLauncher::openUrl(const QString &text) const {
    if (isUrl(text))
        workspace_.openUrl(text);
}

void AppLauncher::openPath(const Press &press, TargetApplication &app) const {
    if (app.isFileManager())
        workspace_.showFolder(expandingTilde(press.text));
    else
        openPathWithoutRunning(press);
}

void AppLauncher::openPathWithoutRunning(const Press &press) const {
    workspace_.openFiles({fileUrl(expandingTilde(press.text))}, press.appUrl);
}

void AppLauncher::openNewWindow(const Press &press, TargetApplication &app) const {
    if (app.isFileManager())
        workspace_.showFolder(QDir::homePath());
    else
        workspace_.open(press.appUrl);
}

}  // namespace kestrelbay
