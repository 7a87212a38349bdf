#pragma once

#include <functional>

#include <QString>

#include "model/ShortcutRule.h"
#include "ui/windows/Sheet.h"

class QButtonGroup;
class QComboBox;
class QLineEdit;
class QVBoxLayout;

namespace kestrelbay {

struct PreferencesServices;

/// The kind of argument at this place in the order in which the user is offered them; none
/// outside of it.
[[nodiscard]] ArgumentKind argumentKindAt(int index);
/// The place of a kind.
[[nodiscard]] int indexOfArgumentKind(ArgumentKind kind);

/// What the controls of the advanced options say.
struct RuleAdvancedInput {
    /// Number of the repeat action's radio button, as the cases of RepeatAction are
    /// counted; -1 when none is on.
    int repeatTag = -1;
    /// Place in the popup; -1 when nothing is selected.
    int kindIndex = -1;
    QString argument{};
};

/// The rule with what was chosen for it, and all else as it was.
[[nodiscard]] ShortcutRule ruleWith(ShortcutRule rule, const RuleAdvancedInput &input);

/// The sheet with what a rule's row does not show: what a repeated press does, and the
/// argument that the application is opened with. Works on a copy of the rule.
class RuleAdvancedPanel final : public Sheet {
    Q_OBJECT

public:
    using Completion = std::function<void(const ShortcutRule &rule)>;

    /// The completion is called with the edited copy after the sheet has gone from the
    /// screen, and only when the user saves.
    RuleAdvancedPanel(const PreferencesServices &services, const ShortcutRule &rule,
                      Completion completion, QWidget *parent);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void buildRadioGroup(QVBoxLayout &column);
    void buildArgsSection(QVBoxLayout &column);
    void buildButtons(QVBoxLayout &column);
    void applyKindSelection();
    void save();

    const std::function<void()> openHelp_;
    const ShortcutRule rule_;
    Completion completion_;
    QButtonGroup *radioButtons_;
    QComboBox *kindPopup_ = nullptr;
    QLineEdit *argsField_ = nullptr;
};

}  // namespace kestrelbay
