#include "preferences/rules/RuleSheets.h"

#include <utility>

#include "preferences/options/RuleAdvancedPanel.h"
#include "preferences/picker/AppPickerPanel.h"

namespace kestrelbay {

RuleSheets ruleSheets(const PreferencesServices &services) {
    return {
        .pickApplication =
            [services](QWidget *parent, RuleSheets::Picked completion) {
                auto *const panel = new AppPickerPanel(services, std::move(completion), parent);
                panel->open();
            },
        .editRule =
            [services](QWidget *parent, const ShortcutRule &rule, RuleSheets::Edited completion) {
                auto *const panel =
                    new RuleAdvancedPanel(services, rule, std::move(completion), parent);
                panel->open();
            },
    };
}

}  // namespace kestrelbay
