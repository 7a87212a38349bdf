#pragma once

#include <functional>
#include <optional>

#include <QUuid>
#include <QWidget>

#include "preferences/PreferencesServices.h"
#include "preferences/rules/HotkeyHolderCache.h"
#include "preferences/rules/RuleRowView.h"
#include "preferences/rules/RulesMenu.h"

namespace kestrelbay {

class ApplicationIconCache;
class RuleDeletion;
class RowListView;
class RowWidget;
class RulesModel;
class SymbolButton;
class TextLabel;

/// Opens the sheets of the rules list over the window of `parent`. Each returns at
/// once; the completion is called when the user has confirmed, and otherwise never.
struct RuleSheets {
    using Picked = std::function<void(const QString &appName, const QString &appPath)>;
    using Edited = std::function<void(const ShortcutRule &rule)>;

    std::function<void(QWidget *parent, Picked completion)> pickApplication;
    std::function<void(QWidget *parent, const ShortcutRule &rule, Edited completion)> editRule;
    /// The completion adds what there is to add.
    std::function<void(QWidget *parent, const std::function<void()> &added)> importRules;
    std::function<void(QWidget *parent)> exportRules;
};

/// The rules in their order, to be moved, added, edited and deleted. Keeps no copy of
/// them: it shows the store's as of its last change here or of the rule file, so it is made
/// afresh for every visit.
class RulesViewController final : public QWidget, public RuleRowViewDelegate {
    Q_OBJECT

public:
    /// The icons and the deletion have to outlive the view.
    RulesViewController(const PreferencesServices &services, ApplicationIconCache &icons,
                        RuleDeletion &deletion);
    RulesViewController(const PreferencesServices &services, ApplicationIconCache &icons,
                        RuleDeletion &deletion, RuleSheets sheets);
    ~RulesViewController() override;

    /// Asks for an application and appends a rule for it, which then waits for its hotkey.
    void addRule();
    /// Opens the advanced options of the selected rule, if there is one.
    void editRule();

    void ruleRowViewDidDelete(RuleRowView *row, const ShortcutRule &rule) override;
    void ruleRowViewDidOpenAdvanced(RuleRowView *row, const ShortcutRule &rule) override;

    [[nodiscard]] RulesModel *model() const { return model_; }
    [[nodiscard]] RowListView *listView() const { return listView_; }
    [[nodiscard]] SymbolButton *addButton() const { return addButton_; }
    [[nodiscard]] TextLabel *countLabel() const { return countLabel_; }
    [[nodiscard]] TextLabel *emptyLabel() const { return emptyLabel_; }

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void fillRow(RowWidget *row, int index);
    [[nodiscard]] RulesMenu::Commands menuCommands();
    void appendRule(const QString &appName, const QString &appPath);
    void recordHotkey(const QUuid &id);
    void useEitherSide(const QUuid &id);
    void showInFolder(const QUuid &id);
    void duplicateRule(const QUuid &id);
    void askToDelete(const QUuid &id);
    void deleteRule(const QUuid &id);
    /// Selects it, in view. Null for an id that the store does not have.
    RuleRowView *showRule(const QUuid &id);
    void showAdvancedPanel(const QUuid &id);
    void changeRules(const std::function<void()> &change);
    void updateCountLabel();
    void layout();
    /// Null for a row that the store does not have.
    [[nodiscard]] const ShortcutRule *ruleAt(int row) const;
    /// Null for an id that the store does not have.
    [[nodiscard]] const ShortcutRule *ruleOf(const QUuid &id) const;
    [[nodiscard]] std::optional<int> rowOfRule(const QUuid &id) const;

    PreferencesServices services_;
    ApplicationIconCache &icons_;
    RuleDeletion &deletion_;
    HotkeyHolderCache holders_{services_};
    RuleSheets sheets_;
    RulesModel *model_;
    RowListView *listView_;
    SymbolButton *addButton_;
    TextLabel *countLabel_;
    TextLabel *emptyLabel_;
};

}  // namespace kestrelbay
