#include "platform/linux/wayland/plasma/windows/WindowList.h"

#include <algorithm>
#include <set>

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace kestrelbay::plasma {

namespace {

WindowType typeOf(const QJsonObject &window) {
    const QString type = window["type"_L1].toString();
    if (type == "dialog"_L1)
        return WindowType::Dialog;
    if (type == "utility"_L1)
        return WindowType::Utility;
    if (type != "normal"_L1)
        return WindowType::Decoration;
    if (!window["parent"_L1].toString().isEmpty())
        return WindowType::Dialog;
    return window["isOutOfTaskBars"_L1].toBool() ? WindowType::Utility : WindowType::Normal;
}

}  // namespace

std::int64_t WindowList::numberOf(const QString &name) {
    const auto [known, isNew] = numbers_.try_emplace(name, last_ + 1);
    if (isNew)
        ++last_;
    return known->second;
}

std::vector<wayland::DesktopWindow> WindowList::take(const QByteArray &json) {
    std::vector<wayland::DesktopWindow> windows;
    std::set<QString> there;
    for (const auto &value : QJsonDocument::fromJson(json).array()) {
        const QJsonObject told = value.toObject();
        const QString name = told["name"_L1].toString();
        there.insert(name);
        wayland::DesktopWindow &window = windows.emplace_back();
        window.id = numberOf(name);
        window.title = told["title"_L1].toString();
        window.isFocused = told["isActive"_L1].toBool();
        window.isUrgent = told["isUrgent"_L1].toBool();
        window.isHidden = told["isMinimised"_L1].toBool();
        window.facts.className = told["class"_L1].toString();
        window.facts.instance = told["instance"_L1].toString();
        window.facts.kdeDesktopFile = told["entry"_L1].toString();
        window.facts.pid = told["pid"_L1].toInteger();
        window.facts.type = typeOf(told);
        if (const QString parent = told["parent"_L1].toString(); !parent.isEmpty()) {
            there.insert(parent);
            window.facts.transientFor = static_cast<std::uint32_t>(numberOf(parent));
        }
    }
    std::erase_if(numbers_, [&](const auto &known) { return !there.contains(known.first); });
    const auto focused = std::ranges::find_if(windows, &wayland::DesktopWindow::isFocused);
    if (focused != windows.end())
        used_.note(focused->id);
    used_.putInOrder(windows);
    return windows;
}

QJsonArray WindowList::namesOf(std::span<const std::int64_t> windows) const {
    QJsonArray names;
    for (const std::int64_t window : windows) {
        const auto known =
            std::ranges::find(numbers_, window, [](const auto &each) { return each.second; });
        if (known != numbers_.end())
            names.append(known->first);
    }
    return names;
}

}  // namespace kestrelbay::plasma
