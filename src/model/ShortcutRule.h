#pragma once

#include <cstdint>
#include <optional>

#include <QString>
#include <QStringView>
#include <QUuid>

#include "keys/KeyCode.h"
#include "keys/ModifierFlags.h"

namespace kestrelbay {

/// What a press does when the application is already in front.
enum class RepeatAction : std::uint8_t {
    KeepOpen,          ///< leaves it in front
    ToggleVisibility,  ///< hides it
    CycleWindows,      ///< brings its next window forward
};

/// How ShortcutRule::launchArguments is to be read.
enum class ArgumentKind : std::uint8_t {
    None,        ///< not at all
    LaunchArgs,  ///< command-line arguments of a new process
    UrlScheme,   ///< a URL to open
    FilePath,    ///< a file or folder to open with the application
};

/// The texts that stand for the cases in the rule file.
[[nodiscard]] QString rawValue(RepeatAction action);
[[nodiscard]] QString rawValue(ArgumentKind kind);
[[nodiscard]] std::optional<RepeatAction> repeatActionFromRawValue(QStringView text);
[[nodiscard]] std::optional<ArgumentKind> argumentKindFromRawValue(QStringView text);

/// One global hotkey bound to one application. A plain value; the fields stand
/// in the order in which the rule file has them.
struct ShortcutRule {
    /// A fresh random one for every rule that is not given another.
    QUuid id = QUuid::createUuid();
    QString appName{};
    QString appPath{};
    /// Key code 0 without modifiers means that no hotkey is set; with modifiers it
    /// is the key A.
    KeyCode keyCode{};
    ModifierFlags modifierFlags{};
    bool isEnabled = true;
    RepeatAction repeatAction = RepeatAction::KeepOpen;
    QString launchArguments{};
    ArgumentKind argumentKind = ArgumentKind::None;

    bool operator==(const ShortcutRule &) const = default;

    /// The hotkey as the user reads it, e.g. "L⌘T". Key code 0 shows no key.
    [[nodiscard]] QString hotkeyString() const;

    /// What is printed on the key, e.g. "T"; "Key(36)" for a key without a name.
    [[nodiscard]] static QString keyCodeString(KeyCode keyCode) { return keyName(keyCode); }

    /// Guesses the kind of an argument text that was stored without one.
    [[nodiscard]] static ArgumentKind inferKind(QStringView launchArguments);
};

/// What `theirs` becomes with the fields in which `ours` differs from `base`, which both were
/// made from.
[[nodiscard]] ShortcutRule merged(const ShortcutRule &base, const ShortcutRule &ours,
                                  ShortcutRule theirs);

}  // namespace kestrelbay
