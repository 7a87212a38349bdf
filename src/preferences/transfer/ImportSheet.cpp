#include "preferences/transfer/ImportSheet.h"

#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <iterator>

#include "model/TrimmedText.h"
#include "platform/ApplicationCatalog.h"
#include "preferences/RuleRowTexts.h"
#include "settings/L.h"
#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {

namespace {

constexpr QSize kSize{620, 400};
constexpr int kMargin = 16;
constexpr int kGap = 10;
constexpr int kTitleFont = 15;
constexpr int kTextFont = 12;
constexpr int kHotkeyWidth = 96;
constexpr int kRemarkWidth = 180;
/// Above and below the lines of a row.
constexpr int kRowPadding = 5;
/// Longer texts say no more, and take time to lay out.
constexpr qsizetype kMostCharacters = 200;

class ImportRow final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option,
                                 const QModelIndex &index) const override {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, 2 * kRowPadding);
    }
};

QString shown(const QString &text) {
    return onOneLine(text.left(kMostCharacters));
}

/// The application, and below it what it is given.
QString target(const ShortcutRule &rule) {
    QString text = shown(abbreviatedPath(rule.appPath, QDir::homePath()));
    if (rule.argumentKind != ArgumentKind::None)
        text += u' ' + shown(rule.launchArguments);
    return text;
}

QString remarkOn(const RuleImport::Addition &addition, const ApplicationCatalog &catalog) {
    QStringList remarks;
    if (catalog.nameOfFile(addition.rule.appPath).isEmpty())
        remarks += L::importNotInstalled();
    if (addition.lostHotkey)
        remarks += L::importHotkeyTaken();
    if (!addition.rule.isEnabled)
        remarks += L::importIsDisabled();
    return remarks.join(u'\n');
}

}  // namespace

ImportSheet::ImportSheet(const RuleImport &import, const ApplicationCatalog &catalog,
                         const KeyboardLayout &layout, QWidget *parent)
    : Sheet(L::importTitle(), parent), layout_(layout), list_(new QTreeWidget(this)) {
    setSizeOnScreen(kSize);
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kGap);
    column->addWidget(new TextLabel(L::importTitle(), systemFont(kTitleFont, QFont::DemiBold),
                                    colors::label, this));
    const QString counts =
        L::importCounts(std::ssize(import.additions), std::ssize(import.leftOut));
    column->addWidget(new TextLabel(counts, systemFont(kTextFont), colors::secondaryLabel, this));
    setAccessibleDescription(counts);

    list_->setAccessibleName(L::importTitle());
    list_->setFont(systemFont(kTextFont));
    list_->setColumnCount(3);
    list_->setHeaderHidden(true);
    list_->setRootIsDecorated(false);
    list_->setAllColumnsShowFocus(true);
    // Of a path both ends tell.
    list_->setTextElideMode(Qt::ElideMiddle);
    list_->setItemDelegate(new ImportRow(list_));
    list_->header()->setStretchLastSection(false);
    list_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    list_->header()->resizeSection(1, kHotkeyWidth);
    list_->header()->resizeSection(2, kRemarkWidth);
    fill(import, catalog);
    column->addWidget(list_, 1);

    auto *const buttons = new QHBoxLayout;
    buttons->addStretch();
    const bool canAdd = !import.additions.empty();
    QPushButton *const cancel = makeButton(canAdd ? L::cancel() : L::close(), !canAdd);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    buttons->addWidget(cancel);
    if (canAdd) {
        QPushButton *const add = makeButton(L::addRuleName(), true);
        connect(add, &QPushButton::clicked, this, &QDialog::accept);
        buttons->addWidget(add);
        add->setFocus();
    }
    column->addLayout(buttons);
}

void ImportSheet::fill(const RuleImport &import, const ApplicationCatalog &catalog) {
    for (const RuleImport::Addition &addition : import.additions)
        addRow(addition.rule, remarkOn(addition, catalog), true);
    for (const RuleImport::LeftOut &leftOut : import.leftOut) {
        const bool isThere = leftOut.reason == RuleImport::Reason::AlreadyThere;
        addRow(leftOut.rule, isThere ? L::importAlreadyThere() : L::importNoApplication(), false);
    }
}

void ImportSheet::addRow(const ShortcutRule &rule, const QString &remark, bool isAdded) {
    auto *const row = new QTreeWidgetItem(list_);
    const QString name = shown(shownAppName(rule));
    const QString what = target(rule);
    row->setText(0, what.isEmpty() ? name : name + u'\n' + what);
    row->setToolTip(0, what);
    row->setText(1, rule.hotkeyString());
    row->setData(1, Qt::AccessibleTextRole,
                 hotkeyInWords(rule.keyCode, rule.modifierFlags, layout_));
    row->setText(2, remark);
    row->setToolTip(2, remark);
    row->setDisabled(!isAdded);
}

}  // namespace kestrelbay
