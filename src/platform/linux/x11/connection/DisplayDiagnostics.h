#pragma once

#include <optional>
#include <utility>
#include <vector>

#include <QString>

namespace kestrelbay::x11 {

class XConnection;

/// As it calls itself, perhaps without a name. No value when none runs.
[[nodiscard]] std::optional<QString> windowManagerName(const XConnection &connection);

/// What a report of a problem has to say of an X server and of who runs on it: names
/// of things, and how each is. Nothing that belongs to the user.
[[nodiscard]] std::vector<std::pair<QString, QString>> describeDisplay(const QString &displayName);

}  // namespace kestrelbay::x11
