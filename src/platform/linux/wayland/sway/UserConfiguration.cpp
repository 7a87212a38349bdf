#include "platform/linux/wayland/sway/UserConfiguration.h"

#include <QByteArrayList>
#include <QJsonObject>

#include "platform/linux/wayland/sway/SwayBinding.h"
#include "platform/linux/wayland/sway/UserBindings.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::sway {

std::optional<SwayConfiguration> readUserConfiguration(SwayIpc &ipc) {
    const auto version = ipc.ask(MessageType::GetVersion);
    const auto configuration = ipc.ask(MessageType::GetConfig);
    if (!version || !configuration)
        return std::nullopt;
    return readConfiguration(configuration->object()["config"_L1].toString().toUtf8(),
                             version->object()["loaded_config_file_name"_L1].toString());
}

std::optional<HotkeyHolder> holderInConfiguration(const QString &socketPath, const Hotkey &hotkey) {
    SwayIpc ipc(socketPath);
    const std::optional<Position> position = positionOf(hotkey);
    const std::optional<SwayConfiguration> configuration = readUserConfiguration(ipc);
    if (!position || !configuration)
        return std::nullopt;
    const UserBindings bindings = userBindings(*configuration);
    const auto found = bindings.find(*position);
    if (found == bindings.end())
        return std::nullopt;
    return HotkeyHolder{.program = u"sway"_s, .action = QString::fromUtf8(found->second)};
}

QString unreadInConfiguration(const QString &socketPath) {
    SwayIpc ipc(socketPath);
    const std::optional<SwayConfiguration> configuration = readUserConfiguration(ipc);
    if (!configuration)
        return {};
    const QByteArrayList unread(configuration->unread.begin(), configuration->unread.end());
    return QString::fromUtf8(unread.join("; "));
}

}  // namespace kestrelbay::sway
