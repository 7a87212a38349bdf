#include "model/ShortcutRule.h"

#include <algorithm>
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

template <typename Case, std::size_t N>
QString textOf(const std::array<RawText<Case>, N> &table, Case value) {
    const auto *const found = std::ranges::find(table, value, &RawText<Case>::value);
    return found == table.end() ? QString() : QString(found->text);
}

template <typename Case, std::size_t N>
std::optional<Case> caseOf(const std::array<RawText<Case>, N> &table, QStringView text) {
    const auto *const found =
        std::ranges::find_if(table, [&](const auto &entry) { return entry.text == text; });
    return found == table.end() ? std::nullopt : std::optional(found->value);
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

ShortcutRule merged(const ShortcutRule &base, const ShortcutRule &ours, ShortcutRule theirs) {
    const auto take = [&](auto field) {
        if (ours.*field != base.*field)
            theirs.*field = ours.*field;
    };
    take(&ShortcutRule::appName);
    take(&ShortcutRule::appPath);
    take(&ShortcutRule::keyCode);
    take(&ShortcutRule::modifierFlags);
    take(&ShortcutRule::isEnabled);
    take(&ShortcutRule::repeatAction);
    take(&ShortcutRule::launchArguments);
    take(&ShortcutRule::argumentKind);
    return theirs;
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
