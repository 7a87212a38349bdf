#include "preferences/rules/RulesViewController.h"

#include <QApplication>
#include <QDialog>
#include <QMimeData>
#include <QPointer>
#include <QScrollBar>
#include <QTest>

#include <algorithm>
#include <array>
#include <memory>

#include "fixtures/ActiveWindow.h"
#include "fixtures/DoubleClick.h"
#include "model/RuleJson.h"
#include "preferences/recorder/HotkeyRecorderField.h"
#include "preferences/rules/RuleRowView.h"
#include "preferences/rules/RulesModel.h"
#include "preferences/rules/ShownRulesFixture.h"
#include "settings/L.h"
#include "ui/list/RowListView.h"
#include "ui/widgets/Switch.h"
#include "ui/widgets/SymbolView.h"
#include "ui/widgets/TextLabel.h"
#include "ui/windows/Sheet.h"

namespace kestrelbay {
namespace {

using namespace Qt::StringLiterals;

class RulesViewTest : public ShownRulesFixture {
protected:
    RulesModel &model() { return *list().model(); }
    [[nodiscard]] bool acceptDrop(const QString &text, int gap) {
        QMimeData data;
        data.setText(text);
        return model().dropMimeData(&data, Qt::MoveAction, gap, 0, {});
    }
    [[nodiscard]] QString rowName(int row) {
        return model().index(row).data(Qt::AccessibleTextRole).toString();
    }
    [[nodiscard]] const ShortcutRule &stored(int index) {
        return manager().rules().at(static_cast<std::size_t>(index));
    }

    void startRecording(int index) {
        row(index)->hotkeyRecorder()->startRecordingByUser();
        mainQueue_.runAll();
        ASSERT_TRUE(tap_.isRecording());
        ASSERT_TRUE(manager().recordingCallback());
    }
    void expectKeyboardGivenBack() {
        mainQueue_.runAll();
        EXPECT_FALSE(tap_.isRecording());
        EXPECT_FALSE(manager().recordingCallback());
    }
};

TEST_F(RulesViewTest, showsTheHintAsLongAsThereIsNoRule) {
    EXPECT_TRUE(list().emptyLabel()->isVisible());
    EXPECT_EQ(list().emptyLabel()->text(), u"Click the \uff0b button to add your first shortcut"_s);
    EXPECT_EQ(list().countLabel()->text(), u"0 configured"_s);
    list().addRule();
    pick_(u"Safari"_s, u"/Applications/Safari.app"_s);
    EXPECT_FALSE(list().emptyLabel()->isVisible());
    EXPECT_EQ(list().countLabel()->text(), u"1 configured"_s);
}

TEST_F(RulesViewTest, withoutRulesTheKeyboardGoesToTheAddButton) {
    EXPECT_EQ(view().focusPolicy(), Qt::NoFocus);
    list().addRule();
    pick_(u"Safari"_s, u"/Applications/Safari.app"_s);
    EXPECT_EQ(view().focusPolicy(), Qt::StrongFocus);
    view().setFocus();
    list().ruleRowViewDidDelete(nullptr, stored(0));
    EXPECT_TRUE(list().addButton()->hasFocus());
    QTest::keyClick(list().addButton(), Qt::Key_Backtab);
    EXPECT_FALSE(view().hasFocus());
}

TEST_F(RulesViewTest, tabGoesFromTheListIntoTheFirstRuleThatIsAdded) {
    list().addRule();
    pick_(u"Safari"_s, u"/Applications/Safari.app"_s);
    view().setFocus();
    QTest::keyClick(&view(), Qt::Key_Tab);
    EXPECT_TRUE(row(0)->hotkeyRecorder()->hasFocus());
}

TEST_F(RulesViewTest, afterTheLastRuleIsDeletedFromItsRowTheAddButtonHasTheFocus) {
    addRules(1);
    list();
    const QPointer<SymbolButton> remove = row(0)->findChildren<SymbolButton *>().last();
    EXPECT_EQ(remove->accessibleName(), u"Delete 0"_s);
    remove->setFocus();
    remove->click();
    auto *const sheet = list().findChild<AlertSheet *>();
    ASSERT_NE(sheet, nullptr);
    sheet->accept();
    EXPECT_TRUE(QTest::qWaitFor([&] { return list().addButton()->hasFocus(); }));
}

TEST_F(RulesViewTest, keepsTheFocusInTheRowWhoseOptionsWereEdited) {
    addRules(100);
    list();
    const auto buttons = row(1)->findChildren<SymbolButton *>();
    SymbolButton *const options =
        *std::ranges::find(buttons, u"Advanced Options: 1"_s, &SymbolButton::accessibleName);
    options->setFocus(Qt::TabFocusReason);
    options->click();
    QDialog sheet(&list());
    sheet.open();
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &sheet; }));
    view().verticalScrollBar()->setValue(3000);
    edit_(stored(1));
    sheet.accept();
    ASSERT_TRUE(activate(list()));
    EXPECT_TRUE(QTest::qWaitFor([&] { return options->hasFocus(); }));
    EXPECT_EQ(options->accessibleName(), u"Advanced Options: 1"_s);
}

