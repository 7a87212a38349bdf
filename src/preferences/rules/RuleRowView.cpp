#include "preferences/rules/RuleRowView.h"

#include <QDir>
#include <QFontDatabase>
#include <QPainter>
#include <QPointer>
#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>
#include <utility>

#include "hotkeys/ShortcutManager.h"
#include "model/HotkeyConflict.h"
#include "preferences/RuleRowTexts.h"
#include "preferences/rules/ApplicationIconCache.h"
#include "preferences/rules/HotkeyHolderCache.h"
#include "preferences/rules/RuleRowLayout.h"
#include "settings/L.h"
#include "settings/Notifications.h"
#include "tasks/DispatchQueue.h"
#include "ui/look/Drawing.h"
#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"
#include "ui/widgets/Switch.h"
#include "ui/windows/Sheet.h"

namespace kestrelbay {

namespace {

constexpr QLatin1StringView kSignSymbol{"exclamationmark.triangle.fill"};
constexpr QSize kButtonSymbol{15, 15};
constexpr qreal kSelectionRadius = 8;
constexpr float kSelectionAlpha = 0.14F;

constexpr int kBadgeFontSize = 9;
constexpr int kBadgePadding = 4;
constexpr int kBadgeHeight = 15;
constexpr qreal kBadgeRadius = 3;
constexpr float kBadgeAlpha = 0.18F;

QFont badgeFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(kBadgeFontSize);
    font.setWeight(QFont::Normal);
    return font;
}

}  // namespace

ArgsBadgeView::ArgsBadgeView(QWidget *parent)
    : TextLabel(QString(), badgeFont(), colors::link, parent) {
    setAlignment(Qt::AlignCenter);
}

QSize ArgsBadgeView::sizeHint() const {
    const qreal width = QFontMetricsF(font()).horizontalAdvance(text());
    return {static_cast<int>(std::ceil(width)) + 2 * kBadgePadding, kBadgeHeight};
}

void ArgsBadgeView::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    drawRounded(painter, rect(), kBadgeRadius, withAlpha(colors::controlAccent(), kBadgeAlpha));
    painter.end();
    TextLabel::paintEvent(event);
}

RuleRowView::RuleRowView(const PreferencesServices &services, ApplicationIconCache &icons,
                         HotkeyHolderCache &holders, QWidget *parent)
    : RowWidget(parent),
      services_(services),
      icons_(icons),
      holders_(holders),
      iconView_(new SymbolView(this)),
      nameLabel_(
          new ElidedLabel(systemFont(13, QFont::Medium), colors::label, Qt::ElideRight, this)),
      argsBadge_(new ArgsBadgeView(this)),
      pathLabel_(new ElidedLabel(systemFont(10), colors::tertiaryLabel, Qt::ElideMiddle, this)),
      refusedSign_(new SymbolView(this)),
      sidesSign_(new SymbolButton(kSignSymbol, RuleRowLayout::kSign, colors::systemOrange, this)),
      hotkeyRecorder_(new HotkeyRecorderField(services, this)),
      triggerLabel_(new ElidedLabel(systemFont(10), colors::tertiaryLabel, Qt::ElideRight, this)),
      enableToggle_(new Switch(Switch::Size::Small, this)),
      advancedButton_(new SymbolButton(QStringLiteral("gearshape"), kButtonSymbol,
                                       colors::secondaryLabel, this)),
      deleteButton_(
          new SymbolButton(QStringLiteral("minus.circle"), kButtonSymbol, colors::systemRed, this)),
      dragHandle_(new SymbolView(this)) {
    hotkeyRecorder_->setDelegate(this);
    refusedSign_->setSymbol(kSignSymbol, colors::systemOrange);
    refusedSign_->setObjectName(QStringLiteral("refusedSign"));
    refusedSign_->hide();
    sidesSign_->setObjectName(QStringLiteral("sidesSign"));
    sidesSign_->hide();
    pathLabel_->setObjectName(QStringLiteral("path"));
    triggerLabel_->setObjectName(QStringLiteral("trigger"));
    triggerLabel_->setAlignment(Qt::AlignCenter);
    triggerLabel_->hide();
    argsBadge_->hide();
    advancedButton_->setToolTip(L::advancedOptions());
    deleteButton_->setToolTip(L::ruleDeleteName());
    dragHandle_->setSymbol(QStringLiteral("line.3.horizontal"), colors::tertiaryLabel);
    dragHandle_->setToolTip(L::ruleDragName());
    dragHandle_->setAccessibleName(L::ruleDragName());

    connect(enableToggle_, &QAbstractButton::toggled, this, &RuleRowView::toggleChanged);
    connect(sidesSign_, &QAbstractButton::clicked, this, &RuleRowView::useEitherSide);
    connect(advancedButton_, &QAbstractButton::clicked, this, &RuleRowView::openAdvanced);
    connect(deleteButton_, &QAbstractButton::clicked, this, &RuleRowView::deleteRule);
    connect(&icons_, &ApplicationIconCache::iconsArrived, this, &RuleRowView::showApplication);
    connect(&services_.notifications, &Notifications::refusedHotkeysDidChange, this,
            &RuleRowView::refreshHotkey);
    connect(&holders_, &HotkeyHolderCache::holdersArrived, this, &RuleRowView::refreshHotkey);
}

