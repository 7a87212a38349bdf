#include <optional>

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "fixtures/ServicesFixture.h"
#include "preferences/options/RuleAdvancedPanel.h"
#include "settings/L.h"
#include "ui/widgets/AccessibleFactory.h"
#include "ui/widgets/LinkButton.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {
namespace {

TEST(RuleAdvancedResultTest, RepeatActionOfARadioButton) {
    for (const auto &[tag, action] :
         {std::pair{0, RepeatAction::KeepOpen}, std::pair{1, RepeatAction::ToggleVisibility},
          std::pair{2, RepeatAction::CycleWindows}, std::pair{-1, RepeatAction::KeepOpen},
          std::pair{3, RepeatAction::KeepOpen}})
        EXPECT_EQ(
            ruleWith({.repeatAction = RepeatAction::CycleWindows}, {.repeatTag = tag}).repeatAction,
            action)
            << tag;
}

TEST(RuleAdvancedResultTest, KindOfAPlaceInThePopup) {
    EXPECT_EQ(argumentKindAt(0), ArgumentKind::None);
    EXPECT_EQ(argumentKindAt(1), ArgumentKind::LaunchArgs);
    EXPECT_EQ(argumentKindAt(2), ArgumentKind::UrlScheme);
    EXPECT_EQ(argumentKindAt(3), ArgumentKind::FilePath);
    EXPECT_EQ(argumentKindAt(-1), ArgumentKind::None);
    EXPECT_EQ(argumentKindAt(4), ArgumentKind::None);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(indexOfArgumentKind(argumentKindAt(i)), i);
    EXPECT_EQ(indexOfArgumentKind(static_cast<ArgumentKind>(9)), 0);
}

TEST(RuleAdvancedResultTest, ArgumentsAreTrimmedAndNotJudged) {
    const auto argument = [](int kind, const char *text) {
        return ruleWith({}, {.kindIndex = kind, .argument = QString::fromUtf8(text)})
            .launchArguments;
    };
    EXPECT_EQ(argument(1, " \t --a b \t"), QStringLiteral("--a b"));
    EXPECT_EQ(argument(1, "   "), QString());
    EXPECT_EQ(argument(2, "\nx\n"), QStringLiteral("\nx\n"));
    EXPECT_EQ(argument(3, "no path"), QStringLiteral("no path"));
    EXPECT_EQ(argument(0, "dropped"), QString());
    EXPECT_EQ(argument(-1, "dropped"), QString());
}

TEST(RuleAdvancedResultTest, AllElseStays) {
    const ShortcutRule rule{.appName = QStringLiteral("Thing"),
                            .appPath = QStringLiteral("/thing"),
                            .keyCode = KeyCode{12},
                            .modifierFlags = ModifierFlags(1),
                            .isEnabled = false,
                            .repeatAction = RepeatAction::CycleWindows,
                            .launchArguments = QStringLiteral("x"),
                            .argumentKind = ArgumentKind::FilePath};
    EXPECT_EQ(ruleWith(rule, {.repeatTag = 2, .kindIndex = 3, .argument = QStringLiteral("x")}),
              rule);
}

class RuleAdvancedPanelTest : public ServicesFixture {
protected:
    ~RuleAdvancedPanelTest() override { delete panel_.data(); }

    void open(const ShortcutRule &rule) {
        saved_.reset();
        panel_ = new RuleAdvancedPanel(
            services(), rule,
            [this](const ShortcutRule &edited) {
                EXPECT_FALSE(saved_);
                EXPECT_FALSE(panel_ && panel_->isVisible());
                saved_ = edited;
            },
            &window_);
        window_.show();
        panel_->open();
        ASSERT_TRUE(QTest::qWaitForWindowActive(panel_.data()));
    }
    static ShortcutRule ruleOf(ArgumentKind kind, const QString &argument) {
        return {.appName = QStringLiteral("Thing"),
                .repeatAction = RepeatAction::ToggleVisibility,
                .launchArguments = argument,
                .argumentKind = kind};
    }

    [[nodiscard]] QList<QRadioButton *> radios() const {
        return panel_->findChildren<QRadioButton *>();
    }
    [[nodiscard]] QList<bool> radioStates() const {
        QList<bool> states;
        for (const QRadioButton *each : radios())
            states.append(each->isChecked());
        return states;
    }
    [[nodiscard]] QComboBox &popup() const { return *panel_->findChild<QComboBox *>(); }
    [[nodiscard]] QLineEdit &field() const { return *panel_->findChild<QLineEdit *>(); }
    void press(Qt::Key key) const { QTest::keyClick(panel_.data(), key); }

