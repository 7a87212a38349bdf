#include "preferences/options/RuleAdvancedPanel.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <utility>

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "model/TrimmedText.h"
#include "platform/Workspace.h"
#include "preferences/PreferencesServices.h"
#include "preferences/RuleRowTexts.h"
#include "settings/Addresses.h"
#include "settings/L.h"
#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"
#include "ui/widgets/AccessibleFactory.h"
#include "ui/widgets/LinkButton.h"
#include "ui/widgets/PopupButton.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {

namespace {

constexpr QSize kSize{475, 280};
constexpr QMargins kMargins{20, 12, 20, 12};
constexpr int kSectionGap = 8;
constexpr int kControlGap = 8;
constexpr int kLineGap = 4;
constexpr int kTitleFont = 13;
constexpr int kHeaderFont = 12;
constexpr int kControlFont = 12;
constexpr int kSmallFont = 10;
constexpr int kPopupWidth = 140;

struct RepeatChoice {
    RepeatAction action;
    LText title;
    LText description;
};

/// As the cases of RepeatAction are counted.
constexpr std::array kRepeatChoices{
    RepeatChoice{RepeatAction::KeepOpen, L::repeatKeepOpen, L::repeatKeepOpenText},
    RepeatChoice{RepeatAction::ToggleVisibility, L::repeatToggleVisibility,
                 L::repeatToggleVisibilityText},
    RepeatChoice{RepeatAction::CycleWindows, L::repeatCycleWindows, L::repeatCycleWindowsText},
};

struct KindChoice {
    ArgumentKind kind;
    LText title;
    QString (*hint)();
};

constexpr std::array kKindChoices{
    KindChoice{ArgumentKind::None, L::argumentNone, [] { return L::argumentNoneHint(); }},
    KindChoice{ArgumentKind::LaunchArgs, L::argumentLaunchArgs,
               [] { return L::argumentLaunchArgsHint(); }},
    KindChoice{ArgumentKind::UrlScheme, L::argumentUrlScheme,
               [] { return L::argumentUrlSchemeHint(); }},
    KindChoice{ArgumentKind::FilePath, L::argumentFilePath,
               [] { return L::argumentFilePathHint(); }},
};

/// The choice at this place, and the first one outside of them.
template <typename Choices>
const auto &choiceAt(const Choices &choices, int index) {
    const bool isThere = index >= 0 && index < std::ssize(choices);
    return choices[isThere ? static_cast<std::size_t>(index) : 0];
}

TextLabel *addHeader(QVBoxLayout &column, const QString &text, QWidget *parent) {
    auto *header =
        new TextLabel(text, systemFont(kHeaderFont, QFont::DemiBold), colors::label, parent);
    column.addWidget(header);
    return header;
}

TextLabel *makeSmallText(const QString &text, QWidget *parent) {
    return new TextLabel(text, systemFont(kSmallFont), colors::secondaryLabel, parent);
}

}  // namespace

ArgumentKind argumentKindAt(int index) {
    return choiceAt(kKindChoices, index).kind;
}

int indexOfArgumentKind(ArgumentKind kind) {
    const auto *const found = std::ranges::find(kKindChoices, kind, &KindChoice::kind);
    return found == kKindChoices.end() ? 0 : static_cast<int>(found - kKindChoices.begin());
}

ShortcutRule ruleWith(ShortcutRule rule, const RuleAdvancedInput &input) {
    rule.repeatAction = choiceAt(kRepeatChoices, input.repeatTag).action;
    rule.argumentKind = argumentKindAt(input.kindIndex);
    rule.launchArguments =
        rule.argumentKind == ArgumentKind::None ? QString() : trimmedSpacesAndTabs(input.argument);
    return rule;
}

RuleAdvancedPanel::RuleAdvancedPanel(const PreferencesServices &services, const ShortcutRule &rule,
                                     Completion completion, QWidget *parent)
    : Sheet(L::advancedPanelTitle(shownAppName(rule)), parent),
      openHelp_([&workspace = services.workspace, page = services.addresses.deepLaunchHelpPage,
                 showToast = services.showToast] {
          openAddress(page, workspace,
                      [&showToast](const QString &message) { showToast(message, {}, {}); });
      }),
      rule_(rule),
      completion_(std::move(completion)),
      radioButtons_(new QButtonGroup(this)) {
    setSizeOnScreen(kSize);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(kMargins);
    column->setSpacing(0);
    auto *title =
        new TextLabel(windowTitle(), systemFont(kTitleFont, QFont::Bold), colors::label, this);
    // A long name of an application must not make the sheet wider.
    title->setText(title->fontMetrics().elidedText(
        windowTitle(), Qt::ElideRight, kSize.width() - kMargins.left() - kMargins.right()));
    column->addWidget(title);
    column->addSpacing(kSectionGap);
    buildRadioGroup(*column);
    column->addSpacing(kSectionGap);
    buildArgsSection(*column);
    column->addStretch(1);
    buildButtons(*column);
    radioButtons_->checkedButton()->setFocus(Qt::TabFocusReason);
}

