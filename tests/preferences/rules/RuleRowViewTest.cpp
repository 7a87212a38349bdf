#include "preferences/rules/RuleRowView.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "preferences/rules/RowFixture.h"
#include "settings/L.h"
#include "ui/widgets/Switch.h"
#include "ui/widgets/SymbolView.h"
#include "ui/widgets/TextLabel.h"
#include "ui/windows/Sheet.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr KeyCode kK{40};
constexpr std::uint64_t kLeftCommand = 0x100008;

class ListOfRows final : public RuleRowViewDelegate {
public:
    void ruleRowViewDidDelete(RuleRowView * /*row*/, const ShortcutRule &rule) override {
        told += u"delete "_s + rule.appName;
    }
    void ruleRowViewDidOpenAdvanced(RuleRowView * /*row*/, const ShortcutRule &rule) override {
        told += u"advanced "_s + rule.appName;
    }

    QStringList told;
};

class RuleRowViewTest : public RowFixture {
protected:
    void SetUp() override {
        list_ = std::make_unique<ListOfRows>();
        row_ = new RuleRowView(services(), *icons_, *holders_, window_.get());
        row_->setGeometry(0, 0, 600, RuleRowView::kHeight);
        ASSERT_NO_FATAL_FAILURE(showWindow());
    }

    void show(const ShortcutRule &rule) { row_->configure(rule, list_.get()); }
    /// Adds the rule to the store and shows it.
    void addAndShow(const ShortcutRule &rule) {
        manager().addRule(rule);
        show(rule);
    }
    ShortcutRule firefox(std::uint16_t keyCode = 0, std::uint64_t flags = 0) {
        return rule(u"Firefox"_s, keyCode, flags);
    }
    const ShortcutRule &stored(std::size_t index = 0) { return manager().rules().at(index); }

    [[nodiscard]] QStringList texts() const {
        QStringList texts;
        for (const ElidedLabel *label : row_->findChildren<ElidedLabel *>())
            if (label->isVisible())
                texts += label->fullText();
        return texts;
    }
    [[nodiscard]] ArgsBadgeView *badge() const { return row_->findChild<ArgsBadgeView *>(); }
    [[nodiscard]] Switch *toggle() const { return row_->findChild<Switch *>(); }
    [[nodiscard]] SymbolButton *button(const QString &accessibleName) const {
        for (SymbolButton *button : row_->findChildren<SymbolButton *>()) {
            if (button->accessibleName() == accessibleName)
                return button;
        }
        return nullptr;
    }
    [[nodiscard]] QWidget *refusedSign() const {
        return row_->findChild<QWidget *>(u"refusedSign"_s);
    }
    [[nodiscard]] QString shownHotkey() const {
        return row_->hotkeyRecorder()->findChild<QLabel *>()->text();
    }
    void record(KeyCode modifierKey, KeyCode keyCode) {
        row_->hotkeyRecorder()->startRecordingByUser();
        ASSERT_TRUE(row_->hotkeyRecorder()->isRecording());
        tap_.press(modifierKey);
        tap_.press(keyCode);
        tap_.release(modifierKey);
        EXPECT_FALSE(row_->hotkeyRecorder()->isRecording());
    }
    [[nodiscard]] AlertSheet *sheet() const { return window_->findChild<AlertSheet *>(); }
    static void press(QWidget *sheet, const QString &title) {
        for (QPushButton *button : sheet->findChildren<QPushButton *>()) {
            if (button->text() == title)
                return QTest::mouseClick(button, Qt::LeftButton);
        }
        FAIL() << "no button " << title.toStdString();
    }

    std::unique_ptr<ListOfRows> list_;
    RuleRowView *row_ = nullptr;
};

