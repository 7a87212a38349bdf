#include "platform/linux/wayland/plasma/windows/KWinDesktop.h"

#include <utility>

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace kestrelbay::plasma {

using wayland::DesktopWindow;
using wayland::kSameMoment;

namespace {

constexpr const char *kList = R"({"list":true})";

QByteArray toBytes(const QJsonObject &question) {
    return QJsonDocument(question).toJson(QJsonDocument::Compact);
}

}  // namespace

void KWinDesktop::listen(News news) {
    news_.emplace(std::move(news));
    line_.listen({.windowAppeared =
                      [this] {
                          if (news_->isWindowAwaited())
                              news_->loop.post([this] { news_->windowsChanged(); });
                      },
                  .windowUsed =
                      [this](const QString &name) {
                          const std::lock_guard lock(mutex_);
                          list_.noteUse(name);
                      }});
}

std::vector<DesktopWindow> KWinDesktop::take(const std::optional<QByteArray> &list) {
    const std::lock_guard lock(mutex_);
    return list ? list_.take(*list) : std::vector<DesktopWindow>();
}

std::vector<DesktopWindow> KWinDesktop::read() {
    return take(line_.ask(kList));
}

void KWinDesktop::askAhead() {
    const std::lock_guard lock(mutex_);
    if (!askedAhead_)
        askedAhead_ = {.number = line_.send(kList), .when = Clock::now()};
}

std::vector<DesktopWindow> KWinDesktop::readAsked() {
    std::unique_lock lock(mutex_);
    const std::optional<Asked> asked = std::exchange(askedAhead_, std::nullopt);
    lock.unlock();
    std::optional<QByteArray> list;
    if (asked)
        list = line_.await(asked->number);
    if (!list || Clock::now() - asked->when > kSameMoment)
        return read();
    return take(list);
}

bool KWinDesktop::hide(std::span<const std::int64_t> windows) {
    std::unique_lock lock(mutex_);
    const QByteArray question = toBytes({{u"hide"_s, list_.namesOf(windows)}});
    lock.unlock();
    return line_.ask(question).has_value();
}

bool KWinDesktop::bringForward(std::span<const std::int64_t> hidden, std::int64_t focused) {
    std::unique_lock lock(mutex_);
    const QByteArray question = toBytes(
        {{u"show"_s, list_.namesOf(hidden)}, {u"focus"_s, list_.namesOf({&focused, 1}).first()}});
    lock.unlock();
    return line_.ask(question).has_value();
}

}  // namespace kestrelbay::plasma
