#include "platform/linux/wayland/sway/windows/SwayTree.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace kestrelbay::sway {

namespace {

struct TypeName {
    QLatin1StringView name;
    WindowType type;
};

// By sway-ipc(7); all others are ordinary ones.
constexpr std::array kTypeNames{
    TypeName{"dialog"_L1, WindowType::Dialog},
    TypeName{"utility"_L1, WindowType::Utility},
    TypeName{"toolbar"_L1, WindowType::Utility},
    TypeName{"menu"_L1, WindowType::Utility},
    TypeName{"splash"_L1, WindowType::Decoration},
    TypeName{"tooltip"_L1, WindowType::Decoration},
    TypeName{"notification"_L1, WindowType::Decoration},
    TypeName{"dropdown_menu"_L1, WindowType::Decoration},
    TypeName{"popup_menu"_L1, WindowType::Decoration},
};

WindowType typeNamed(const QString &name) {
    const auto *const found = std::ranges::find(kTypeNames, name, &TypeName::name);
    return found == kTypeNames.end() ? WindowType::Normal : found->type;
}

std::int64_t integer(const QJsonValue &value) {
    return value.toInteger();
}

/// The nodes right below, in the order of their last use.
std::vector<QJsonObject> childrenOf(const QJsonObject &node) {
    const QJsonArray order = node["focus"_L1].toArray();
    std::vector<std::pair<qsizetype, QJsonObject>> children;
    for (const auto list : {"nodes"_L1, "floating_nodes"_L1}) {
        for (const auto &child : node[list].toArray()) {
            const auto place = std::find(order.begin(), order.end(), child["id"_L1]);
            children.emplace_back(place - order.begin(), child.toObject());
        }
    }
    std::ranges::stable_sort(children, {}, &std::pair<qsizetype, QJsonObject>::first);
    std::vector<QJsonObject> ordered;
    ordered.reserve(children.size());
    for (auto &[place, child] : children)
        ordered.push_back(std::move(child));
    return ordered;
}

struct Place {
    QString workspace;
    bool isHidden = false;
    bool isFloating = false;
};

// No deeper than Qt's reader of JSON lets a document be.
// NOLINTNEXTLINE(misc-no-recursion)
void collect(const QJsonObject &node, Place place, std::vector<SwayWindow> &windows) {
    const QString type = node["type"_L1].toString();
    if (type == "workspace"_L1) {
        place.workspace = node["name"_L1].toString();
        place.isHidden = place.workspace == "__i3_scratch"_L1;
    }
    place.isFloating = place.isFloating || type == "floating_con"_L1;
    const std::vector<QJsonObject> children = childrenOf(node);
    for (const QJsonObject &child : children)
        collect(child, place, windows);
    // Containers have no process.
    if (!children.empty() || !node.contains("pid"_L1))
        return;
    windows.push_back({{.id = integer(node["id"_L1]),
                        .facts = factsOf(node),
                        .title = node["name"_L1].toString(),
                        .isFocused = node["focused"_L1].toBool(),
                        .isUrgent = node["urgent"_L1].toBool(),
                        .isHidden = place.isHidden},
                       place.isFloating,
                       node["fullscreen_mode"_L1].toInt() != 0,
                       place.isHidden ? QString() : place.workspace});
}

}  // namespace

WindowFacts factsOf(const QJsonObject &node) {
    WindowFacts facts;
    facts.pid = integer(node["pid"_L1]);
    const QJsonObject x = node["window_properties"_L1].toObject();
    if (x.isEmpty()) {
        facts.className = node["app_id"_L1].toString();
        facts.instance = facts.className;
        return facts;
    }
    facts.className = x["class"_L1].toString();
    facts.instance = x["instance"_L1].toString();
    facts.role = x["window_role"_L1].toString();
    facts.transientFor = static_cast<std::uint32_t>(integer(x["transient_for"_L1]));
    facts.type = typeNamed(x["window_type"_L1].toString());
    if (facts.transientFor != 0 && facts.type == WindowType::Normal)
        facts.type = WindowType::Dialog;
    return facts;
}

std::vector<SwayWindow> windowsOf(const QJsonObject &tree) {
    std::vector<SwayWindow> windows;
    collect(tree, {}, windows);
    return windows;
}

}  // namespace kestrelbay::sway