TEST_F(RuleRowViewTest, ShowsTheRule) {
    ShortcutRule shown = firefox(40, kLeftCommand);
    shown.appPath = QDir::homePath() + u"/firefox.desktop"_s;
    shown.launchArguments = u" --a "_s;
    shown.argumentKind = ArgumentKind::LaunchArgs;
    shown.isEnabled = false;
    show(shown);
    EXPECT_EQ(texts(), (QStringList{u"Firefox"_s, u"~/firefox.desktop"_s}));
    EXPECT_EQ(badge()->text(), u"--a"_s);
    EXPECT_FALSE(badge()->isHidden());
    EXPECT_EQ(shownHotkey(), u"L⌘K"_s);
    EXPECT_FALSE(toggle()->isChecked());
    EXPECT_EQ(row_->rule(), shown);
}

TEST_F(RuleRowViewTest, NothingOfTheRuleBeforeIsLeft) {
    ShortcutRule before = firefox(40, kLeftCommand);
    before.launchArguments = u"--a"_s;
    before.argumentKind = ArgumentKind::LaunchArgs;
    before.isEnabled = false;
    tap_.setHeldByOthers({{kK, ModifierFlags(kLeftCommand)}});
    addAndShow(before);
    EXPECT_FALSE(refusedSign()->isHidden());
    row_->configure({}, nullptr);
    EXPECT_EQ(texts(), (QStringList{u"No app selected"_s, QString()}));
    EXPECT_TRUE(badge()->isHidden());
    EXPECT_EQ(shownHotkey(), u"Click to record"_s);
    EXPECT_TRUE(toggle()->isChecked());
    EXPECT_TRUE(refusedSign()->isHidden());
}

TEST_F(RuleRowViewTest, ConfiguringChangesNothingInTheStore) {
    manager().addRule(firefox());
    ShortcutRule off = stored();
    off.isEnabled = false;
    removeFile();
    show(off);
    show(stored());
    EXPECT_FALSE(fileExists());
}

TEST_F(RuleRowViewTest, TheBadgeHasItsNaturalSizeBehindTheName) {
    ShortcutRule shown = firefox();
    shown.launchArguments = u"--a"_s;
    shown.argumentKind = ArgumentKind::LaunchArgs;
    show(shown);
    const auto *name = row_->findChild<ElidedLabel *>();
    EXPECT_EQ(badge()->x(), name->x() + name->fullWidth() + 5);
    EXPECT_EQ(badge()->height(), 15);
    EXPECT_EQ(badge()->size(), badge()->sizeHint());
}

TEST_F(RuleRowViewTest, ThePointerFindsTheBadgeAndItsToolTip) {
    ShortcutRule shown = firefox();
    shown.launchArguments = u"--new-window --incognito"_s;
    shown.argumentKind = ArgumentKind::LaunchArgs;
    show(shown);
    const QWidget *const found = row_->childAt(badge()->geometry().center());
    EXPECT_EQ(found, badge());
    EXPECT_EQ(badge()->toolTip(), shown.launchArguments);
}

TEST_F(RuleRowViewTest, LongTextsAreCutAndToldInFull) {
    ShortcutRule shown = firefox();
    shown.appName = QString(200, u'x');
    shown.appPath = u"/opt/"_s + QString(200, u'x') + u"/end"_s;
    show(shown);
    const auto labels = row_->findChildren<ElidedLabel *>();
    EXPECT_TRUE(labels[0]->text().endsWith(u'…'));
    EXPECT_EQ(labels[0]->toolTip(), shown.appName);
    EXPECT_EQ(labels[0]->accessibleName(), shown.appName);
    EXPECT_TRUE(labels[1]->text().startsWith(u"/opt/"_s));
    EXPECT_TRUE(labels[1]->text().endsWith(u"/end"_s));
    EXPECT_LT(labels[0]->geometry().right(), row_->hotkeyRecorder()->x());
}

TEST_F(RuleRowViewTest, StoresARecordedHotkey) {
    addAndShow(firefox());
    record(key::kLeftCommand, kK);
    EXPECT_EQ(stored().hotkeyString(), u"L⌘K"_s);
    EXPECT_EQ(shownHotkey(), u"L⌘K"_s);
    EXPECT_EQ(toasts_, QStringList());
}

TEST_F(RuleRowViewTest, ItsOwnHotkeyIsNoConflict) {
    addAndShow(firefox(40, kLeftCommand));
    record(key::kLeftCommand, kK);
    EXPECT_EQ(toasts_, QStringList());
    EXPECT_EQ(stored().hotkeyString(), u"L⌘K"_s);
}

