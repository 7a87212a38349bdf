#include "preferences/rules/RulesViewController.h"

#include <QFileInfo>
#include <QPointer>
#include <QShowEvent>

#include <algorithm>
#include <utility>

#include "hotkeys/ShortcutManager.h"
#include "platform/NativeWindow.h"
#include "platform/Workspace.h"
#include "preferences/RuleRowTexts.h"
#include "preferences/options/RuleAdvancedPanel.h"
#include "preferences/picker/AppPickerPanel.h"
#include "preferences/rules/ApplicationIconCache.h"
#include "preferences/rules/RuleDeletion.h"
#include "preferences/rules/RulesModel.h"
#include "preferences/transfer/RuleTransfer.h"
#include "settings/L.h"
#include "settings/Notifications.h"
#include "ui/list/RowListView.h"
#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"
#include "ui/widgets/SymbolView.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {

namespace {

constexpr QSize kInitialSize{600, 440};
constexpr int kListTop = 8;
constexpr int kListSide = 16;
constexpr int kListBottom = 44;
constexpr int kRowSpacing = 4;

constexpr int kBarSide = 20;
constexpr int kAddButtonBottom = 10;
constexpr QSize kAddButton{24, 24};
constexpr QSize kAddSymbol{13, 13};

/// The real ones. The services have to outlive the sheets.
RuleSheets ruleSheets(const PreferencesServices &services) {
    return {
        .pickApplication =
            [services](QWidget *parent, RuleSheets::Picked completion) {
                (new AppPickerPanel(services, std::move(completion), parent))->open();
            },
        .editRule =
            [services](QWidget *parent, const ShortcutRule &rule, RuleSheets::Edited completion) {
                (new RuleAdvancedPanel(services, rule, std::move(completion), parent))->open();
            },
        .importRules =
            [services](QWidget *parent, const std::function<void()> &added) {
                importRulesByUser(services, parent, added);
            },
        .exportRules = [services](QWidget *parent) { exportRulesByUser(services, parent); },
    };
}

}  // namespace

RulesViewController::RulesViewController(const PreferencesServices &services,
                                         ApplicationIconCache &icons, RuleDeletion &deletion)
    : RulesViewController(services, icons, deletion, ruleSheets(services)) {}

RulesViewController::RulesViewController(const PreferencesServices &services,
                                         ApplicationIconCache &icons, RuleDeletion &deletion,
                                         RuleSheets sheets)
    : services_(services),
      icons_(icons),
      deletion_(deletion),
      sheets_(std::move(sheets)),
      model_(new RulesModel(services.manager, services.keyboardLayout, this)),
      listView_(new RowListView(
          *model_,
          {.make =
               [this](QWidget *owner) {
                   return new RuleRowView(services_, icons_, holders_, owner);
               },
           .fill = [this](RowWidget *row, int index) { fillRow(row, index); },
           .isTranslucencyShown = [this] { return services_.nativeWindow.isTranslucencyShown(); },
           .height = RuleRowView::kHeight,
           .spacing = kRowSpacing},
          services.timers, this)),
      addButton_(new SymbolButton(QStringLiteral("plus"), kAddSymbol, colors::label, this)),
      countLabel_(new TextLabel({}, systemFont(11), colors::secondaryLabel, this)),
      emptyLabel_(new TextLabel(L::rulesEmpty(), systemFont(13), colors::tertiaryLabel, this)) {
    resize(kInitialSize);
    listView_->setAccessibleName(L::rulesTab());
    addButton_->setAccessibleName(L::addRuleName());
    emptyLabel_->setAlignment(Qt::AlignCenter);
    emptyLabel_->setAttribute(Qt::WA_TransparentForMouseEvents);

    connect(listView_, &RowListView::activated, this, &RulesViewController::editRule);
    connect(model_, &RulesModel::ruleMoved, listView_, &RowListView::selectRow);
    connect(addButton_, &QAbstractButton::clicked, this, &RulesViewController::addRule);
    connect(&services_.notifications, &Notifications::rulesWereTakenIn, this,
            [this] { changeRules([] {}); });
    connect(&deletion_, &RuleDeletion::restored, this, &RulesViewController::showRule);
    new RulesMenu(*listView_, *model_, menuCommands());

    model_->reload();
    updateCountLabel();
}