TEST_F(RulesViewTest, speaksChinese) {
    choose(Language::zh);
    addRules(1);
    EXPECT_EQ(list().emptyLabel()->text(), u"点击左下角 ＋ 按钮，添加第一个快捷键配置"_s);
    EXPECT_EQ(list().countLabel()->text(), u"已配置 1 个"_s);
}

TEST_F(RulesViewTest, countsWithoutLimit) {
    addRules(1000);
    EXPECT_EQ(list().countLabel()->text(), u"1000 configured"_s);
    EXPECT_EQ(model().rowCount(), 1000);
}

TEST_F(RulesViewTest, liesWhereTheWindowHasRoomForIt) {
    addRules(1);
    list().resize(704, 598);
    EXPECT_EQ(view().geometry(), QRect(16, 8, 672, 546));
    EXPECT_EQ(list().addButton()->geometry(), QRect(20, 564, 24, 24));
    EXPECT_EQ(list().countLabel()->geometry().right() + 1, 684);
    EXPECT_EQ(list().countLabel()->geometry().center().y(),
              list().addButton()->geometry().center().y());
    EXPECT_EQ(row(0)->height(), 52);
    EXPECT_EQ(view().pitch() - row(0)->height(), 4);
}

TEST_F(RulesViewTest, appendsARuleThatWaitsForItsHotkey) {
    addRules(30);
    view().selectRow(2);
    list().addRule();
    pick_(u"Safari"_s, u"/Applications/Safari.app"_s);

    ASSERT_EQ(manager().rules().size(), 31U);
    const ShortcutRule &added = stored(30);
    EXPECT_EQ(added, (ShortcutRule{.id = added.id,
                                   .appName = u"Safari"_s,
                                   .appPath = u"/Applications/Safari.app"_s}));
    EXPECT_FALSE(added.id.isNull());
    EXPECT_NE(added.id, stored(29).id);
    EXPECT_EQ(view().selectedRow(), 30);
    EXPECT_EQ(view().offset(), view().verticalScrollBar()->maximum());
    ASSERT_NE(row(30), nullptr);
    mainQueue_.runAll();
    EXPECT_TRUE(row(30)->hotkeyRecorder()->isRecording());
}

