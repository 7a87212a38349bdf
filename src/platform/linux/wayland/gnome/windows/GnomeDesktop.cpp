#include "platform/linux/wayland/gnome/windows/GnomeDesktop.h"

#include <utility>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QList>

using namespace Qt::StringLiterals;

namespace kestrelbay::gnome {

using wayland::DesktopWindow;
using wayland::kSameMoment;

namespace {

/// By the numbers of mutter's MetaWindowType; what comes after is decoration.
WindowType typeNumbered(unsigned number) {
    switch (number) {
        case 0:
            return WindowType::Normal;
        case 3:  // a dialog
        case 4:  // a modal one
            return WindowType::Dialog;
        case 5:  // a tool bar
        case 6:  // a torn-off menu
        case 7:  // a tool palette
            return WindowType::Utility;
        default:
            return WindowType::Decoration;
    }
}

DesktopWindow nextWindow(const QDBusArgument &list) {
    qulonglong id = 0;
    int pid = 0;
    unsigned type = 0;
    qulonglong transientFor = 0;
    DesktopWindow window;
    list.beginStructure();
    list >> id >> pid >> window.facts.className >> window.facts.instance >> window.facts.role >>
        window.facts.gtkApplicationId >> window.title >> type >> transientFor >> window.isHidden >>
        window.isFocused >> window.isUrgent;
    list.endStructure();
    window.id = static_cast<std::int64_t>(id);
    window.facts.pid = pid;
    window.facts.transientFor = static_cast<std::uint32_t>(transientFor);
    window.facts.type = typeNumbered(type);
    if (window.facts.isTransient() && window.facts.type == WindowType::Normal)
        window.facts.type = WindowType::Dialog;
    return window;
}

std::vector<DesktopWindow> windowsOf(const QDBusMessage &answer) {
    std::vector<DesktopWindow> windows;
    if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != "a(tisssssutbbb)"_L1)
        return windows;
    const auto list = answer.arguments().first().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd())
        windows.push_back(nextWindow(list));
    list.endArray();
    return windows;
}

QVariant numbers(std::span<const std::int64_t> windows) {
    QList<qulonglong> list;
    for (const std::int64_t window : windows)
        list.append(static_cast<qulonglong>(window));
    return QVariant::fromValue(list);
}

}  // namespace

GnomeDesktop::GnomeDesktop(std::shared_ptr<const ShellExtension> shell)
    : shell_(std::move(shell)) {}

void GnomeDesktop::listen(News news) {
    news_.emplace(*shell_);
    QObject::connect(&*news_, &ShellNews::windowShown, &*news_, [news = std::move(news)] {
        if (news.isWindowAwaited())
            news.loop.post(news.windowsChanged);
    });
}

std::vector<DesktopWindow> GnomeDesktop::read() {
    return windowsOf(shell_->ask(u"Windows"_s, {}));
}

void GnomeDesktop::askAhead() {
    const std::lock_guard lock(mutex_);
    asked_ = Asked{.call = shell_->send(u"Windows"_s, {}), .when = Clock::now()};
}

std::vector<DesktopWindow> GnomeDesktop::readAsked() {
    std::optional<Asked> asked;
    {
        const std::lock_guard lock(mutex_);
        asked = std::exchange(asked_, std::nullopt);
    }
    if (!asked)
        return read();
    asked->call.waitForFinished();
    return Clock::now() - asked->when > kSameMoment ? read() : windowsOf(asked->call.reply());
}

bool GnomeDesktop::hide(std::span<const std::int64_t> windows) {
    return request(u"Minimise"_s, {numbers(windows)});
}

bool GnomeDesktop::bringForward(std::span<const std::int64_t> hidden, std::int64_t focused) {
    return request(u"BringForward"_s,
                   {numbers(hidden), QVariant::fromValue(static_cast<qulonglong>(focused))});
}

bool GnomeDesktop::request(const QString &method, const QVariantList &arguments) const {
    return shell_->ask(method, arguments).type() == QDBusMessage::ReplyMessage;
}

}  // namespace kestrelbay::gnome