TEST_F(RuleRowViewTest, AHotkeyOfAnotherRuleIsRefused) {
    manager().addRule(rule(u"Notes"_s, 40, kLeftCommand));
    const ShortcutRule own = firefox(17, kLeftCommand);
    addAndShow(own);
    removeFile();
    record(key::kLeftCommand, kK);
    EXPECT_EQ(toasts_,
              QStringList{u"Hotkey conflict: already used by another rule, please re-enter"_s});
    EXPECT_FALSE(lastToastAction_.run);
    EXPECT_EQ(stored(1), own);
    EXPECT_FALSE(fileExists());
    EXPECT_EQ(shownHotkey(), u"L⌘T"_s);
    const int home = row_->hotkeyRecorder()->x();
    EXPECT_TRUE(QTest::qWaitFor([&] { return row_->hotkeyRecorder()->x() < home; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return row_->hotkeyRecorder()->x() == home; }));
}

TEST_F(RuleRowViewTest, DeleteStoresThatThereIsNoHotkey) {
    addAndShow(firefox(40, kLeftCommand));
    row_->hotkeyRecorder()->startRecordingByUser();
    tap_.press(key::kDelete);
    EXPECT_EQ(stored().hotkeyString(), QString());
    EXPECT_EQ(stored().keyCode, KeyCode{});
    EXPECT_EQ(shownHotkey(), u"Click to record"_s);
}

TEST_F(RuleRowViewTest, TheClearButtonStoresItToo) {
    addAndShow(firefox(40, kLeftCommand));
    row_->hotkeyRecorder()->clearHotkey();
    EXPECT_EQ(stored().hotkeyString(), QString());
}

TEST_F(RuleRowViewTest, TheSwitchIsStored) {
    addAndShow(firefox());
    QTest::mouseClick(toggle(), Qt::LeftButton);
    EXPECT_FALSE(stored().isEnabled);
    QTest::keyClick(toggle(), Qt::Key_Space);
    EXPECT_TRUE(stored().isEnabled);
}

TEST_F(RuleRowViewTest, OneChangeDoesNotUndoAnother) {
    addAndShow(firefox(17, kLeftCommand));
    record(key::kLeftCommand, kK);
    QTest::mouseClick(toggle(), Qt::LeftButton);
    EXPECT_EQ(stored().hotkeyString(), u"L⌘K"_s);
    row_->hotkeyRecorder()->clearHotkey();
    EXPECT_FALSE(stored().isEnabled);
    EXPECT_EQ(row_->rule()->hotkeyString(), u"L⌘T"_s);
}

TEST_F(RuleRowViewTest, WithoutItsListItDoesNothing) {
    addAndShow(firefox(17, kLeftCommand));
    removeFile();
    list_.reset();
    record(key::kLeftCommand, kK);
    row_->hotkeyRecorder()->clearHotkey();
    QTest::mouseClick(toggle(), Qt::LeftButton);
    QTest::mouseClick(button(u"Advanced Options: Firefox"_s), Qt::LeftButton);
    QTest::mouseClick(button(u"Delete Firefox"_s), Qt::LeftButton);
    press(sheet(), u"Delete"_s);
    EXPECT_FALSE(fileExists());
    EXPECT_EQ(stored().hotkeyString(), u"L⌘T"_s);
}

TEST_F(RuleRowViewTest, WithoutARuleItDoesNothing) {
    for (QAbstractButton *control : row_->findChildren<QAbstractButton *>())
        control->click();
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_EQ(list_->told, QStringList());
    EXPECT_FALSE(fileExists());
}

TEST_F(RuleRowViewTest, OpensTheAdvancedOptionsOfARuleInTheList) {
    addAndShow(firefox());
    QTest::mouseClick(button(u"Advanced Options: Firefox"_s), Qt::LeftButton);
    EXPECT_EQ(list_->told, QStringList{u"advanced Firefox"_s});
    manager().removeRule(0);
    QTest::mouseClick(button(u"Advanced Options: Firefox"_s), Qt::LeftButton);
    EXPECT_EQ(list_->told.size(), 1);
}