TEST_F(RulesViewTest, aRuleAddedByKeyboardKeepsTheFocusAtTheEndOfItsRecording) {
    addRules(1);
    list().addButton()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(list().addButton(), Qt::Key_Return);
    pick_(u"Safari"_s, u"/Applications/Safari.app"_s);
    mainQueue_.runAll();
    ASSERT_TRUE(row(1)->hotkeyRecorder()->isRecording());
    tap_.press(key::kLeftCommand);
    tap_.press(KeyCode{17});
    tap_.release(key::kLeftCommand);
    expectKeyboardGivenBack();
    EXPECT_EQ(stored(1).keyCode, KeyCode{17});
    EXPECT_TRUE(row(1)->hotkeyRecorder()->hasFocus());

    // Another one, that has the same hotkey.
    list().addButton()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(list().addButton(), Qt::Key_Return);
    pick_(u"Mail"_s, u"/Applications/Mail.app"_s);
    mainQueue_.runAll();
    ASSERT_TRUE(row(2)->hotkeyRecorder()->isRecording());
    tap_.press(key::kLeftCommand);
    tap_.press(KeyCode{17});
    tap_.release(key::kLeftCommand);
    expectKeyboardGivenBack();
    EXPECT_EQ(toasts_.size(), 1);
    EXPECT_TRUE(row(2)->hotkeyRecorder()->hasFocus());
}

TEST_F(RulesViewTest, aRuleAddedWithTheMouseGivesTheFocusAway) {
    addRules(1);
    QTest::mouseClick(list().addButton(), Qt::LeftButton);
    pick_(u"Safari"_s, u"/Applications/Safari.app"_s);
    mainQueue_.runAll();
    ASSERT_TRUE(row(1)->hotkeyRecorder()->isRecording());
    tap_.press(key::kEscape);
    expectKeyboardGivenBack();
    EXPECT_FALSE(row(1)->hotkeyRecorder()->hasFocus());
}

TEST_F(RulesViewTest, savesWhatIsAdded) {
    list().addRule();
    pick_(u"Safari"_s, u"/Applications/Safari.app"_s);
    const ShortcutManager again(folder_.path(), tap_, log_, {});
    EXPECT_EQ(again.rules(), manager().rules());
}

TEST_F(RulesViewTest, addsNothingUntilAnApplicationIsChosen) {
    QTest::mouseClick(list().addButton(), Qt::LeftButton);
    EXPECT_TRUE(pick_);
    EXPECT_TRUE(manager().rules().empty());
}

TEST_F(RulesViewTest, opensTheOptionsOfTheSelectedRule) {
    addRules(3);
    list().editRule();
    EXPECT_TRUE(editedRules_.isEmpty());
    view().selectRow(1);
    doubleClick(view().viewport(), QPoint(200, 300));
    EXPECT_EQ(editedRules_, QStringList{u"1"_s});
}

TEST_F(RulesViewTest, storesAnEditedRule) {
    addRules(3);
    view().selectRow(1);
    list().editRule();
    ShortcutRule edited = stored(1);
    edited.repeatAction = RepeatAction::CycleWindows;
    edit_(edited);
    EXPECT_EQ(stored(1), edited);
    EXPECT_EQ(row(1)->rule(), edited);
    EXPECT_EQ(view().selectedRow(), 1);
}

TEST_F(RulesViewTest, findsTheRuleOfARowByItsIdentifier) {
    addRules(3);
    const ShortcutRule last = stored(2);
    (void)list();
    manager().moveRule(2, 0);
    list().ruleRowViewDidOpenAdvanced(row(2), last);
    EXPECT_EQ(editedRules_, QStringList{u"2"_s});
    list().ruleRowViewDidDelete(row(2), last);
    EXPECT_EQ(order(), u"01"_s);
    EXPECT_EQ(list().countLabel()->text(), u"2 configured"_s);
}

TEST_F(RulesViewTest, ignoresARuleThatIsGone) {
    addRules(2);
    const ShortcutRule stranger{.appName = u"x"_s};
    list().ruleRowViewDidOpenAdvanced(row(0), stranger);
    list().ruleRowViewDidDelete(row(0), stranger);
    EXPECT_TRUE(editedRules_.isEmpty());
    EXPECT_EQ(order(), u"01"_s);
}

