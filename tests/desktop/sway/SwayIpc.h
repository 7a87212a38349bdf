#pragma once

#include <cstdint>
#include <vector>

#include <sys/types.h>

#include <QByteArray>
#include <QJsonValue>
#include <QString>

namespace kestrelbay::desktop {

/// A window as sway tells of it.
struct SwayWindow {
    std::uint32_t id = 0;       ///< sway's "con_id"
    std::uint32_t xWindow = 0;  ///< on Xwayland; 0 for one of Wayland's
    pid_t processId = 0;
    QString application = {};  ///< last part of its application id, or its class on Xwayland
    QString title = {};
    QString workspace = {};
    bool isFocused = false;
    bool isVisible = false;
    bool isFloating = false;
};

/// A connection to sway, by the protocol that sway-ipc(7) describes. Throws std::runtime_error when
/// sway is gone.
class SwayIpc {
public:
    explicit SwayIpc(const QString &socket);
    ~SwayIpc();
    SwayIpc(const SwayIpc &) = delete;
    SwayIpc &operator=(const SwayIpc &) = delete;

    /// A line of a configuration file. False when sway could not carry it out.
    bool command(const QString &text);
    /// All windows, on each workspace the one used last first.
    [[nodiscard]] std::vector<SwayWindow> windows();
    /// The number of the workspace in view.
    [[nodiscard]] int workspace();

private:
    enum class Message : std::uint32_t { RunCommand = 0, GetWorkspaces = 1, GetTree = 4 };

    [[nodiscard]] QJsonValue ask(Message message, const QByteArray &payload = {});
    [[nodiscard]] QByteArray read(qsizetype size) const;

    int socket_;
};

}  // namespace kestrelbay::desktop