TEST_F(RuleRowViewTest, AsksBeforeItDeletes) {
    addAndShow(firefox());
    QTest::mouseClick(button(u"Delete Firefox"_s), Qt::LeftButton);
    ASSERT_NE(sheet(), nullptr);
    EXPECT_EQ(sheet()->windowTitle(), u"Delete Shortcut"_s);
    EXPECT_EQ(sheet()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(sheet()->accessibleDescription(),
              u"Are you sure you want to delete the shortcut for \"Firefox\"?"_s);
    EXPECT_EQ(list_->told, QStringList());
    press(sheet(), u"Delete"_s);
    EXPECT_EQ(list_->told, QStringList{u"delete Firefox"_s});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !sheet(); }));
}

TEST_F(RuleRowViewTest, CancelAndEscapeDeleteNothing) {
    addAndShow(firefox());
    QTest::mouseClick(button(u"Delete Firefox"_s), Qt::LeftButton);
    press(sheet(), u"Cancel"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !sheet(); }));
    QTest::mouseClick(button(u"Delete Firefox"_s), Qt::LeftButton);
    QTest::keyClick(sheet(), Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !sheet(); }));
    QTest::mouseClick(button(u"Delete Firefox"_s), Qt::LeftButton);
    QTest::keyClick(sheet(), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !sheet(); }));
    EXPECT_EQ(list_->told, QStringList());
}

TEST_F(RuleRowViewTest, AsksAboutARuleWithoutAName) {
    addAndShow(rule(QString()));
    QTest::mouseClick(button(u"Delete No app selected"_s), Qt::LeftButton);
    EXPECT_EQ(sheet()->accessibleDescription(),
              u"Are you sure you want to delete the shortcut for \"No app selected\"?"_s);
}

TEST_F(RuleRowViewTest, AnAnswerAfterItsEndIsNone) {
    addAndShow(firefox());
    QTest::mouseClick(button(u"Delete Firefox"_s), Qt::LeftButton);
    delete row_;
    press(sheet(), u"Delete"_s);
    EXPECT_EQ(list_->told, QStringList());
}

TEST_F(RuleRowViewTest, TheAnswerIsAboutTheRuleThatWasAskedAbout) {
    addAndShow(firefox());
    QTest::mouseClick(button(u"Delete Firefox"_s), Qt::LeftButton);
    show(rule(u"Notes"_s));
    press(sheet(), u"Delete"_s);
    EXPECT_EQ(list_->told, QStringList{u"delete Firefox"_s});
}

TEST_F(RuleRowViewTest, ConfiguringEndsARecording) {
    addAndShow(firefox());
    row_->hotkeyRecorder()->startRecordingByUser();
    ASSERT_TRUE(tap_.isRecording());
    show(rule(u"Notes"_s));
    EXPECT_FALSE(row_->hotkeyRecorder()->isRecording());
    EXPECT_FALSE(tap_.isRecording());
    mainQueue_.runAll();
    EXPECT_FALSE(tap_.isRecording());
}

TEST_F(RuleRowViewTest, ConfiguringEndsTheRedBorderAndTheShaking) {
    addAndShow(firefox());
    HotkeyRecorderField *const recorder = row_->hotkeyRecorder();
    const QPoint home = recorder->pos();
    const QImage idle = recorder->grab().toImage();
    recorder->shakeAnimation();
    ASSERT_TRUE(QTest::qWaitFor([&] { return recorder->x() < home.x(); }));
    show(firefox());
    EXPECT_EQ(recorder->pos(), home);
    EXPECT_EQ(recorder->grab().toImage(), idle);
}

TEST_F(RuleRowViewTest, ItsEndGivesTheKeyboardBack) {
    addAndShow(firefox());
    row_->hotkeyRecorder()->startRecordingByUser();
    delete row_;
    EXPECT_FALSE(tap_.isRecording());
    EXPECT_FALSE(manager().recordingCallback());
}

