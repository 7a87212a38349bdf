#include "platform/linux/wayland/sway/SwayIpc.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

#include <QJsonArray>
#include <QJsonObject>

#include "platform/linux/wayland/client/Socket.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::sway {

namespace {

QString systemError() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

}  // namespace

QString socketOfSession() {
    return qEnvironmentVariable("SWAYSOCK");
}

SwayIpc::SwayIpc(const QString &socketPath, std::chrono::milliseconds patience)
    : patience_(patience), descriptor_(wayland::connectedSocket(socketPath)) {
    if (descriptor_ < 0)
        error_ = u"nobody answers at \"%1\": %2"_s.arg(socketPath, systemError());
}

SwayIpc::~SwayIpc() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

void SwayIpc::fail(const QString &error) {
    error_ = error;
    ::close(descriptor_);
    descriptor_ = -1;
}

std::optional<QJsonDocument> SwayIpc::ask(MessageType type, const QByteArray &payload) {
    return send(type, payload) ? answer(type) : std::nullopt;
}

bool SwayIpc::send(MessageType type, const QByteArray &payload) {
    if (!isOpen())
        return false;
    const QByteArray bytes = toBytes({.type = type, .payload = payload});
    const Clock::time_point end = Clock::now() + patience_;
    qsizetype sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count = ::send(descriptor_, bytes.constData() + sent,
                                     static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (count > 0) {
            sent += count;
        } else if (errno == EAGAIN) {
            if (!waitFor(POLLOUT, end)) {
                fail(u"sway takes no message"_s);
                return false;
            }
        } else if (errno != EINTR) {
            fail(u"the connection to sway broke: "_s + systemError());
            return false;
        }
    }
    return true;
}

std::optional<QJsonDocument> SwayIpc::answer(MessageType type) {
    const Clock::time_point end = Clock::now() + patience_;
    while (const std::optional<IpcMessage> message = receive(end)) {
        if (message->type == type)
            return parsed(message->payload);
    }
    if (isOpen())
        fail(u"sway does not answer"_s);
    return std::nullopt;
}

bool SwayIpc::subscribe(const QStringList &events) {
    const QByteArray names =
        QJsonDocument(QJsonArray::fromStringList(events)).toJson(QJsonDocument::Compact);
    const std::optional<QJsonDocument> reply = ask(MessageType::Subscribe, names);
    if (reply && !reply->object()["success"_L1].toBool())
        fail(u"sway does not tell of events"_s);
    return isOpen();
}

std::optional<SwayIpc::Event> SwayIpc::nextEvent() {
    const std::optional<IpcMessage> message = receive(Clock::now());
    if (!message)
        return std::nullopt;
    std::optional<QJsonDocument> json = parsed(message->payload);
    return json ? std::optional(Event{.type = message->type, .json = *std::move(json)})
                : std::nullopt;
}

std::optional<IpcMessage> SwayIpc::receive(Clock::time_point end) {
    while (isOpen()) {
        if (std::optional<IpcMessage> message = reader_.next())
            return message;
        if (reader_.isForeign())
            fail(u"what answers is not sway"_s);
        else if (!readMore(end))
            break;
    }
    return std::nullopt;
}

bool SwayIpc::readMore(Clock::time_point end) {
    std::array<char, 16384> buffer{};
    const ssize_t count = ::recv(descriptor_, buffer.data(), buffer.size(), 0);
    if (count > 0) {
        reader_.append({buffer.data(), count});
        return true;
    }
    if (count == 0) {
        fail(u"sway closed the connection"_s);
        return false;
    }
    if (errno == EAGAIN)
        return waitFor(POLLIN, end);
    if (errno == EINTR)
        return true;
    fail(u"the connection to sway broke: "_s + systemError());
    return false;
}

bool SwayIpc::waitFor(short what, Clock::time_point end) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    if (left.count() <= 0)
        return false;
    pollfd waiting{.fd = descriptor_, .events = what, .revents = 0};
    const int found = ::poll(&waiting, 1, static_cast<int>(left.count()));
    return found > 0 || (found < 0 && errno == EINTR);
}

std::optional<QJsonDocument> SwayIpc::parsed(const QByteArray &payload) {
    QJsonParseError problem;
    QJsonDocument json = QJsonDocument::fromJson(payload, &problem);
    if (problem.error == QJsonParseError::NoError)
        return json;
    fail(u"sway's message is not JSON: "_s + problem.errorString());
    return std::nullopt;
}

QString versionOf(const QString &socketPath) {
    if (socketPath.isEmpty())
        return {};
    SwayIpc ipc(socketPath);
    const std::optional<QJsonDocument> version = ipc.ask(MessageType::GetVersion);
    return version ? version->object()["human_readable"_L1].toString() : QString();
}

}  // namespace kestrelbay::sway
