#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <utility>

#include <QString>
#include <QStringList>

#include "platform/linux/applications/launching/LaunchBus.h"
#include "platform/linux/applications/launching/Launches.h"
#include "platform/linux/glib/GioBus.h"

namespace kestrelbay {

/// Starts the applications of desktop entries. Every call ends; its text is empty on
/// success and otherwise says why not. Any thread.
///
/// A started program has a session, and where there is a service manager a scope,
/// of its own; it inherits no descriptors, and none of the variables that were
/// meant for us.
class EntryLauncher {
public:
    /// Milliseconds on the clock of the X server.
    using ServerTime = std::function<std::uint32_t()>;

    /// An empty display name means the one of the environment.
    EntryLauncher(QString displayName, ServerTime serverTime)
        : displayName_(std::move(displayName)), serverTime_(std::move(serverTime)) {}

    /// Has GIO connect to the session bus, so that the first launch need not wait for it.
    void connect() { gioBus_.keep(); }

    /// Launches it, with URIs if there are any, unless it is on its way to its first window
    /// with the same already. One that is D-Bus activatable is asked by D-Bus, and started by
    /// its Exec line when that fails.
    QString open(const QString &entryPath, const QStringList &uris = {});

    /// Starts a new process with these arguments behind those of its Exec line.
    QString startNew(const QString &entryPath, const QStringList &arguments);

    /// The next that is launched gets it, to come forward by; an empty one for none.
    void setActivationToken(const QString &token);

    /// Has the file manager on the session bus show the folder of this URI. False when
    /// there is none.
    bool showFolder(const QString &uri);

    [[nodiscard]] Launches &launches() { return launches_; }

private:
    /// With a fresh server time in it, so that what it starts may take the focus.
    [[nodiscard]] QString newStartupId() const;
    /// It serves one launch.
    [[nodiscard]] QString takeActivationToken();
    QString openNow(const Launches::Launch &launch);
    QString spawn(GAppInfo *application, const Launches::Launch &launch,
                  const QString &activationToken);

    const QString displayName_;
    const ServerTime serverTime_;
    std::mutex tokenMutex_;
    QString activationToken_;
    Launches launches_;
    LaunchBus bus_;
    GioBus gioBus_;
};

}  // namespace kestrelbay