RulesViewController::~RulesViewController() {
    // It has its rows from this object, and QWidget would destroy it when that is gone.
    delete listView_;
}

void RulesViewController::addRule() {
    sheets_.pickApplication(
        this, [self = QPointer(this)](const QString &appName, const QString &appPath) {
            if (self)
                self->appendRule(appName, appPath);
        });
}

void RulesViewController::appendRule(const QString &appName, const QString &appPath) {
    const ShortcutRule rule{.appName = appName, .appPath = appPath};
    changeRules([&] { services_.manager.addRule(rule); });
    recordHotkey(rule.id);
}

RulesMenu::Commands RulesViewController::menuCommands() {
    return {.record = [this](const QUuid &id) { recordHotkey(id); },
            .useEitherSide = [this](const QUuid &id) { useEitherSide(id); },
            .needsSides =
                [this](const QUuid &id) {
                    const ShortcutRule *const rule = ruleOf(id);
                    return rule && services_.manager.needsSides(*rule);
                },
            .showOptions = [this](const QUuid &id) { showAdvancedPanel(id); },
            .showInFolder = [this](const QUuid &id) { showInFolder(id); },
            .duplicate = [this](const QUuid &id) { duplicateRule(id); },
            .remove = [this](const QUuid &id) { askToDelete(id); },
            .undoDeletion = [this] { deletion_.undo(); },
            .canUndoDeletion = [this] { return deletion_.canUndo(); },
            .importRules =
                [this] {
                    sheets_.importRules(this, [self = QPointer(this)] {
                        if (self)
                            self->changeRules([] {});
                    });
                },
            .exportRules = [this] { sheets_.exportRules(this); }};
}

void RulesViewController::recordHotkey(const QUuid &id) {
    if (RuleRowView *const row = showRule(id))
        row->hotkeyRecorder()->startRecordingByUser();
}

void RulesViewController::useEitherSide(const QUuid &id) {
    if (RuleRowView *const row = showRule(id))
        row->useEitherSide();
}

RuleRowView *RulesViewController::showRule(const QUuid &id) {
    changeRules([] {});
    const std::optional<int> row = rowOfRule(id);
    if (!row)
        return nullptr;
    listView_->scrollToRow(*row);
    listView_->selectRow(*row);
    return qobject_cast<RuleRowView *>(listView_->rowWidget(*row));
}

void RulesViewController::showInFolder(const QUuid &id) {
    const ShortcutRule *const rule = ruleOf(id);
    if (rule && !rule->appPath.isEmpty())
        services_.workspace.showFolder(QFileInfo(rule->appPath).path());
}

void RulesViewController::duplicateRule(const QUuid &id) {
    const ShortcutRule *const rule = ruleOf(id);
    if (!rule)
        return;
    ShortcutRule copy = *rule;
    copy.id = QUuid::createUuid();
    // One hotkey cannot start both.
    copy.keyCode = {};
    copy.modifierFlags = {};
    const auto below = static_cast<std::size_t>(*rowOfRule(id)) + 1;
    changeRules([&] { services_.manager.insertRule(copy, below); });
    recordHotkey(copy.id);
}

void RulesViewController::askToDelete(const QUuid &id) {
    if (const ShortcutRule *const rule = ruleOf(id))
        openDeleteConfirmation(this, shownAppName(*rule), [self = QPointer(this), id] {
            if (self)
                self->deleteRule(id);
        });
}

void RulesViewController::deleteRule(const QUuid &id) {
    changeRules([&] { deletion_.remove(id); });
}

