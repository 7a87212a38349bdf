#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include <QString>
#include <QStringList>

namespace kestrelbay {

class RunningApplication;
class SystemLog;
class TargetApplication;
class Workspace;
struct ShortcutRule;

/// Carries a rule out: launches its application, brings it to the front, hides
/// it, cycles its windows, or opens what the rule's argument names. Keeps nothing
/// between calls and starts each from what the system says at that moment. Any
/// thread, several calls at a time; a call blocks as long as other programs take
/// to answer. Failures are silent but for one log line.
class AppLauncher {
public:
    AppLauncher(Workspace &workspace, SystemLog &log) : workspace_(workspace), log_(log) {}

    /// Asked right before each request that changes what is in front. False when a later call
    /// has made one: then the running application is no longer brought forward, hidden or
    /// cycled. What was to be launched or opened is launched and opened all the same.
    using MayChangeFront = std::function<bool()>;

    enum class Outcome : std::uint8_t {
        Done,
        /// The application was opened, as it was not found among those that run. It may be one
        /// whose windows the desktop keeps to itself.
        OpenedUnseen,
    };

    Outcome handle(
        const ShortcutRule &rule, const MayChangeFront &mayChangeFront = [] { return true; }) const;

    /// Splits the argument text of a rule into arguments at white space, somewhat like a
    /// shell. A backslash takes the next character as it is, inside both kinds of quotes as
    /// well. Quotes are dropped, so an empty quoted text adds nothing; one that is never
    /// closed runs to the end.
    [[nodiscard]] static QStringList parseCommandLineArgs(const QString &text);

private:
    struct Press;

    [[nodiscard]] std::unique_ptr<RunningApplication> runningInstance(const Press &press) const;
    void handleRunning(const Press &press, TargetApplication &app) const;
    void bringToFront(const Press &press, TargetApplication &app) const;

    void launchWithCommandLineArgs(const Press &press) const;
    void openUrl(const QString &text) const;
    void openPath(const Press &press, TargetApplication &app) const;
    void openPathWithoutRunning(const Press &press) const;
    void openNewWindow(const Press &press, TargetApplication &app) const;

    Workspace &workspace_;
    SystemLog &log_;
};

}  // namespace kestrelbay
