#include "model/ShortcutRule.h"

#include <array>

#include "model/TrimmedText.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

template <typename Case>
struct RawText {
    Case value;
    QLatin1StringView text;
};

constexpr std::array<RawText<RepeatAction>, 3> kRepeatActions{{
    {RepeatAction::KeepOpen, "keepOpen"_L1},
    {RepeatAction::ToggleVisibility, "toggleVisibility"_L1},
    {RepeatAction::CycleWindows, "cycleWindows"_L1},
}};

constexpr std::array<RawText<ArgumentKind>, 4> kArgumentKinds{{
    {ArgumentKind::None, "none"_L1},
    {ArgumentKind::LaunchArgs, "launchArgs"_L1},
    {ArgumentKind::UrlScheme, "urlScheme"_L1},
    {ArgumentKind::FilePath, "filePath"_L1},
}};

template <typename Table, typename Case>
QString textOf(const Table &table, Case value) {
    for (const auto &entry : table) {
        if (entry.value == value)
            return entry.text;
    }
    return {};
}

template <typename Case, std::size_t N>
std::optional<Case> caseOf(const std::array<RawText<Case>, N> &table, QStringView text) {
    for (const auto &entry : table) {
        if (entry.text == text)
            return entry.value;
    }
    return std::nullopt;
}

}  // namespace

QString rawValue(RepeatAction action) {
    return textOf(kRepeatActions, action);
}
QString rawValue(ArgumentKind kind) {
    return textOf(kArgumentKinds, kind);
}

std::optional<RepeatAction> repeatActionFromRawValue(QStringView text) {
    return caseOf(kRepeatActions, text);
}

std::optional<ArgumentKind> argumentKindFromRawValue(QStringView text) {
    return caseOf(kArgumentKinds, text);
}

QString ShortcutRule::hotkeyString() const {
    QString text = modifierDisplayString(modifierFlags);
    if (keyCode != KeyCode{})
        text += keyName(keyCode);
    return text;
}

ArgumentKind ShortcutRule::inferKind(QStringView launchArguments) {
    const QString text = trimmedSpacesAndTabs(launchArguments);
    if (text.isEmpty())
        return ArgumentKind::None;
    if (text.contains("://"_L1))
        return ArgumentKind::UrlScheme;
    if (text.startsWith(u'-'))
        return ArgumentKind::LaunchArgs;
    // Bare words count as paths, like what starts with "/" or "~".
    return ArgumentKind::FilePath;
}

}  // namespace kestrelbay