TEST_F(RulesViewTest, showsTheHintAgainWhenTheOnlyRuleIsDeleted) {
    addRules(1);
    EXPECT_FALSE(list().emptyLabel()->isVisible());
    list().ruleRowViewDidDelete(row(0), stored(0));
    EXPECT_TRUE(list().emptyLabel()->isVisible());
    EXPECT_EQ(list().countLabel()->text(), u"0 configured"_s);
    EXPECT_EQ(row(0), nullptr);
}

TEST_F(RulesViewTest, keepsTheSelectionOnItsRuleWhenAnotherIsDeleted) {
    addRules(5);
    view().selectRow(3);
    list().ruleRowViewDidDelete(row(1), stored(1));
    EXPECT_EQ(view().selectedRow(), 2);
    list().ruleRowViewDidDelete(row(2), stored(2));
    EXPECT_EQ(view().selectedRow(), 2);
    list().ruleRowViewDidDelete(row(2), stored(2));
    EXPECT_EQ(view().selectedRow(), 1);
}

TEST_F(RulesViewTest, movesWhatIsDropped) {
    struct Case {
        const char16_t *text;
        int gap;
        const char16_t *order;
        int selected;
    };
    for (const auto &[text, gap, expected, selected] : std::array{
             Case{u"1", 4, u"02314", 3},
             Case{u"3", 0, u"30124", 0},
             Case{u"2", 3, u"01234", 2},
             Case{u"4", 5, u"01234", 4},
             Case{u"+0", 5, u"12340", 4},
         }) {
        while (!manager().rules().empty())
            manager().removeRule(0);
        addRules(5);
        list_.reset();
        EXPECT_TRUE(acceptDrop(QString::fromUtf16(text), gap));
        EXPECT_EQ(order(), QString::fromUtf16(expected));
        EXPECT_EQ(view().selectedRow(), selected);
        EXPECT_EQ(row(selected)->rule(), stored(selected));
    }
}

TEST_F(RulesViewTest, refusesADropThatIsNoRow) {
    addRules(5);
    for (const QString &text : {QString(), u"x"_s, u"1.5"_s, u" 1"_s})
        EXPECT_FALSE(acceptDrop(text, 4));
    EXPECT_EQ(order(), u"01234"_s);
}

TEST_F(RulesViewTest, ignoresADropOfARowThatDoesNotExist) {
    addRules(5);
    view().selectRow(2);
    for (const QString &text : {u"7"_s, u"-1"_s, u"9223372036854775807"_s})
        EXPECT_TRUE(acceptDrop(text, 4));
    EXPECT_EQ(order(), u"01234"_s);
    EXPECT_EQ(view().selectedRow(), 2);
}

