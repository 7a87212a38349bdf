#include "preferences/rules/RulesMenu.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>

#include <memory>

#include "fixtures/ActiveWindow.h"
#include "preferences/recorder/HotkeyRecorderField.h"
#include "preferences/rules/RuleRowView.h"
#include "preferences/rules/RulesModel.h"
#include "preferences/rules/ShownRulesFixture.h"
#include "ui/list/RowListView.h"
#include "ui/widgets/SymbolView.h"
#include "ui/windows/Sheet.h"

namespace kestrelbay {
namespace {

using namespace Qt::StringLiterals;

class RulesMenuTest : public ShownRulesFixture {
protected:
    [[nodiscard]] const ShortcutRule &stored(int index) {
        return manager().rules().at(static_cast<std::size_t>(index));
    }
    void store(int index, const std::function<void(ShortcutRule &)> &change) {
        ShortcutRule rule = stored(index);
        change(rule);
        manager().updateRule(rule);
    }

    static void rightClick(QWidget &widget) {
        const QPoint middle = widget.rect().center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, middle, widget.mapToGlobal(middle));
        QApplication::sendEvent(&widget, &event);
    }
    static void pressMenuKey(QWidget &widget) {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, widget.mapToGlobal(QPoint()));
        QApplication::sendEvent(&widget, &event);
    }
    static QMenu *menu() { return qobject_cast<QMenu *>(QApplication::activePopupWidget()); }
    /// Its entries, with "-" for a line between them.
    static QStringList entries() {
        QStringList texts;
        for (const QAction *action : menu() ? menu()->actions() : QList<QAction *>()) {
            const QString keys = action->shortcut().toString();
            texts += action->isSeparator() ? u"-"_s
                     : keys.isEmpty()      ? action->text()
                                           : action->text() + u" | "_s + keys;
        }
        return texts;
    }
    static void choose(const QString &text) {
        for (QAction *action : menu()->actions()) {
            if (action->text() == text) {
                menu()->setActiveAction(action);
                QTest::keyClick(menu(), Qt::Key_Return);
                return;
            }
        }
        FAIL() << qPrintable(text);
    }
    void confirm() {
        auto *const sheet = list().findChild<AlertSheet *>();
        ASSERT_TRUE(sheet);
        sheet->accept();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

TEST_F(RulesMenuTest, HasAnEntryForEachThingToDoWithTheRow) {
    addRules(3);
    rightClick(*row(1)->findChild<TextLabel *>());
    EXPECT_EQ(view().selectedRow(), 1);
    EXPECT_EQ(entries(), (QStringList{u"Record Hotkey | F2"_s, u"Advanced Options | Return"_s,
                                      u"Show in Folder | Ctrl+R"_s, u"Duplicate | Ctrl+D"_s,
                                      u"Delete | Del"_s, u"-"_s, u"Import..."_s, u"Export..."_s}));
    choose(u"Advanced Options"_s);
    EXPECT_EQ(editedRules_, QStringList{u"1"_s});
}

TEST_F(RulesMenuTest, OffersEitherSideWhereARuleNamesOneThatCannotBeTold) {
    addRules(2);
    store(1, [](ShortcutRule &rule) {
        rule.keyCode = KeyCode{17};
        rule.modifierFlags = ModifierFlags(0x100008);
    });
    tap_.setAbilities({.tellsSides = false});
    manager().reinstallEventTap();
    rightClick(*row(0));
    EXPECT_FALSE(entries().contains(u"Use Either Side"_s));
    menu()->close();
    rightClick(*row(1));
    EXPECT_EQ(entries().first(), u"Use Either Side"_s);
    choose(u"Use Either Side"_s);
    EXPECT_EQ(stored(1).hotkeyString(), u"⌘T"_s);
    rightClick(*row(1));
    EXPECT_FALSE(entries().contains(u"Use Either Side"_s));
}

TEST_F(RulesMenuTest, OpensByTheMenuKeyForTheSelectedRow) {
    addRules(3);
    view().setFocus();
    view().selectRow(2);
    pressMenuKey(view());
    choose(u"Show in Folder"_s);
    EXPECT_EQ(workspace_.requests().lines().back(), u"showFolder /Applications"_s);
    // From a control of a row.
    row(1)->hotkeyRecorder()->setFocus();
    pressMenuKey(*row(1)->hotkeyRecorder());
    choose(u"Advanced Options"_s);
    EXPECT_EQ(editedRules_, QStringList{u"1"_s});
    QTest::keyClick(&view(), Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(entries().size(), 8);
}

TEST_F(RulesMenuTest, OffersOnlyWhatTheListCanDoWithoutARow) {
    pressMenuKey(*list().addButton());
    EXPECT_EQ(entries(), (QStringList{u"Import..."_s, u"Export..."_s}));
    choose(u"Export..."_s);
    EXPECT_EQ(exports_, 1);
    rightClick(*view().viewport());
    choose(u"Import..."_s);
    manager().addRule(rule(u"A"_s));
    ASSERT_TRUE(import_);
    import_();
    EXPECT_EQ(list().model()->rowCount(), 1);
}

TEST_F(RulesMenuTest, RecordsInTheRow) {
    addRules(2);
    rightClick(*row(1));
    choose(u"Record Hotkey"_s);
    mainQueue_.runAll();
    EXPECT_TRUE(row(1)->hotkeyRecorder()->isRecording());
    // Which would keep the keys from the menu.
    rightClick(*row(0));
    EXPECT_FALSE(row(1)->hotkeyRecorder()->isRecording());
}

TEST_F(RulesMenuTest, DuplicatesARuleBelowItWithoutItsHotkey) {
    addRules(3);
    store(1, [](ShortcutRule &rule) {
        rule.keyCode = KeyCode{17};
        rule.modifierFlags = ModifierFlags(0x100008);
        rule.isEnabled = false;
        rule.repeatAction = RepeatAction::CycleWindows;
        rule.launchArguments = u"--new"_s;
        rule.argumentKind = ArgumentKind::LaunchArgs;
    });
    view().setFocus();
    view().selectRow(1);
    QTest::keyClick(&view(), Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(order(), u"0112"_s);
    ShortcutRule expected = stored(1);
    EXPECT_NE(stored(2).id, expected.id);
    expected.id = stored(2).id;
    expected.keyCode = {};
    expected.modifierFlags = {};
    EXPECT_EQ(stored(2), expected);
    EXPECT_EQ(RuleFile(filePath()).load().rules, manager().rules());
    EXPECT_EQ(view().selectedRow(), 2);
    mainQueue_.runAll();
    EXPECT_TRUE(row(2)->hotkeyRecorder()->isRecording());
    EXPECT_EQ(list().model()->rowCount(), 4);
}

TEST_F(RulesMenuTest, DeletesAfterAskingAndUndoesIt) {
    addRules(4);
    view().setFocus();
    view().selectRow(1);
    const ShortcutManager::Rules before = manager().rules();
    QTest::keyClick(&view(), Qt::Key_Delete);
    EXPECT_EQ(manager().rules(), before);
    confirm();
    EXPECT_EQ(order(), u"023"_s);
    EXPECT_EQ(toasts_.back(), u"The shortcut for \"1\" was deleted"_s);
    EXPECT_EQ(lastToastAction_.title, u"Undo"_s);
    list().ruleRowViewDidDelete(row(2), stored(2));
    EXPECT_EQ(order(), u"02"_s);

    QTest::keyClick(&list(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(order(), u"023"_s);
    EXPECT_EQ(view().selectedRow(), 2);
    EXPECT_EQ(toasts_.back(), u"The shortcut for \"3\" is back"_s);
    rightClick(*row(0));
    choose(u"Undo Delete"_s);
    EXPECT_EQ(manager().rules(), before);
    EXPECT_EQ(RuleFile(filePath()).load().rules, before);
    QTest::keyClick(&list(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(manager().rules(), before);
}

TEST_F(RulesMenuTest, TheDeleteKeyOfTheRecorderTakesOnlyTheHotkey) {
    addRules(1);
    store(0, [](ShortcutRule &rule) { rule.modifierFlags = ModifierFlags(0x100008); });
    (void)list();
    row(0)->hotkeyRecorder()->setFocus();
    QTest::keyClick(row(0)->hotkeyRecorder(), Qt::Key_Delete);
    EXPECT_EQ(list().findChild<AlertSheet *>(), nullptr);
    EXPECT_TRUE(stored(0).modifierFlags.isEmpty());
}

TEST_F(RulesMenuTest, AToastUndoesItsOwnDeletionOnce) {
    addRules(3);
    list().ruleRowViewDidDelete(row(0), stored(0));
    const auto undo = lastToastAction_.run;
    list().ruleRowViewDidDelete(row(0), stored(0));
    undo();
    EXPECT_EQ(order(), u"02"_s);
    undo();
    EXPECT_EQ(order(), u"02"_s);
    EXPECT_TRUE(deletion_.canUndo());
}

TEST_F(RulesMenuTest, WhatComesBackLeavesAHotkeyToItsNewRule) {
    const auto hotkey = [](ShortcutRule &rule) {
        rule.keyCode = KeyCode{17};
        rule.modifierFlags = ModifierFlags(0x100008);
    };
    addRules(2);
    store(0, hotkey);
    list().ruleRowViewDidDelete(row(0), stored(0));
    store(0, hotkey);
    deletion_.undo();
    EXPECT_EQ(order(), u"01"_s);
    EXPECT_EQ(stored(0).hotkeyString(), QString());
    EXPECT_EQ(stored(1).hotkeyString(), u"L⌘T"_s);
    EXPECT_EQ(toasts_.back(),
              u"The shortcut for \"0\" is back, but another rule has its hotkey now"_s);
}

TEST_F(RulesMenuTest, ARowSaysThatItsApplicationIsNotInstalled) {
    catalog_.add(u"/Applications/1"_s, u"One"_s);
    addRules(2);
    (void)list();
    const auto path = [&](int index) {
        return row(index)->findChild<ElidedLabel *>(u"path"_s)->fullText();
    };
    EXPECT_EQ(path(0), u"/Applications/0"_s);
    mainQueue_.runAll();
    backgroundQueue_.runAll();
    mainQueue_.runAll();
    EXPECT_EQ(path(0), u"Not installed here: /Applications/0"_s);
    EXPECT_EQ(path(1), u"/Applications/1"_s);
    // It is installed while the list is hidden.
    catalog_.add(u"/Applications/0"_s, u"Zero"_s);
    list().hide();
    list().show();
    mainQueue_.runAll();
    backgroundQueue_.runAll();
    mainQueue_.runAll();
    EXPECT_EQ(path(0), u"/Applications/0"_s);
}

}  // namespace
}  // namespace kestrelbay
