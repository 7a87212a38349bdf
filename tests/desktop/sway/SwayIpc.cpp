#include "desktop/sway/SwayIpc.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVariant>

namespace kestrelbay::desktop {

namespace {

constexpr const char *kMagic = "i3-ipc";
constexpr qsizetype kMagicSize = 6;

struct Header {
    std::uint32_t size;
    std::uint32_t message;
};

int connectTo(const QString &path) {
    const QByteArray name = QFile::encodeName(path);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    if (static_cast<std::size_t>(name.size()) >= sizeof address.sun_path)
        throw std::runtime_error("too long for a socket: " + path.toStdString());
    std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
        ::close(socket);
        throw std::runtime_error("no sway at " + path.toStdString());
    }
    return socket;
}

SwayWindow windowFrom(const QJsonObject &node, const QString &workspace) {
    // GTK tells the program's name or the application's, by its version.
    const QString application = node[QStringLiteral("app_id")].toString().section(u'.', -1);
    const QJsonValue ofX = node[QStringLiteral("window_properties")][QStringLiteral("class")];
    return {.id = static_cast<std::uint32_t>(node[QStringLiteral("id")].toInteger()),
            .xWindow = static_cast<std::uint32_t>(node[QStringLiteral("window")].toInteger()),
            .processId = static_cast<pid_t>(node[QStringLiteral("pid")].toInteger()),
            .application = application.isEmpty() ? ofX.toString() : application,
            .title = node[QStringLiteral("name")].toString(),
            .workspace = workspace,
            .isFocused = node[QStringLiteral("focused")].toBool(),
            .isVisible = node[QStringLiteral("visible")].toBool(),
            .isFloating = node[QStringLiteral("type")].toString() == u"floating_con"};
}

void addWindows(const QJsonObject &node, QString workspace, std::vector<SwayWindow> &windows) {
    if (node[QStringLiteral("type")].toString() == u"workspace")
        workspace = node[QStringLiteral("name")].toString();
    if (node.contains(QStringLiteral("pid")))
        windows.push_back(windowFrom(node, workspace));
    std::vector<QJsonObject> children;
    for (const QString &kind : {QStringLiteral("nodes"), QStringLiteral("floating_nodes")})
        for (const QJsonValue child : node[kind].toArray())
            children.push_back(child.toObject());
    const QVariantList focus = node[QStringLiteral("focus")].toArray().toVariantList();
    const auto use = [&](const QJsonObject &child) {
        return focus.indexOf(child[QStringLiteral("id")].toVariant());
    };
    std::ranges::stable_sort(children, {}, use);
    for (const QJsonObject &child : children)
        addWindows(child, workspace, windows);
}

}  // namespace

SwayIpc::SwayIpc(const QString &socket) : socket_(connectTo(socket)) {}

SwayIpc::~SwayIpc() {
    ::close(socket_);
}

QByteArray SwayIpc::read(qsizetype size) const {
    QByteArray bytes;
    while (bytes.size() < size) {
        QByteArray part(size - bytes.size(), Qt::Uninitialized);
        const ssize_t count =
            ::recv(socket_, part.data(), static_cast<std::size_t>(part.size()), 0);
        if (count > 0)
            bytes.append(part.constData(), count);
        // Qt hears of processes that end by a signal.
        else if (count == 0 || errno != EINTR)
            throw std::runtime_error("sway is gone");
    }
    return bytes;
}

QJsonValue SwayIpc::ask(Message message, const QByteArray &payload) {
    const Header header{.size = static_cast<std::uint32_t>(payload.size()),
                        .message = static_cast<std::uint32_t>(message)};
    QByteArray request(kMagic);
    request.append(reinterpret_cast<const char *>(&header), sizeof header).append(payload);
    if (::send(socket_, request.constData(), static_cast<std::size_t>(request.size()),
               MSG_NOSIGNAL) != request.size())
        throw std::runtime_error("sway is gone");
    const QByteArray start = read(kMagicSize + static_cast<qsizetype>(sizeof header));
    Header answer{};
    std::memcpy(&answer, start.constData() + kMagicSize, sizeof answer);
    const QJsonDocument document = QJsonDocument::fromJson(read(answer.size));
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

bool SwayIpc::command(const QString &text) {
    const QJsonArray results = ask(Message::RunCommand, text.toUtf8()).toArray();
    return std::ranges::all_of(results, [](const QJsonValue &result) {
        return result[QStringLiteral("success")].toBool();
    });
}

std::vector<SwayWindow> SwayIpc::windows() {
    std::vector<SwayWindow> windows;
    addWindows(ask(Message::GetTree).toObject(), QString(), windows);
    return windows;
}

int SwayIpc::workspace() {
    for (const QJsonValue each : ask(Message::GetWorkspaces).toArray())
        if (each[QStringLiteral("focused")].toBool())
            return each[QStringLiteral("num")].toInt();
    throw std::runtime_error("sway shows no workspace");
}

}  // namespace kestrelbay::desktop
