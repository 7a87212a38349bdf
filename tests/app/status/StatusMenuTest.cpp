#include "app/status/StatusMenu.h"

#include <QCoreApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>

#include <gtest/gtest.h>

#include "fakes/FakeUserDefaults.h"
#include "fixtures/QtPrinters.h"
#include "settings/Language.h"
#include "settings/SettingsKeys.h"

namespace kestrelbay {
namespace {

class StatusMenuTest : public testing::Test {
protected:
    StatusMenuTest() { Language::setDefaults(&defaults_); }
    ~StatusMenuTest() override { Language::setDefaults(nullptr); }

    StatusMenu::Actions actions() {
        const auto note = [this](const char *name) {
            return [this, name] { done_.append(QString::fromLatin1(name)); };
        };
        return {.toggleAllShortcuts = note("toggle"),
                .openPreferences = note("preferences"),
                .openOnboarding = note("guide"),
                .showAbout = note("about"),
                .quit = note("quit")};
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QCoreApplication::sendEvent(&menu_, &event);
    }
    void send(QEvent::Type type, const QPoint &place) {
        const Qt::MouseButton button = Qt::LeftButton;
        QMouseEvent event(type, place, menu_.mapToGlobal(place), button,
                          type == QEvent::MouseButtonPress ? button : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&menu_, &event);
    }
    void click(const QPoint &place) {
        send(QEvent::MouseButtonPress, place);
        send(QEvent::MouseButtonRelease, place);
    }
    QPoint placeOf(int entry) const {
        return menu_.actionGeometry(menu_.actions().at(entry)).center();
    }
    QStringList titles() const {
        QStringList list;
        for (const QAction *action : menu_.actions())
            list.append(action->isSeparator() ? QStringLiteral("-") : action->text());
        return list;
    }

    FakeUserDefaults defaults_;
    QStringList done_;
    StatusMenu menu_{actions()};
};

TEST_F(StatusMenuTest, HasTheEntriesInTheirOrder) {
    menu_.build(true);
    EXPECT_EQ(titles(),
              QStringList({QStringLiteral("Disable All Shortcuts"), QStringLiteral("-"),
                           QStringLiteral("Preferences..."), QStringLiteral("Welcome Guide..."),
                           QStringLiteral("About KestrelBay"), QStringLiteral("-"),
                           QStringLiteral("Quit")}));
}

TEST_F(StatusMenuTest, ComesOutInTheLanguageInForceWhenItIsBuilt) {
    menu_.build(false);
    write(defaults_, settings::kAppLanguage, QStringLiteral("zh"));
    EXPECT_EQ(titles().constFirst(), QStringLiteral("Enable All Shortcuts"));
    menu_.build(false);
    EXPECT_EQ(titles(), QStringList({QStringLiteral("启用全部快捷键"), QStringLiteral("-"),
                                     QStringLiteral("偏好设置..."), QStringLiteral("欢迎向导..."),
                                     QStringLiteral("关于 KestrelBay"), QStringLiteral("-"),
                                     QStringLiteral("退出")}));
    menu_.build(true);
    EXPECT_EQ(titles().constFirst(), QStringLiteral("禁用全部快捷键"));
}

TEST_F(StatusMenuTest, EntriesDoWhatTheySay) {
    menu_.build(true);
    for (QAction *action : menu_.actions())
        action->trigger();
    EXPECT_EQ(done_, QStringList({QStringLiteral("toggle"), QStringLiteral("preferences"),
                                  QStringLiteral("guide"), QStringLiteral("about"),
                                  QStringLiteral("quit")}));
}

TEST_F(StatusMenuTest, FindsTheEntryForAllShortcutsByItsTag) {
    EXPECT_EQ(menu_.itemWithTag(StatusMenu::kEnabledTag), nullptr);
    menu_.build(true);
    ASSERT_NE(menu_.itemWithTag(100), nullptr);
    EXPECT_EQ(menu_.itemWithTag(100), menu_.actions().constFirst());
    EXPECT_EQ(menu_.itemWithTag(0), nullptr) << "entries without a tag have none, not the tag 0";
}

TEST_F(StatusMenuTest, ShowsItsShortcuts) {
    menu_.build(true);
    QStringList shortcuts;
    for (const QAction *action : menu_.actions()) {
        if (!action->shortcut().isEmpty()) {
            shortcuts.append(action->shortcut().toString(QKeySequence::PortableText));
            EXPECT_TRUE(action->isShortcutVisibleInContextMenu());
        }
    }
    EXPECT_EQ(shortcuts, QStringList({QStringLiteral("Ctrl+,"), QStringLiteral("Ctrl+Q")}));
}

TEST_F(StatusMenuTest, ShortcutsWorkWhileItIsOpen) {
    menu_.build(true);
    menu_.popup({});
    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(done_, QStringList(QStringLiteral("quit")));
    EXPECT_FALSE(menu_.isVisible());
    menu_.popup({});
    press(Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_EQ(done_.constLast(), QStringLiteral("preferences"));
    menu_.popup({});
    press(Qt::Key_Q);
    EXPECT_EQ(done_.size(), 2) << "without its modifier it is another key";
}

TEST_F(StatusMenuTest, AClickChoosesAnEntryWithoutAnyMovementBefore) {
    menu_.build(true);
    QCursor::setPos(300, 200);
    for (int time = 1; time <= 2; ++time) {
        menu_.popup({300, 200});
        send(QEvent::MouseButtonPress, placeOf(6));
        EXPECT_TRUE(menu_.isVisible());
        send(QEvent::MouseButtonRelease, placeOf(6));
        EXPECT_EQ(done_.count(QStringLiteral("quit")), time);
        EXPECT_FALSE(menu_.isVisible());
    }
}

TEST_F(StatusMenuTest, AClickWhereTheMenuOpenedOnlyClosesIt) {
    menu_.build(true);
    menu_.popup({300, 200});
    menu_.close();
    QCursor::setPos(QPoint(300, 200) + placeOf(0));
    menu_.popup({300, 200});
    click(placeOf(0));
    EXPECT_EQ(done_, QStringList());
    EXPECT_FALSE(menu_.isVisible());
}

TEST_F(StatusMenuTest, AClickBetweenTheEntriesChoosesNone) {
    menu_.build(true);
    QCursor::setPos(300, 200);
    menu_.popup({300, 200});
    click(placeOf(1));
    EXPECT_EQ(done_, QStringList());
}

TEST_F(StatusMenuTest, AReleaseOfAnEarlierPressChoosesNone) {
    menu_.build(true);
    QCursor::setPos(300, 200);
    menu_.popup({300, 200});
    send(QEvent::MouseButtonPress, placeOf(2));
    menu_.close();
    menu_.popup({300, 200});
    send(QEvent::MouseButtonRelease, placeOf(2));
    EXPECT_EQ(done_, QStringList());
}

TEST_F(StatusMenuTest, AnEntryMayBuildTheMenuAnew) {
    StatusMenu::Actions rebuilding = actions();
    StatusMenu *other = nullptr;
    rebuilding.openPreferences = [&] {
        other->build(false);
        done_.append(QStringLiteral("rebuilt"));
    };
    StatusMenu menu(rebuilding);
    other = &menu;
    menu.build(true);
    menu.actions().at(2)->trigger();
    EXPECT_EQ(done_, QStringList(QStringLiteral("rebuilt")));
    EXPECT_EQ(menu.actions().constFirst()->text(), QStringLiteral("Enable All Shortcuts"));
}

}  // namespace
}  // namespace kestrelbay