void RuleRowView::configure(const ShortcutRule &rule, RuleRowViewDelegate *delegate) {
    hotkeyRecorder_->stopRecording();
    hotkeyRecorder_->stopShaking();
    const QScopedValueRollback configuring(isConfiguring_, true);
    rule_ = rule;
    delegate_ = delegate ? delegate->weakly() : std::weak_ptr<RuleRowViewDelegate>();

    showApplication();
    const QString name = shownAppName(rule);
    nameLabel_->setFullText(name);
    argsBadge_->setText(argsBadgeText(rule));
    // It is the argument that the text stands for, for those who hear it.
    argsBadge_->setAccessibleName(rule.launchArguments);
    argsBadge_->setVisible(!argsBadge_->text().isEmpty());
    argsBadge_->setToolTip(argsBadge_->isHidden() ? QString() : rule.launchArguments);
    hotkeyRecorder_->configure(rule.keyCode, rule.modifierFlags);
    enableToggle_->setChecked(rule.isEnabled);
    hotkeyRecorder_->setSubject(name);
    enableToggle_->setAccessibleName(L::enableRule(name));
    advancedButton_->setAccessibleName(L::advancedOptionsOf(name));
    deleteButton_->setAccessibleName(L::deleteRule(name));
    refreshHotkey();
}

void RuleRowView::showApplication() {
    const QString path = rule_ ? rule_->appPath : QString();
    const QImage icon = icons_.icon(path);
    const bool isMissing = icons_.isMissing(path);
    const QString shownPath = abbreviatedPath(path, QDir::homePath());
    pathLabel_->setFullText(isMissing ? L::appNotInstalled(shownPath) : shownPath);
    pathLabel_->setColor(isMissing ? colors::secondaryLabel : colors::tertiaryLabel);
    if (icon.isNull())
        iconView_->setSymbol(QStringLiteral("app.dashed"), colors::secondaryLabel);
    else
        iconView_->setImage(icon);
}

void RuleRowView::setSelected(bool selected) {
    isSelected_ = selected;
    update();
    services_.mainQueue.async([recorder = QPointer(hotkeyRecorder_)] {
        if (recorder)
            recorder->refreshDisplayColors();
    });
}

bool RuleRowView::takesAllKeys() const {
    return hotkeyRecorder_->isRecording();
}

void RuleRowView::leftView() {
    hotkeyRecorder_->stopRecording();
}

void RuleRowView::refreshHotkey() {
    QStringList words{refreshSign(), refreshTrigger()};
    words.removeAll(QString());
    hotkeyRecorder_->setAccessibleDescription(words.join(u'\n'));
    layout();
}

QString RuleRowView::refreshSign() {
    const std::optional<ShortcutRule> rule = storedRule();
    const std::optional<RefusedHotkey> refusal =
        rule ? services_.manager.refusal(*rule) : std::nullopt;
    const bool needsSides = rule && services_.manager.needsSides(*rule);
    QString words;
    if (refusal) {
        words =
            refusalInWords(*refusal, holders_.holder(*refusal), Language::current()).join(u'\n');
        refusedSign_->setToolTip(words);
        refusedSign_->setAccessibleName(words);
    } else if (needsSides) {
        words = L::hotkeyNeedsSides();
        const QString wordsOfSign = words + u'\n' + L::hotkeyEitherSideByClick();
        sidesSign_->setToolTip(wordsOfSign);
        sidesSign_->setAccessibleName(wordsOfSign);
    }
    refusedSign_->setVisible(refusal.has_value());
    sidesSign_->setVisible(needsSides);
    return words;
}

QString RuleRowView::refreshTrigger() {
    const std::optional<ShortcutRule> rule = storedRule();
    const QString trigger = rule ? services_.manager.triggerText(*rule) : QString();
    QString words = trigger.isEmpty() ? QString() : L::hotkeyTrigger(trigger);
    triggerLabel_->setFullText(words);
    triggerLabel_->setVisible(!words.isEmpty());
    return words;
}

void RuleRowView::paintEvent(QPaintEvent * /*event*/) {
    if (!isSelected_)
        return;
    QPainter painter(this);
    drawRounded(painter, rect(), kSelectionRadius,
                withAlpha(colors::controlAccent(), kSelectionAlpha));
}

