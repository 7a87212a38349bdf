#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include <QString>
#include <QStringList>

#include <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include "platform/macos/cocoa/CFOwner.h"
#include "platform/macos/cocoa/ObjCOwner.h"

namespace kestrelbay::macos {

/// The applications that run in the fake system, and their windows. Made afresh for a
/// test, which it lasts. Any thread.
class FakeDesktop {
public:
    struct Window {
        QString name;
        CFOwner<AXUIElementRef> element;
        /// By attribute; what is missing reads as kAXErrorNoValue.
        std::map<QString, ObjCOwner<id>> values;
        /// By attribute or action: what a call comes back with.
        std::map<QString, AXError> errors;
    };
    struct Process {
        pid_t pid = 0;
        /// Nil for a program that belongs to no bundle.
        ObjCOwner<NSURL *> bundleURL;
        ObjCOwner<NSString *> bundleIdentifier;
        bool isActive = false;
        bool acceptsRequests = true;
        /// How often it is asked whether it is active before an activation has brought it
        /// forward; no number when activations do not.
        std::optional<int> looksUntilActive = 0;
        /// Of those, since the last activation.
        std::optional<int> looksLeft;
        /// Front-most first.
        std::vector<Window> windows;
        /// Instead of the windows: what AXWindows is, or fails with.
        std::optional<ObjCOwner<id>> windowsValue;
        AXError windowsError = kAXErrorSuccess;
    };

    FakeDesktop();
    ~FakeDesktop();
    FakeDesktop(const FakeDesktop &) = delete;
    FakeDesktop &operator=(const FakeDesktop &) = delete;

    static FakeDesktop &shared();

    /// Applications exist as folders on disk.
    Process &run(const QString &bundlePath, const QString &bundleIdentifier);
    void addWindow(Process &process, const QString &name);
    void quit(const QString &bundlePath);
    /// openURL: and selectFile: say no, and launches end with an error.
    void refuseRequests(const QString &errorText) { refusal_ = errorText; }
    /// Launches end with this text in their error; empty for success.
    [[nodiscard]] QString refusal() const { return refusal_; }

    // For what is faked; the mutex is to be held:
    [[nodiscard]] std::recursive_mutex &mutex() { return mutex_; }
    [[nodiscard]] std::vector<std::unique_ptr<Process>> &processes() { return processes_; }
    /// Null when it has gone.
    [[nodiscard]] Process *process(pid_t pid);
    /// The first at that place; null when none runs.
    [[nodiscard]] Process *process(NSURL *bundle);
    /// Null when it has gone.
    [[nodiscard]] Window *window(AXUIElementRef element);
    /// False where there is no application.
    [[nodiscard]] bool launch(NSURL *application);
    void activate(Process &process);
    /// On a thread of its own, as completion handlers are called.
    void callLater(std::function<void()> work);

private:
    std::recursive_mutex mutex_;
    std::vector<std::unique_ptr<Process>> processes_;
    std::vector<std::thread> threads_;
    QString refusal_;
    pid_t nextPid_ = 100;
};

}  // namespace kestrelbay::macos