void RulesViewController::editRule() {
    if (const auto id = model_->idAt(listView_->selectedRow()))
        showAdvancedPanel(*id);
}

void RulesViewController::showAdvancedPanel(const QUuid &id) {
    if (const ShortcutRule *const shown = ruleOf(id))
        sheets_.editRule(this, *shown, [self = QPointer(this)](const ShortcutRule &rule) {
            if (self)
                self->changeRules([&] { self->services_.manager.updateRule(rule); });
        });
}

void RulesViewController::ruleRowViewDidDelete(RuleRowView *, const ShortcutRule &rule) {
    deleteRule(rule.id);
}

void RulesViewController::ruleRowViewDidOpenAdvanced(RuleRowView *, const ShortcutRule &rule) {
    showAdvancedPanel(rule.id);
}

/// The selection stays with its rule; when that goes, with its place in the list.
void RulesViewController::changeRules(const std::function<void()> &change) {
    const std::optional<QUuid> id = model_->idAt(listView_->selectedRow());
    change();
    model_->reload();
    if (const auto row = id ? rowOfRule(*id) : std::nullopt)
        listView_->selectRow(*row);
    updateCountLabel();
}

void RulesViewController::updateCountLabel() {
    const ShortcutManager::Rules &rules = services_.manager.rules();
    countLabel_->setText(L::rulesCount(std::ssize(rules)));
    emptyLabel_->setVisible(rules.empty());
    layout();
    // The window's, as it may be behind the sheet that led here.
    const QWidget *const focus = window()->focusWidget();
    if (rules.empty() && focus && (focus == listView_ || listView_->isAncestorOf(focus)))
        addButton_->setFocus(Qt::OtherFocusReason);
}

/// From beside the list, as from the button when that has the focus.
void RulesViewController::contextMenuEvent(QContextMenuEvent *) {
    listView_->requestMenu();
}

void RulesViewController::resizeEvent(QResizeEvent *) {
    layout();
}

void RulesViewController::showEvent(QShowEvent *event) {
    QWidget::showEvent(event);
    if (!event->spontaneous())
        icons_.refresh();
}

void RulesViewController::layout() {
    listView_->setGeometry(kListSide, kListTop, width() - 2 * kListSide,
                           height() - kListTop - kListBottom);
    addButton_->setGeometry(
        {QPoint(kBarSide, height() - kAddButtonBottom - kAddButton.height()), kAddButton});
    QRect count({}, countLabel_->sizeHint());
    count.moveCenter(addButton_->geometry().center());
    count.moveRight(width() - kBarSide - 1);
    countLabel_->setGeometry(count);
    // Measured only where it is shown: no other text needs the font that has its sign.
    if (emptyLabel_->isHidden())
        return;
    QRect empty({}, emptyLabel_->sizeHint());
    empty.moveCenter(rect().center());
    emptyLabel_->setGeometry(empty);
}

void RulesViewController::fillRow(RowWidget *row, int index) {
    // The store may have fewer of them than the list still shows.
    if (const ShortcutRule *const rule = ruleAt(index))
        static_cast<RuleRowView *>(row)->configure(*rule, this);
}

const ShortcutRule *RulesViewController::ruleAt(int row) const {
    const ShortcutManager::Rules &rules = services_.manager.rules();
    return row >= 0 && row < std::ssize(rules) ? &rules[static_cast<std::size_t>(row)] : nullptr;
}

const ShortcutRule *RulesViewController::ruleOf(const QUuid &id) const {
    const auto row = rowOfRule(id);
    return row ? ruleAt(*row) : nullptr;
}

std::optional<int> RulesViewController::rowOfRule(const QUuid &id) const {
    const ShortcutManager::Rules &rules = services_.manager.rules();
    const auto found = std::ranges::find(rules, id, &ShortcutRule::id);
    if (found == rules.end())
        return std::nullopt;
    return static_cast<int>(found - rules.begin());
}

}  // namespace kestrelbay
