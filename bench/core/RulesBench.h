#pragma once

#include <vector>

#include <QString>

#include "model/ShortcutRule.h"

namespace kestrelbay {

/// A list as a user might have it, with a different hotkey for each rule as long
/// as there are keys, and none on the key 127.
inline std::vector<ShortcutRule> manyRules(std::size_t count) {
    constexpr std::size_t kKeys = 126;
    std::vector<ShortcutRule> rules(count);
    for (std::size_t i = 0; i < count; ++i) {
        const QString number = QString::number(i);
        rules[i].appName = QStringLiteral("Application ") + number;
        rules[i].appPath = QStringLiteral("/usr/share/applications/org.example.Application") +
                           number + QStringLiteral(".desktop");
        rules[i].keyCode = KeyCode{static_cast<std::uint16_t>(1 + i % kKeys)};
        rules[i].modifierFlags = ModifierFlags(0x100008);
        rules[i].launchArguments = QStringLiteral("--profile work");
        rules[i].argumentKind = ArgumentKind::LaunchArgs;
    }
    return rules;
}

}  // namespace kestrelbay
