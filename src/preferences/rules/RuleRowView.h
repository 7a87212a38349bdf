#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "model/ShortcutRule.h"
#include "preferences/PreferencesServices.h"
#include "preferences/recorder/HotkeyRecorderField.h"
#include "ui/list/RowDelegate.h"
#include "ui/widgets/SymbolView.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {

class AlertSheet;
class ApplicationIconCache;
class HotkeyHolderCache;
class RuleRowView;
class Switch;

/// Whoever shows rule rows. Rows hold it weakly: once it is destroyed, nothing is
/// asked of it any more. Both may reconfigure or destroy the row.
class RuleRowViewDelegate {
public:
    RuleRowViewDelegate() = default;
    virtual ~RuleRowViewDelegate() = default;
    RuleRowViewDelegate(const RuleRowViewDelegate &) = delete;
    RuleRowViewDelegate &operator=(const RuleRowViewDelegate &) = delete;

    /// The user has confirmed that the rule shall go.
    virtual void ruleRowViewDidDelete(RuleRowView *row, const ShortcutRule &rule) = 0;
    /// The user wants the advanced options of a rule that is in the list.
    virtual void ruleRowViewDidOpenAdvanced(RuleRowView *row, const ShortcutRule &rule) = 0;

    [[nodiscard]] std::weak_ptr<RuleRowViewDelegate> weakly() const { return self_; }

private:
    // Owns nothing; it only ends with the object.
    std::shared_ptr<RuleRowViewDelegate> self_{this, [](RuleRowViewDelegate *) {}};
};

/// A small tinted badge with a text. Its natural size is 4 px wider than the text on
/// either side, and 15 px high.
class ArgsBadgeView final : public TextLabel {
    Q_OBJECT

public:
    explicit ArgsBadgeView(QWidget *parent);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

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

    /// The icons and the holders have to outlive the row.
    RuleRowView(const PreferencesServices &services, ApplicationIconCache &icons,
                HotkeyHolderCache &holders, QWidget *parent = nullptr);

    /// Ends a recording that goes on in the row. Held weakly, a null delegate included:
    /// without one every control of the row does nothing.
    void configure(const ShortcutRule &rule, RuleRowViewDelegate *delegate);

    /// The rule as last configured; what was changed in the row since is in the store.
    [[nodiscard]] const std::optional<ShortcutRule> &rule() const { return rule_; }
    [[nodiscard]] HotkeyRecorderField *hotkeyRecorder() const { return hotkeyRecorder_; }

    /// Has the rule's hotkey mean the modifiers of either side. Where another rule has that one,
    /// nothing changes, and the row says so as it does of one that was recorded.
    void useEitherSide();

    void setSelected(bool selected) override;
    [[nodiscard]] bool takesAllKeys() const override;
    void leftView() override;

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
    /// Its icon, its path, and whether it is there.
    void showApplication();
    /// Looks whether and how the hotkey can arrive.
    void refreshHotkey();
    /// Says why it cannot: another program holds it, and which, or it names a side that cannot be
    /// told. Gives the reason, as it is spoken; empty where there is none.
    QString refreshSign();
    [[nodiscard]] bool hasSign() const {
        return !refusedSign_->isHidden() || !sidesSign_->isHidden();
    }
    /// What the user presses, where the system has its own words for it.
    /// Gives the same as it is spoken.
    QString refreshTrigger();
    void layout();

    PreferencesServices services_;
    ApplicationIconCache &icons_;
    HotkeyHolderCache &holders_;
    std::optional<ShortcutRule> rule_;
    std::weak_ptr<RuleRowViewDelegate> delegate_;
    bool isSelected_ = false;
    bool isConfiguring_ = false;

    SymbolView *iconView_;
    ElidedLabel *nameLabel_;
    ArgsBadgeView *argsBadge_;
    ElidedLabel *pathLabel_;
    SymbolView *refusedSign_;
    SymbolButton *sidesSign_;
    HotkeyRecorderField *hotkeyRecorder_;
    ElidedLabel *triggerLabel_;
    Switch *enableToggle_;
    SymbolButton *advancedButton_;
    SymbolButton *deleteButton_;
    SymbolView *dragHandle_;
};

/// Asks whether the rule of an application shall go, as a sheet of the window. Destroys itself
/// when it closes. `confirmed` is called for Delete only.
AlertSheet *openDeleteConfirmation(QWidget *window, const QString &appName,
                                   std::function<void()> confirmed);

}  // namespace kestrelbay
