#include "ui/widgets/Switch.h"

#include <memory>

#include <QAccessible>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include "fixtures/ActiveWindow.h"
#include "fixtures/PaintCounter.h"
#include "platform/SystemSettings.h"
#include "ui/look/SystemColors.h"

namespace kestrelbay {

namespace {

QImage grab(Switch &button) {
    return button.grab().toImage();
}

TEST(Switch, ComesInTwoSizes) {
    EXPECT_EQ(Switch(Switch::Size::Small).sizeHint(), QSize(38, 20));
    EXPECT_EQ(Switch().sizeHint(), QSize(44, 26));
}

TEST(Switch, KeysAndClicksToggleIt) {
    Switch button;
    button.resize(button.sizeHint());
    const QSignalSpy toggles(&button, &Switch::toggled);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_TRUE(button.isChecked());
    bool isOn = true;
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        isOn = !isOn;
        QTest::keyClick(&button, key);
        EXPECT_EQ(button.isChecked(), isOn) << key;
    }
    EXPECT_EQ(toggles.count(), 4);
    EXPECT_EQ(button.focusPolicy(), Qt::StrongFocus);
}

TEST(Switch, AKeyHeldDownTogglesItOnce) {
    Switch button;
    QTest::keyPress(&button, Qt::Key_Return);
    QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
    QApplication::sendEvent(&button, &repeat);
    EXPECT_TRUE(button.isChecked());
    EXPECT_TRUE(repeat.isAccepted());
}

TEST(Switch, TheKnobIsAtTheTrailingSideWhenOn) {
    Switch button(Switch::Size::Small);
    button.resize(button.sizeHint());
    EXPECT_EQ(button.knobRect(), QRectF(4, 4, 12, 12));
    button.setChecked(true);
    EXPECT_EQ(button.knobRect(), QRectF(22, 4, 12, 12));
    button.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(button.knobRect(), QRectF(4, 4, 12, 12));
}

TEST(Switch, TheKnobSlidesWhereTheUserSeesIt) {
    Switch button;
    button.show();
    button.setChecked(true);
    const QRectF start = button.knobRect();
    EXPECT_LT(start.left(), button.rect().center().x());
    EXPECT_TRUE(QTest::qWaitFor([&] { return button.knobRect().left() > start.left() + 1; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return button.knobRect().right() > button.width() - 4.5; }));
}

TEST(Switch, StateIsTold) {
    Switch button;
    button.setAccessibleName(QStringLiteral("Launch at Login"));
    const QAccessibleInterface *const told = QAccessible::queryAccessibleInterface(&button);
    ASSERT_NE(told, nullptr);
    EXPECT_EQ(told->role(), QAccessible::CheckBox);
    EXPECT_EQ(told->text(QAccessible::Name), QStringLiteral("Launch at Login"));
    EXPECT_TRUE(told->state().checkable);
    EXPECT_TRUE(told->state().focusable);
    EXPECT_FALSE(told->state().checked);
    button.setChecked(true);
    EXPECT_TRUE(told->state().checked);
}

TEST(Switch, OthersCanToggleIt) {
    Switch button;
    QAccessibleActionInterface *const actions =
        QAccessible::queryAccessibleInterface(&button)->actionInterface();
    ASSERT_NE(actions, nullptr);
    EXPECT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    actions->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(button.isChecked());
    button.setEnabled(false);
    EXPECT_FALSE(actions->actionNames().contains(QAccessibleActionInterface::toggleAction()));
}

TEST(Switch, ItsColorsFollowTheAppearance) {
    Switch button;
    button.resize(button.sizeHint());
    button.setChecked(true);
    button.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&button));
    PaintCounter paints(button);
    paints.settle();
    const QColor light = grab(button).pixelColor(8, button.height() / 2);
    QApplication::setPalette(systemPalette(ColorScheme::Dark));
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count() > 0; }));
    const QColor dark = grab(button).pixelColor(8, button.height() / 2);
    EXPECT_EQ(dark, colors::controlAccent());
    EXPECT_NE(dark, light);
    QApplication::setPalette(systemPalette(ColorScheme::Light));
}

TEST(Switch, KeyboardFocusIsSeen) {
    QWidget window;
    auto *const button = new Switch(Switch::Size::Regular, &window);
    window.show();
    ASSERT_TRUE(activate(window));
    const QImage unfocused = grab(*button);
    window.setAttribute(Qt::WA_KeyboardFocusChange);
    button->setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(QTest::qWaitFor([&] { return button->hasFocus(); }));
    EXPECT_NE(grab(*button), unfocused);
}

}  // namespace

}  // namespace kestrelbay