TEST_F(RuleRowViewTest, SelectionRefreshesTheRecorderUnlessItRecords) {
    addAndShow(firefox());
    defaults_.setString(u"appLanguage"_s, u"zh"_s);
    row_->setSelected(true);
    EXPECT_EQ(shownHotkey(), u"Click to record"_s);
    mainQueue_.runAll();
    EXPECT_EQ(shownHotkey(), u"点击录入"_s);
    row_->hotkeyRecorder()->startRecordingByUser();
    row_->setSelected(false);
    mainQueue_.runAll();
    EXPECT_EQ(shownHotkey(), u"按下快捷键..."_s);
    row_->setSelected(true);
    delete row_;
    mainQueue_.runAll();
}

TEST_F(RuleRowViewTest, AHotkeyHeldByAnotherProgramIsSigned) {
    tap_.setHeldByOthers({{kK, ModifierFlags(kLeftCommand)}});
    addAndShow(firefox());
    EXPECT_TRUE(refusedSign()->isHidden());
    record(key::kLeftCommand, kK);
    EXPECT_FALSE(refusedSign()->isHidden());
    EXPECT_EQ(refusedSign()->toolTip(), u"Another program is using this hotkey"_s);
    EXPECT_EQ(row_->hotkeyRecorder()->accessibleDescription(), refusedSign()->toolTip());
    tap_.setHeldByOthers({});
    Q_EMIT notifications_.refusedHotkeysDidChange();
    EXPECT_TRUE(refusedSign()->isHidden());
    EXPECT_EQ(row_->hotkeyRecorder()->accessibleDescription(), QString());
}

TEST_F(RuleRowViewTest, TheSignNamesTheHolderOnceItIsFound) {
    const RefusedHotkey refused{{kK, ModifierFlags(kLeftCommand)}, key::kLeftCommand};
    hotkeyHolders_.setHolder(refused, {.program = u"Mutter"_s, .remedy = u"set it free"_s});
    addAndShow(firefox(40, kLeftCommand));
    tap_.setHeldByOthers({refused.hotkey}, refused.modifierKey);
    Q_EMIT notifications_.refusedHotkeysDidChange();
    EXPECT_FALSE(refusedSign()->isHidden());
    EXPECT_EQ(refusedSign()->toolTip(),
              u"This hotkey never arrives: another program takes all keys pressed with "
              u"this modifier"_s);
    EXPECT_EQ(hotkeyHolders_.calls(), 0) << "not on the main thread";
    backgroundQueue_.runAll();
    mainQueue_.runAll();
    EXPECT_EQ(refusedSign()->toolTip(),
              u"This hotkey never arrives: probably Mutter takes all keys pressed with this "
              u"modifier\nTo free it: set it free"_s);
    EXPECT_EQ(refusedSign()->accessibleName(), refusedSign()->toolTip());
    EXPECT_EQ(row_->hotkeyRecorder()->accessibleDescription(), refusedSign()->toolTip());

    row_->configure(stored(), list_.get());
    EXPECT_EQ(hotkeyHolders_.calls(), 1) << "it is known";
    Q_EMIT notifications_.refusedHotkeysDidChange();
    backgroundQueue_.runAll();
    EXPECT_EQ(hotkeyHolders_.calls(), 2) << "other programs may have changed";
}

TEST_F(RuleRowViewTest, WithoutARefusalNobodyIsAskedForHolders) {
    addAndShow(firefox(40, kLeftCommand));
    backgroundQueue_.runAll();
    EXPECT_EQ(hotkeyHolders_.calls(), 0);
}

TEST_F(RuleRowViewTest, TabGoesThroughItsControlsInOrder) {
    addAndShow(firefox());
    QStringList names;
    window_->setFocus();
    for (int i = 0; i < 4; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        names += QApplication::focusWidget()->accessibleName();
    }
    EXPECT_EQ(names, (QStringList{u"Hotkey of Firefox, none"_s, u"Enable Firefox"_s,
                                  u"Advanced Options: Firefox"_s, u"Delete Firefox"_s}));
    EXPECT_FALSE(tap_.isRecording());
}

}  // namespace

}  // namespace kestrelbay
