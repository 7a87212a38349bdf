#pragma once

#include <cstdint>
#include <vector>

#include <QByteArray>
#include <QString>

#include "desktop/display/Keys.h"

namespace kestrelbay::desktop {

/// One line of the user's rule list.
struct RuleSpec {
    QString appName = {};
    QString appPath = {};
    Key key{};
    std::uint64_t modifierFlags = flags::kLeftCommand;
    QString repeatAction = QStringLiteral("keepOpen");
    QString argumentKind = QStringLiteral("none");
    QString launchArguments = {};
    bool isEnabled = true;
};

/// The bytes of a rules.json with these rules, each under a new identifier.
[[nodiscard]] QByteArray rulesJson(const std::vector<RuleSpec> &rules);

}  // namespace kestrelbay::desktop
