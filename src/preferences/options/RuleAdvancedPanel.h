#pragma once

#include <functional>

#include "model/ShortcutRule.h"
#include "ui/windows/Sheet.h"

class QButtonGroup;
class QComboBox;
class QLineEdit;
class QVBoxLayout;

namespace kestrelbay {

class Workspace;
struct PreferencesServices;

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
    void openDeepLaunchHelp();
    void save();

    Workspace &workspace_;
    const ShortcutRule rule_;
    Completion completion_;
    QButtonGroup *radioButtons_;
    QComboBox *kindPopup_ = nullptr;
    QLineEdit *argsField_ = nullptr;
};

}  // namespace kestrelbay
