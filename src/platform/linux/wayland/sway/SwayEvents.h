#pragma once

#include <optional>

#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include "platform/linux/wayland/sway/SwayIpc.h"

namespace kestrelbay::sway {

/// What sway tells of presses, windows and workspaces, on one connection for all who listen.
///
/// On one connection sway tells of things in the order in which they happen: who hears of a press
/// has heard of all that was before it. Main thread.
class SwayEvents final : public QObject {
    Q_OBJECT

public:
    explicit SwayEvents(QString socketPath);

    [[nodiscard]] const QString &socketPath() const { return socketPath_; }

    /// Listens from now on, if it does not yet. False when sway did not agree.
    [[nodiscard]] bool begin();
    [[nodiscard]] bool isListening() const { return ipc_ && ipc_->isOpen(); }

Q_SIGNALS:
    /// Nothing is missed after this.
    void begun();
    void happened(const SwayIpc::Event &event);
    /// sway has gone. Nothing more comes until it has begun anew.
    void ended();

private:
    void listen();
    void takeIn();

    const QString socketPath_;
    std::optional<SwayIpc> ipc_;
    std::optional<QSocketNotifier> notifier_;
};

}  // namespace kestrelbay::sway