void RuleAdvancedPanel::showEvent(QShowEvent *event) {
    Sheet::showEvent(event);
    // A window that is shown forgets it, and the focus would be out of sight.
    setAttribute(Qt::WA_KeyboardFocusChange);
}

void RuleAdvancedPanel::buildRadioGroup(QVBoxLayout &column) {
    addHeader(column, L::repeatHeader(), this);
    auto *group = new ControlGroup(L::repeatHeader(), this);
    auto *lines = new QVBoxLayout(group);
    lines->setContentsMargins({});
    lines->setSpacing(0);
    column.addWidget(group);
    for (const RepeatChoice &choice : kRepeatChoices) {
        auto *button = new QRadioButton(choice.title(), group);
        button->setFont(systemFont(kControlFont));
        button->setAccessibleDescription(choice.description());
        button->setChecked(choice.action == rule_.repeatAction);
        radioButtons_->addButton(button, static_cast<int>(choice.action));
        lines->addWidget(button);
        TextLabel *description = makeSmallText(choice.description(), group);
        const int indent = style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth) +
                           style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing);
        description->setIndent(indent);
        lines->addWidget(description);
    }
}

void RuleAdvancedPanel::buildArgsSection(QVBoxLayout &column) {
    TextLabel *header = addHeader(column, L::argumentHeader(), this);
    column.addWidget(makeSmallText(L::argumentSubtitle(), this));
    column.addSpacing(kLineGap);

    kindPopup_ = new PopupButton(this);
    kindPopup_->setFont(systemFont(kControlFont));
    kindPopup_->setFixedWidth(kPopupWidth);
    kindPopup_->setAccessibleName(L::argumentKindName());
    // On some systems the name of a popup is what is chosen in it.
    header->setBuddy(kindPopup_);
    for (const KindChoice &choice : kKindChoices)
        kindPopup_->addItem(choice.title());
    kindPopup_->setCurrentIndex(indexOfArgumentKind(rule_.argumentKind));

    argsField_ = new QLineEdit(this);
    argsField_->setFont(systemFont(kControlFont));
    argsField_->setFixedHeight(kindPopup_->sizeHint().height());
    argsField_->setAccessibleName(L::argumentValueName());
    argsField_->setAccessibleDescription(L::argumentPasteHint());
    // A field cuts what is longer, and a rule file may have more than its default.
    argsField_->setMaxLength(std::numeric_limits<int>::max());
    argsField_->setText(rule_.launchArguments);
    argsField_->setCursorPosition(0);
    connect(kindPopup_, &QComboBox::currentIndexChanged, this,
            &RuleAdvancedPanel::applyKindSelection);
    applyKindSelection();

    auto *line = new QHBoxLayout;
    line->setSpacing(kControlGap);
    line->addWidget(kindPopup_);
    line->addWidget(argsField_, 1);
    column.addLayout(line);
    if (const QString hint = L::argumentPasteHint(); !hint.isEmpty()) {
        column.addSpacing(kLineGap);
        column.addWidget(makeSmallText(hint, this));
    }
}

void RuleAdvancedPanel::buildButtons(QVBoxLayout &column) {
    auto *help = new LinkButton(L::deepLaunchHelp(), LinkButton::Kind::Help, this);
    help->setAccessibleDescription(L::helpName());
    connect(help, &LinkButton::clicked, this, openHelp_);
    QPushButton *cancel = makeButton(L::cancel());
    QPushButton *saving = makeButton(L::save(), true);
    connect(cancel, &QPushButton::clicked, this, &RuleAdvancedPanel::reject);
    connect(saving, &QPushButton::clicked, this, &RuleAdvancedPanel::save);

    auto *row = new QHBoxLayout;
    row->setSpacing(kControlGap);
    row->addWidget(help, 0, Qt::AlignLeft | Qt::AlignTop);
    row->addStretch();
    row->addWidget(cancel);
    row->addWidget(saving);
    column.addLayout(row);
}

void RuleAdvancedPanel::applyKindSelection() {
    const KindChoice &choice = choiceAt(kKindChoices, kindPopup_->currentIndex());
    argsField_->setEnabled(choice.kind != ArgumentKind::None);
    argsField_->setPlaceholderText(choice.hint());
}

void RuleAdvancedPanel::save() {
    const ShortcutRule edited = ruleWith(rule_, {.repeatTag = radioButtons_->checkedId(),
                                                 .kindIndex = kindPopup_->currentIndex(),
                                                 .argument = argsField_->text()});
    const Completion completion = std::exchange(completion_, nullptr);
    accept();
    if (completion)
        completion(edited);
}

}  // namespace kestrelbay