TEST_F(RulesViewTest, movesTheSelectedRuleByKey) {
    addRules(3);
    view().setFocus();
    view().selectRow(0);
    QTest::keyClick(&view(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(order(), u"102"_s);
    EXPECT_EQ(view().selectedRow(), 1);
}

TEST_F(RulesViewTest, keepsTheScrollPositionThroughEveryChange) {
    addRules(100);
    view().verticalScrollBar()->setValue(1000);
    view().selectRow(20);
    EXPECT_TRUE(acceptDrop(u"20"_s, 24));
    EXPECT_EQ(view().offset(), 1000);
    list().ruleRowViewDidDelete(row(21), stored(21));
    EXPECT_EQ(view().offset(), 1000);
    list().editRule();
    edit_(stored(20));
    EXPECT_EQ(view().offset(), 1000);
}

TEST_F(RulesViewTest, endsTheRecordingOfARowThatIsScrolledAway) {
    addRules(100);
    startRecording(1);
    // As long as the user sees a bit of the row it goes on.
    view().verticalScrollBar()->setValue(2 * view().pitch() - 3);
    EXPECT_TRUE(row(1)->hotkeyRecorder()->isRecording());
    view().verticalScrollBar()->setValue(3000);
    expectKeyboardGivenBack();
}

TEST_F(RulesViewTest, endsTheRecordingOfARowThatASmallerWindowHides) {
    addRules(100);
    startRecording(4);
    list().resize(600, 200);
    expectKeyboardGivenBack();
}

TEST_F(RulesViewTest, recordsOnlyWhereItIsSeen) {
    addRules(100);
    row(1)->hotkeyRecorder()->setFocus(Qt::TabFocusReason);
    view().verticalScrollBar()->setValue(3000);
    QTest::keyClick(row(1)->hotkeyRecorder(), Qt::Key_Space);
    EXPECT_TRUE(row(1)->hotkeyRecorder()->isRecording());
    EXPECT_LE(view().offset(), view().pitch() + 2);
}

TEST_F(RulesViewTest, endsTheRecordingOfARuleThatIsDeleted) {
    addRules(3);
    for (const int index : {2, 0}) {
        startRecording(index);
        list().ruleRowViewDidDelete(row(index), stored(index));
        expectKeyboardGivenBack();
    }
}

TEST_F(RulesViewTest, endsARecordingWhoseTapIsLost) {
    addRules(3);
    startRecording(1);
    manager().teardownEventTap();
    EXPECT_FALSE(row(1)->hotkeyRecorder()->isRecording());
    expectKeyboardGivenBack();
}

TEST_F(RulesViewTest, endsARecordingWhenItReloads) {
    addRules(100);
    row(1)->hotkeyRecorder()->startRecordingByUser();
    mainQueue_.runAll();
    model().reload();
    EXPECT_FALSE(row(1)->hotkeyRecorder()->isRecording());
    EXPECT_FALSE(tap_.isRecording());
}

TEST_F(RulesViewTest, ignoresSheetsThatOutliveIt) {
    addRules(2);
    view().selectRow(0);
    list().addRule();
    list().editRule();
    ShortcutRule edited = stored(0);
    edited.appName = u"x"_s;
    list_.reset();
    pick_(u"Safari"_s, u"/Applications/Safari.app"_s);
    edit_(edited);
    EXPECT_EQ(order(), u"01"_s);
}

TEST_F(RulesViewTest, tellsAScreenReaderApplicationAndHotkey) {
    manager().addRule({.appName = u"Safari"_s,
                       .keyCode = KeyCode{0x11},
                       .modifierFlags = ModifierFlags(0x100000)});
    manager().addRule({});
    EXPECT_EQ(rowName(0), u"Safari, Super, T"_s);
    EXPECT_EQ(rowName(1), u"No app selected, none"_s);
    EXPECT_TRUE(rowName(2).isEmpty());
    EXPECT_FALSE(view().accessibleName().isEmpty());
    EXPECT_FALSE(list().addButton()->accessibleName().isEmpty());
}

TEST_F(RulesViewTest, showsTheRulesOfAnEditedFileAndKeepsTheSelectedOne) {
    addRules(3);
    view().selectRow(1);
    ShortcutManager::Rules rules = manager().rules();
    std::swap(rules[1], rules[2]);
    rules.push_back({.appName = u"new"_s});
    writeFile(encodeRules(rules));
    EXPECT_EQ(manager().takeInRuleFile(), ShortcutManager::RuleFileNews::TakenIn);
    Q_EMIT notifications_.rulesWereTakenIn();
    EXPECT_EQ(model().rowCount(), 4);
    EXPECT_EQ(row(1)->findChild<Switch *>()->accessibleName(), L::enableRule(u"2"_s));
    EXPECT_EQ(view().selectedRow(), 2);
    EXPECT_EQ(list().countLabel()->text(), u"4 configured"_s);

    writeFile("[]");
    EXPECT_EQ(manager().takeInRuleFile(), ShortcutManager::RuleFileNews::TakenIn);
    Q_EMIT notifications_.rulesWereTakenIn();
    EXPECT_TRUE(list().emptyLabel()->isVisible());
}

}  // namespace
}  // namespace kestrelbay
