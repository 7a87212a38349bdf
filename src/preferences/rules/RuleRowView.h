#pragma once

#include <memory>
#include <optional>

#include "model/ShortcutRule.h"
#include "preferences/PreferencesServices.h"
#include "preferences/recorder/HotkeyRecorderField.h"
#include "preferences/rules/RuleRowViewDelegate.h"
#include "ui/list/RowDelegate.h"

namespace kestrelbay {

class ApplicationIconCache;
class ArgsBadgeView;
class ElidedLabel;
class Switch;
class SymbolButton;
class SymbolView;

/// One rule of the list: shows it, records its hotkey in place, switches it, and
/// leads to its advanced options and to its deletion. Changes of the hotkey and of
/// the switch go straight into the store. Made to be reused: configure() leaves
/// nothing of the rule from before.
///
/// Paints the ground of a selected row itself. Works at any width; made for 52 px of
/// height.
class RuleRowView : public RowWidget, private HotkeyRecorderDelegate {
    Q_OBJECT

public:
    static constexpr int kHeight = 52;

    /// The icons have to outlive the row.
    RuleRowView(const PreferencesServices &services, ApplicationIconCache &icons,
                QWidget *parent = nullptr);
    ~RuleRowView() override;

    /// Ends a recording that goes on in the row. Held weakly, a null delegate included:
    /// without one every control of the row does nothing.
    void configure(const ShortcutRule &rule, int index, RuleRowViewDelegate *delegate);

    /// The rule as last configured; what was changed in the row since is in the store.
    [[nodiscard]] const std::optional<ShortcutRule> &rule() const { return rule_; }
    [[nodiscard]] int rowIndex() const { return rowIndex_; }
    [[nodiscard]] HotkeyRecorderField *hotkeyRecorder() const { return hotkeyRecorder_; }

    void setSelected(bool selected) override;
    [[nodiscard]] bool isSelected() const { return isSelected_; }
    [[nodiscard]] bool takesAllKeys() const override;
    void leftView() override;

    /// Looks whether another program holds the hotkey. Done by itself whenever
    /// that may have changed.
    void refreshRefusal();

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void hotkeyRecorderDidRecord(HotkeyRecorderField *field, KeyCode keyCode,
                                 ModifierFlags modifierFlags) override;
    void hotkeyRecorderDidClear(HotkeyRecorderField *field) override;

    void toggleChanged(bool isOn);
    void openAdvanced();
    void deleteRule();

    /// The rule as it is in the store, since this row's copy may be older.
    [[nodiscard]] std::optional<ShortcutRule> storedRule() const;
    void storeHotkey(KeyCode keyCode, ModifierFlags modifierFlags);
    void showIcon();
    void nameControls();
    void layout();

    PreferencesServices services_;
    ApplicationIconCache &icons_;
    std::optional<ShortcutRule> rule_;
    int rowIndex_ = -1;
    std::weak_ptr<RuleRowViewDelegate> delegate_;
    bool isSelected_ = false;
    bool isConfiguring_ = false;

    SymbolView *iconView_;
    ElidedLabel *nameLabel_;
    ArgsBadgeView *argsBadge_;
    ElidedLabel *pathLabel_;
    SymbolView *refusedSign_;
    HotkeyRecorderField *hotkeyRecorder_;
    Switch *enableToggle_;
    SymbolButton *advancedButton_;
    SymbolButton *deleteButton_;
    SymbolView *dragHandle_;
};

}  // namespace kestrelbay
