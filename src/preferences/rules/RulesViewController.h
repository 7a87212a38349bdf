#pragma once

#include <cstddef>
#include <functional>
#include <optional>

#include <QUuid>
#include <QWidget>

#include "preferences/PreferencesServices.h"
#include "preferences/rules/RuleRowViewDelegate.h"
#include "preferences/rules/RuleSheets.h"
#include "ui/list/RowTableSource.h"

namespace kestrelbay {

class ApplicationIconCache;
class RowTableView;
class SymbolButton;
class TextLabel;

/// The rules in their order, to be moved, added, edited and deleted. Keeps no copy of
/// them: it shows the store's as of its last change here, so it is made afresh for
/// every visit.
class RulesViewController final : public QWidget,
                                  public RuleRowViewDelegate,
                                  private RowTableSource {
    Q_OBJECT

public:
    /// The icons have to outlive the view.
    RulesViewController(const PreferencesServices &services, ApplicationIconCache &icons,
                        QWidget *parent = nullptr);
    RulesViewController(const PreferencesServices &services, ApplicationIconCache &icons,
                        RuleSheets sheets, QWidget *parent = nullptr);
    ~RulesViewController() override;

    /// Asks for an application and appends a rule for it, which then waits for its hotkey.
    void addRule();
    /// Opens the advanced options of the selected rule, if there is one.
    void editRule();

    void ruleRowViewDidDelete(RuleRowView *row, const ShortcutRule &rule) override;
    void ruleRowViewDidOpenAdvanced(RuleRowView *row, const ShortcutRule &rule) override;

    [[nodiscard]] RowTableView *tableView() const { return tableView_; }
    [[nodiscard]] SymbolButton *addButton() const { return addButton_; }
    [[nodiscard]] TextLabel *countLabel() const { return countLabel_; }
    [[nodiscard]] TextLabel *emptyLabel() const { return emptyLabel_; }

protected:
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    [[nodiscard]] int rowCount() const override;
    [[nodiscard]] QWidget *makeRow(QWidget *parent) override;
    void configureRow(QWidget *widget, int row) override;
    void setRowSelected(QWidget *widget, bool selected) override;
    [[nodiscard]] bool rowTakesAllKeys(QWidget *widget) const override;
    void rowLeftView(QWidget *widget) override;
    [[nodiscard]] QString rowName(int row) const override;
    [[nodiscard]] bool acceptDrop(const QString &text, int gap) override;
    void moveRow(int source, int destination) override;

    void appendRule(const QString &appName, const QString &appPath);
    void showAdvancedPanel(std::ptrdiff_t index);
    void changeRules(const std::function<void()> &change);
    void moveRule(std::ptrdiff_t source, std::ptrdiff_t destination);
    void updateCountLabel();
    void leaveEmptyTable();
    void layout();
    [[nodiscard]] std::optional<int> rowOfRule(const QUuid &id) const;

    PreferencesServices services_;
    ApplicationIconCache &icons_;
    RuleSheets sheets_;
    RowTableView *tableView_;
    SymbolButton *addButton_;
    TextLabel *countLabel_;
    TextLabel *emptyLabel_;
};

}  // namespace kestrelbay
