#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

#include "platform/RunningApplication.h"

namespace kestrelbay {

/// The user's running applications, and opening things with applications. Every
/// call may be made from any thread, several at a time, and may block.
class Workspace {
public:
    /// Called once, on any thread; the text is empty on success.
    using Completion = std::function<void(const QString &errorText)>;

    virtual ~Workspace() = default;

    /// Read afresh at every call, in the system's own order. Empty when the
    /// system can't be asked.
    [[nodiscard]] virtual std::vector<std::unique_ptr<RunningApplication>>
    runningApplications() = 0;

    /// Those of them that are known to run and not to be active, as it was at the key press that is
    /// carried out, without asking anybody. May leave out any.
    [[nodiscard]] virtual std::vector<std::unique_ptr<RunningApplication>> inactiveApplications() {
        return {};
    }

    /// Is every program with windows among them? Where the desktop keeps windows to itself, one
    /// that is running may be missing.
    [[nodiscard]] virtual bool seesAllWindows() const { return true; }

    /// The same for all URLs that lead to one file by its name: "." and ".." are resolved, and
    /// names that are one name to the file system are spelled alike. Links are not followed.
    [[nodiscard]] virtual QUrl standardized(const QUrl &file) const = 0;

    /// May applications be links, and run under another name than they are kept under?
    [[nodiscard]] virtual bool followsLinks() const = 0;

    /// The same for a link and for what it leads to where links are followed; elsewhere as
    /// standardized(). So it is for what is not there.
    [[nodiscard]] virtual QUrl resolved(const QUrl &file) const = 0;

    /// Launches an application, or tells it to reopen when it is running; opens any
    /// other file as the user's settings say. False when nothing accepted it.
    virtual bool open(const QUrl &file) = 0;

    /// Opens a URL as the user's settings say; whoever opens it gets this text, byte
    /// for byte. The text has to be a URL by RFC 3986. False when nothing accepted it.
    virtual bool openUrl(const QString &url) = 0;

    /// Starts a new process of the application, also when one is running.
    virtual void openApplication(const QUrl &application, const QStringList &arguments,
                                 Completion completion) = 0;

    /// Opens files with one application, launching it if it is not running. False
    /// when the application could not be asked.
    virtual bool openFiles(const QList<QUrl> &files, const QUrl &application) = 0;

    /// Shows a folder in the file manager. False when there is no file manager.
    virtual bool showFolder(const QString &path) = 0;

    /// bundleIdentifier() of the file manager; empty when there is none.
    [[nodiscard]] virtual QString fileManagerIdentifier() const = 0;

    /// A rule is about to be carried out on another thread, and none is at work: asks already what
    /// runningApplications() will answer to that thread, which spares it the wait. Never waits.
    virtual void askAhead() {}

    /// By which the desktop lets the program that is launched next come forward
    /// (xdg-activation), as whoever asks for the launch has got it. Used once; empty for none.
    virtual void setActivationToken(const QString &token) = 0;

    /// The applications that will be asked about from now on, so that what is
    /// needed to recognise them can be read before the first key press.
    virtual void prepare(const QStringList &applicationPaths) = 0;
};

}  // namespace kestrelbay
