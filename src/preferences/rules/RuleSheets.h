#pragma once

#include <functional>

#include <QString>

#include "model/ShortcutRule.h"
#include "preferences/PreferencesServices.h"

class QWidget;

namespace kestrelbay {

/// Opens the sheets of the rules list over the window of `parent`. Each returns at
/// once; the completion is called when the user has confirmed, and otherwise never.
struct RuleSheets {
    using Picked = std::function<void(const QString &appName, const QString &appPath)>;
    using Edited = std::function<void(const ShortcutRule &rule)>;

    std::function<void(QWidget *parent, Picked completion)> pickApplication;
    std::function<void(QWidget *parent, const ShortcutRule &rule, Edited completion)> editRule;
};

/// The real ones. The services have to outlive the sheets.
[[nodiscard]] RuleSheets ruleSheets(const PreferencesServices &services);

}  // namespace kestrelbay
