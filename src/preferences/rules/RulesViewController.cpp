#include "preferences/rules/RulesViewController.h"

#include <QPointer>
#include <QShowEvent>

#include <algorithm>
#include <utility>

#include "hotkeys/ShortcutManager.h"
#include "preferences/RuleRowTexts.h"
#include "preferences/recorder/HotkeyWords.h"
#include "preferences/rules/ApplicationIconCache.h"
#include "preferences/rules/RuleRowView.h"
#include "settings/L.h"
#include "ui/list/RowDrop.h"
#include "ui/list/RowTableView.h"
#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"
#include "ui/widgets/SymbolButton.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {

namespace {

constexpr QSize kInitialSize{600, 440};
constexpr int kTableTop = 8;
constexpr int kTableSide = 16;
constexpr int kTableBottom = 44;
constexpr int kRowSpacing = 4;

constexpr int kBarSide = 20;
constexpr int kAddButtonBottom = 10;
constexpr QSize kAddButton{24, 24};
constexpr QSize kAddSymbol{13, 13};

}  // namespace

RulesViewController::RulesViewController(const PreferencesServices &services,
                                         ApplicationIconCache &icons, QWidget *parent)
    : RulesViewController(services, icons, ruleSheets(services), parent) {}

RulesViewController::RulesViewController(const PreferencesServices &services,
                                         ApplicationIconCache &icons, RuleSheets sheets,
                                         QWidget *parent)
    : QWidget(parent),
      services_(services),
      icons_(icons),
      sheets_(std::move(sheets)),
      tableView_(new RowTableView(*this, services.timers, RuleRowView::kHeight, kRowSpacing, this)),
      addButton_(new SymbolButton(QStringLiteral("plus"), kAddSymbol, colors::label, this)),
      countLabel_(new TextLabel({}, systemFont(11), colors::secondaryLabel, this)),
      emptyLabel_(new TextLabel(L::rulesEmpty(), systemFont(13), colors::tertiaryLabel, this)) {
    resize(kInitialSize);
    tableView_->setAccessibleName(L::rulesTab());
    addButton_->setAccessibleName(L::addRuleName());
    emptyLabel_->setAlignment(Qt::AlignCenter);
    emptyLabel_->setAttribute(Qt::WA_TransparentForMouseEvents);

    connect(tableView_, &RowTableView::activated, this, &RulesViewController::editRule);
    connect(addButton_, &QAbstractButton::clicked, this, &RulesViewController::addRule);

    tableView_->reload();
    updateCountLabel();
}

RulesViewController::~RulesViewController() {
    // It asks this object, and QWidget would destroy it when that is gone.
    delete tableView_;
}

void RulesViewController::addRule() {
    sheets_.pickApplication(
        this, [self = QPointer(this)](const QString &appName, const QString &appPath) {
            if (self)
                self->appendRule(appName, appPath);
        });
}

void RulesViewController::appendRule(const QString &appName, const QString &appPath) {
    changeRules([&] { services_.manager.addRule({.appName = appName, .appPath = appPath}); });
    const int last = rowCount() - 1;
    tableView_->scrollToRow(last);
    tableView_->selectRow(last);
    if (auto *const row = qobject_cast<RuleRowView *>(tableView_->rowWidget(last)))
        row->hotkeyRecorder()->startRecordingByUser();
}

void RulesViewController::editRule() {
    if (tableView_->selectedRow() >= 0)
        showAdvancedPanel(tableView_->selectedRow());
}

void RulesViewController::showAdvancedPanel(std::ptrdiff_t index) {
    const ShortcutManager::Rules &rules = services_.manager.rules();
    if (index < 0 || index >= std::ssize(rules))
        return;
    sheets_.editRule(this, rules[static_cast<std::size_t>(index)],
                     [self = QPointer(this)](const ShortcutRule &rule) {
                         if (self)
                             self->changeRules([&] { self->services_.manager.updateRule(rule); });
                     });
}

void RulesViewController::ruleRowViewDidDelete(RuleRowView *, const ShortcutRule &rule) {
    if (const auto row = rowOfRule(rule.id))
        changeRules([&] { services_.manager.removeRule(*row); });
}

void RulesViewController::ruleRowViewDidOpenAdvanced(RuleRowView *, const ShortcutRule &rule) {
    if (const auto row = rowOfRule(rule.id))
        showAdvancedPanel(*row);
}