void RuleRowView::resizeEvent(QResizeEvent * /*event*/) {
    layout();
}

void RuleRowView::layout() {
    const RuleRowLayout places = RuleRowLayout::in(
        size(), {.nameWidth = nameLabel_->fullWidth(),
                 .badge = argsBadge_->isHidden() ? QSize() : argsBadge_->sizeHint(),
                 .hasSign = hasSign(),
                 .hasTrigger = !triggerLabel_->isHidden()});
    iconView_->setGeometry(places.icon);
    nameLabel_->setGeometry(places.name);
    argsBadge_->setGeometry(places.badge);
    pathLabel_->setGeometry(places.path);
    refusedSign_->setGeometry(places.sign);
    sidesSign_->setGeometry(places.sign);
    hotkeyRecorder_->setGeometry(places.recorder);
    triggerLabel_->setGeometry(places.trigger);
    enableToggle_->setGeometry(places.toggle);
    advancedButton_->setGeometry(places.advanced);
    deleteButton_->setGeometry(places.remove);
    dragHandle_->setGeometry(places.dragHandle);
}

std::optional<ShortcutRule> RuleRowView::storedRule() const {
    if (!rule_)
        return std::nullopt;
    const ShortcutManager::Rules &rules = services_.manager.rules();
    const auto found = std::ranges::find(rules, rule_->id, &ShortcutRule::id);
    return found == rules.end() ? std::nullopt : std::optional(*found);
}

void RuleRowView::toggleChanged(bool isOn) {
    std::optional<ShortcutRule> rule = storedRule();
    if (isConfiguring_ || !rule || delegate_.expired())
        return;
    rule->isEnabled = isOn;
    services_.manager.updateRule(*rule);
}

void RuleRowView::hotkeyRecorderDidRecord(HotkeyRecorderField *field, KeyCode keyCode,
                                          ModifierFlags modifierFlags) {
    if (!rule_)
        return;
    if (!conflictingRule(services_.manager.rules(), rule_->id, {keyCode, modifierFlags})) {
        storeHotkey(keyCode, modifierFlags);
        return;
    }
    field->shakeAnimation();
    services_.showToast(L::hotkeyConflict(), {}, {});
    const ShortcutRule kept = storedRule().value_or(*rule_);
    field->configure(kept.keyCode, kept.modifierFlags);
}

void RuleRowView::useEitherSide() {
    const std::optional<ShortcutRule> rule = storedRule();
    if (!rule || delegate_.expired())
        return;
    const ModifierFlags flags = withoutSides(rule->modifierFlags);
    hotkeyRecorder_->stopRecording();
    hotkeyRecorder_->configure(rule->keyCode, flags);
    hotkeyRecorderDidRecord(hotkeyRecorder_, rule->keyCode, flags);
}

void RuleRowView::hotkeyRecorderDidClear(HotkeyRecorderField * /*field*/) {
    storeHotkey({}, {});
}

void RuleRowView::storeHotkey(KeyCode keyCode, ModifierFlags modifierFlags) {
    std::optional<ShortcutRule> rule = storedRule();
    if (!rule || delegate_.expired())
        return;
    rule->keyCode = keyCode;
    rule->modifierFlags = modifierFlags;
    const QPointer alive(this);
    services_.manager.updateRule(*rule);
    if (alive)
        refreshHotkey();
}

void RuleRowView::openAdvanced() {
    const std::shared_ptr<RuleRowViewDelegate> delegate = delegate_.lock();
    if (!delegate || !storedRule())
        return;
    const ShortcutRule rule = *rule_;
    delegate->ruleRowViewDidOpenAdvanced(this, rule);
}

void RuleRowView::deleteRule() {
    if (!rule_)
        return;
    QWidget *const sheetWindow = isWindow() ? nullptr : window();
    openDeleteConfirmation(sheetWindow, shownAppName(*rule_),
                           [row = QPointer(this), rule = *rule_] {
                               if (!row)
                                   return;
                               if (const auto delegate = row->delegate_.lock())
                                   delegate->ruleRowViewDidDelete(row, rule);
                           });
}

AlertSheet *openDeleteConfirmation(QWidget *window, const QString &appName,
                                   std::function<void()> confirmed) {
    auto *const sheet = new AlertSheet({.title = L::deleteConfirmTitle(),
                                        .text = L::deleteConfirmMsg(appName),
                                        .acceptTitle = L::deleteConfirmButton(),
                                        .rejectTitle = L::cancel(),
                                        .isWarning = true,
                                        .isDestructive = true},
                                       window);
    QObject::connect(sheet, &QDialog::accepted, sheet, std::move(confirmed));
    sheet->open();
    return sheet;
}

}  // namespace kestrelbay