    QWidget window_;
    QPointer<RuleAdvancedPanel> panel_;
    std::optional<ShortcutRule> saved_;
};

TEST_F(RuleAdvancedPanelTest, ShowsTheRuleAndForgetsTheArgumentOfNoKind) {
    const ShortcutRule rule = ruleOf(ArgumentKind::UrlScheme, QStringLiteral("x"));
    open(rule);
    EXPECT_EQ(panel_->size(), QSize(475, 280));
    EXPECT_EQ(popup().currentText(), QStringLiteral("URL Scheme"));
    EXPECT_EQ(field().text(), QStringLiteral("x"));
    EXPECT_TRUE(field().isEnabled());
    EXPECT_EQ(radioStates(), QList<bool>({false, true, false}));

    popup().setCurrentIndex(0);
    EXPECT_FALSE(field().isEnabled());
    EXPECT_EQ(field().text(), QStringLiteral("x"));
    press(Qt::Key_Return);
    ASSERT_TRUE(saved_);
    ShortcutRule expected = rule;
    expected.argumentKind = ArgumentKind::None;
    expected.launchArguments.clear();
    EXPECT_EQ(*saved_, expected);
    EXPECT_TRUE(QTest::qWaitFor([this] { return panel_.isNull(); }));
}

TEST_F(RuleAdvancedPanelTest, ReturnInTheFieldSavesTrimmed) {
    open(ruleOf(ArgumentKind::LaunchArgs, QStringLiteral("old")));
    field().setFocus();
    field().selectAll();
    QTest::keyClicks(&field(), QStringLiteral("   "));
    QTest::keyClick(&field(), Qt::Key_Return);
    ASSERT_TRUE(saved_);
    EXPECT_EQ(saved_->argumentKind, ArgumentKind::LaunchArgs);
    EXPECT_EQ(saved_->launchArguments, QString());
}

TEST_F(RuleAdvancedPanelTest, EscapeSavesNothing) {
    open(ruleOf(ArgumentKind::None, {}));
    radios()[2]->click();
    press(Qt::Key_Escape);
    EXPECT_FALSE(saved_);
    EXPECT_TRUE(QTest::qWaitFor([this] { return panel_.isNull(); }));
}

TEST_F(RuleAdvancedPanelTest, ReturnOnCancelSavesNothing) {
    open(ruleOf(ArgumentKind::FilePath, {}));
    field().setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    const auto *cancel = qobject_cast<QPushButton *>(QApplication::focusWidget());
    ASSERT_NE(cancel, nullptr);
    EXPECT_EQ(cancel->text(), QStringLiteral("Cancel"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([this] { return panel_.isNull(); }));
    EXPECT_FALSE(saved_);
}

TEST_F(RuleAdvancedPanelTest, OpensWithTheFocusInSight) {
    open(ruleOf(ArgumentKind::None, {}));
    EXPECT_EQ(QApplication::focusWidget(), radios()[1]);
    const QImage focused = radios()[1]->grab().toImage();
    field().setEnabled(true);
    field().setFocus();
    EXPECT_NE(radios()[1]->grab().toImage(), focused);
}

TEST_F(RuleAdvancedPanelTest, RadioButtonsAreAGroupWithAName) {
    open(ruleOf(ArgumentKind::None, {}));
    QAccessibleInterface *group =
        QAccessible::queryAccessibleInterface(panel_->findChild<ControlGroup *>());
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->role(), QAccessible::Grouping);
    EXPECT_EQ(group->text(QAccessible::Name),
              QStringLiteral("When shortcut is pressed repeatedly"));
    for (QRadioButton *each : radios())
        EXPECT_EQ(QAccessible::queryAccessibleInterface(each)->parent(), group);
}

TEST_F(RuleAdvancedPanelTest, TheTitleNamesTheApplicationOrSaysThatThereIsNone) {
    open(ruleOf(ArgumentKind::None, {}));
    EXPECT_EQ(panel_->windowTitle(), L::advancedPanelTitle(QStringLiteral("Thing")));
    delete panel_.data();
    open({});
    EXPECT_EQ(panel_->windowTitle(), L::advancedPanelTitle(L::noAppSelected()));
}

TEST_F(RuleAdvancedPanelTest, OneRadioButtonIsOn) {
    open(ruleOf(ArgumentKind::None, {}));
    for (int i = 0; i < 3; ++i) {
        radios()[i]->click();
        QList<bool> expected(3, false);
        expected[i] = true;
        EXPECT_EQ(radioStates(), expected);
        EXPECT_FALSE(radios()[i]->accessibleDescription().isEmpty());
    }
    press(Qt::Key_Return);
    ASSERT_TRUE(saved_);
    EXPECT_EQ(saved_->repeatAction, RepeatAction::CycleWindows);
}

TEST_F(RuleAdvancedPanelTest, EachKindHasItsPlaceholder) {
    open(ruleOf(ArgumentKind::None, {}));
    QStringList items;
    QStringList placeholders;
    for (int i = 0; i < popup().count(); ++i) {
        popup().setCurrentIndex(i);
        items.append(popup().currentText());
        placeholders.append(field().placeholderText());
        EXPECT_EQ(field().isEnabled(), i != 0);
    }
    EXPECT_EQ(items,
              QStringList({QStringLiteral("Default (none)"), QStringLiteral("Launch arguments"),
                           QStringLiteral("URL Scheme"), QStringLiteral("File path")}));
    EXPECT_EQ(placeholders[0], QStringLiteral("Select a type to enable"));
    EXPECT_EQ(placeholders[1],
              QStringLiteral("--remote-debugging-port=9222 --user-data-dir=/tmp/foo"));
    popup().setCurrentIndex(-1);
    EXPECT_FALSE(field().isEnabled());
}

TEST_F(RuleAdvancedPanelTest, KeepsLongArgumentsWhole) {
    const QString text(100'000, u'x');
    open(ruleOf(ArgumentKind::LaunchArgs, text));
    press(Qt::Key_Return);
    ASSERT_TRUE(saved_);
    EXPECT_EQ(saved_->launchArguments, text);
}

TEST_F(RuleAdvancedPanelTest, TheTabKeyGoesFromTopToBottom) {
    open(ruleOf(ArgumentKind::FilePath, {}));
    radios()[1]->setFocus();
    QStringList order;
    for (int i = 0; i < 5; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        order.append(QLatin1String(QApplication::focusWidget()->metaObject()->className()));
    }
    EXPECT_EQ(order,
              QStringList({QStringLiteral("kestrelbay::PopupButton"), QStringLiteral("QLineEdit"),
                           QStringLiteral("kestrelbay::LinkButton"), QStringLiteral("QPushButton"),
                           QStringLiteral("QPushButton")}));
}

TEST_F(RuleAdvancedPanelTest, HelpThatThisBuildLacksSaysSo) {
    open(ruleOf(ArgumentKind::None, {}));
    panel_->findChild<LinkButton *>()->click();
    EXPECT_EQ(toasts_, QStringList{L::noAddress()});
    EXPECT_TRUE(workspace_.requests().lines().isEmpty());
}

TEST_F(RuleAdvancedPanelTest, NothingIsSaidInEmptyLines) {
    open(ruleOf(ArgumentKind::None, {}));
    for (const TextLabel *label : panel_->findChildren<TextLabel *>())
        EXPECT_FALSE(label->text().isEmpty());
}

TEST_F(RuleAdvancedPanelTest, HelpOpensItsPage) {
    addresses_.deepLaunchHelpPage = QStringLiteral("https://example.org/help");
    open(ruleOf(ArgumentKind::None, {}));
    auto *help = panel_->findChild<LinkButton *>();
    ASSERT_NE(help, nullptr);
    EXPECT_EQ(help->cursor().shape(), Qt::PointingHandCursor);
    help->setFocus();
    const auto request = QStringLiteral("openUrl https://example.org/help");
    QTest::keyClick(help, Qt::Key_Space);
    EXPECT_EQ(workspace_.requests().lines(), QStringList(request));
    QTest::keyClick(help, Qt::Key_Return);
    EXPECT_EQ(workspace_.requests().lines(), QStringList({request, request}));
    EXPECT_TRUE(panel_->isVisible());
}

TEST_F(RuleAdvancedPanelTest, NothingIsCut) {
    for (const Language language : {Language::en, Language::zh}) {
        choose(language);
        ShortcutRule rule = ruleOf(ArgumentKind::None, {});
        rule.appName = QString(300, u'W');
        open(rule);
        EXPECT_EQ(panel_->size(), QSize(475, 280));
        for (const QWidget *each : panel_->findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
            if (!each->isVisible())
                continue;
            const std::string name = each->metaObject()->className();
            EXPECT_TRUE(panel_->rect().contains(each->geometry())) << name;
            if (qobject_cast<const QLineEdit *>(each))
                continue;
            EXPECT_GE(each->width(), each->sizeHint().width()) << name;
            EXPECT_GE(each->height(), each->sizeHint().height()) << name;
        }
        delete panel_.data();
    }
}

}  // namespace
}  // namespace kestrelbay