/// The selection stays with its rule; when that goes, with its place in the list.
void RulesViewController::changeRules(const std::function<void()> &change) {
    const ShortcutManager::Rules &rules = services_.manager.rules();
    const int selected = tableView_->selectedRow();
    std::optional<QUuid> id;
    if (selected >= 0 && selected < std::ssize(rules))
        id = rules[static_cast<std::size_t>(selected)].id;
    change();
    tableView_->reload();
    if (const auto row = id ? rowOfRule(*id) : std::nullopt)
        tableView_->selectRow(*row);
    updateCountLabel();
}

bool RulesViewController::acceptDrop(const QString &text, int gap) {
    const auto source = draggedRow(text);
    if (!source)
        return false;
    moveRule(*source, dropDestination(*source, gap));
    return true;
}

void RulesViewController::moveRow(int source, int destination) {
    moveRule(source, destination);
}

void RulesViewController::moveRule(std::ptrdiff_t source, std::ptrdiff_t destination) {
    services_.manager.moveRule(source, destination);
    tableView_->reload();
    if (source >= 0 && source < rowCount())
        tableView_->selectRow(static_cast<int>(destination));
}

void RulesViewController::updateCountLabel() {
    const ShortcutManager::Rules &rules = services_.manager.rules();
    countLabel_->setText(L::rulesCount(std::ssize(rules)));
    emptyLabel_->setVisible(rules.empty());
    layout();
    leaveEmptyTable();
}

/// Without rows there is nothing on which the table could show that it has the focus.
void RulesViewController::leaveEmptyTable() {
    const bool isEmpty = services_.manager.rules().empty();
    // The window's, as it may be behind the sheet that led here.
    const QWidget *const focus = window()->focusWidget();
    if (isEmpty && focus && (focus == tableView_ || tableView_->isAncestorOf(focus)))
        addButton_->setFocus(Qt::OtherFocusReason);
    tableView_->setFocusPolicy(isEmpty ? Qt::NoFocus : Qt::StrongFocus);
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
    tableView_->setGeometry(kTableSide, kTableTop, width() - 2 * kTableSide,
                            height() - kTableTop - kTableBottom);
    addButton_->setGeometry(
        {QPoint(kBarSide, height() - kAddButtonBottom - kAddButton.height()), kAddButton});
    QRect count({}, countLabel_->sizeHint());
    count.moveCenter(addButton_->geometry().center());
    count.moveRight(width() - kBarSide - 1);
    countLabel_->setGeometry(count);
    QRect empty({}, emptyLabel_->sizeHint());
    empty.moveCenter(rect().center());
    emptyLabel_->setGeometry(empty);
}

int RulesViewController::rowCount() const {
    return static_cast<int>(services_.manager.rules().size());
}

QWidget *RulesViewController::makeRow(QWidget *parent) {
    return new RuleRowView(services_, icons_, parent);
}

void RulesViewController::configureRow(QWidget *widget, int row) {
    if (row < rowCount())
        static_cast<RuleRowView *>(widget)->configure(
            services_.manager.rules()[static_cast<std::size_t>(row)], row, this);
}

void RulesViewController::setRowSelected(QWidget *widget, bool selected) {
    static_cast<RuleRowView *>(widget)->setSelected(selected);
}

bool RulesViewController::rowTakesAllKeys(QWidget *widget) const {
    return static_cast<RuleRowView *>(widget)->hotkeyRecorder()->isRecording();
}

void RulesViewController::rowLeftView(QWidget *widget) {
    static_cast<RuleRowView *>(widget)->hotkeyRecorder()->stopRecording();
}

QString RulesViewController::rowName(int row) const {
    if (row < 0 || row >= rowCount())
        return {};
    const ShortcutRule &rule = services_.manager.rules()[static_cast<std::size_t>(row)];
    return shownAppName(rule) + L::keySeparator() + hotkeyInWords(rule.keyCode, rule.modifierFlags);
}

std::optional<int> RulesViewController::rowOfRule(const QUuid &id) const {
    const ShortcutManager::Rules &rules = services_.manager.rules();
    const auto found = std::ranges::find(rules, id, &ShortcutRule::id);
    if (found == rules.end())
        return std::nullopt;
    return static_cast<int>(found - rules.begin());
}

}  // namespace kestrelbay
