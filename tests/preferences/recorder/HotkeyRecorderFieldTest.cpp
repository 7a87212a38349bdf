#include "preferences/recorder/HotkeyRecorderField.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <chrono>

#include "preferences/recorder/HotkeyRecorderFixture.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

class HotkeyRecorderFieldTest : public HotkeyRecorderFixture {};

TEST_F(HotkeyRecorderFieldTest, ShowsThePromptOrTheHotkey) {
    EXPECT_EQ(text(), u"Click to record"_s);
    EXPECT_TRUE(clearButton()->isHidden());
    EXPECT_EQ(textColor(), QColor::fromRgbF(0.6F, 0.6F, 0.6F));
    field_->configure(kT, kLeftCommandFlags);
    EXPECT_EQ(text(), u"L⌘T"_s);
    EXPECT_FALSE(clearButton()->isHidden());
    EXPECT_EQ(clearButton()->text(), u"×"_s);
    EXPECT_EQ(textColor(), QColor::fromRgbF(0.1F, 0.1F, 0.1F));
    EXPECT_EQ(field_->currentKeyCode(), kT);
    EXPECT_EQ(field_->currentModifierFlags(), kLeftCommandFlags);
}

TEST_F(HotkeyRecorderFieldTest, ItsTextsAreChineseToo) {
    defaults_.setString(u"appLanguage"_s, u"zh"_s);
    field_->refreshDisplayColors();
    EXPECT_EQ(text(), u"点击录入"_s);
    startRecording();
    EXPECT_EQ(text(), u"按下快捷键..."_s);
}

TEST_F(HotkeyRecorderFieldTest, LaysOutLabelAndClearButton) {
    EXPECT_EQ(field_->findChild<QLabel *>()->geometry(), QRect(4, 4, 130, 18));
    EXPECT_EQ(clearButton()->geometry(), QRect(136, 4, 22, 18));
}

TEST_F(HotkeyRecorderFieldTest, OnlyTheClearButtonTakesClicksOfItsOwn) {
    field_->configure(kT, kLeftCommandFlags);
    EXPECT_EQ(window_->childAt(field_->pos() + QPoint(60, 13)), field_);
    EXPECT_EQ(window_->childAt(field_->pos() + clearButton()->geometry().center()), clearButton());
    EXPECT_EQ(window_->childAt(field_->pos() - QPoint(2, 2)), nullptr);
}

TEST_F(HotkeyRecorderFieldTest, BorderTellsOfRecording) {
    const QColor idle = border();
    startRecording();
    EXPECT_NE(border(), idle);
    tap_.press(key::kEscape);
    EXPECT_EQ(border(), idle);
}

TEST_F(HotkeyRecorderFieldTest, SaysWhileRecordingThatTheDesktopKeepsKeys) {
    startRecording();
    EXPECT_EQ(field_->toolTip(), QString());
    tap_.press(key::kEscape);

    tap_.setRecordsAllKeys(false);
    manager().reinstallEventTap();
    EXPECT_EQ(field_->toolTip(), QString());
    startRecording();
    const QString words = u"This desktop keeps some keys for itself: they cannot be recorded"_s;
    EXPECT_EQ(field_->toolTip(), words);
    EXPECT_TRUE(field_->accessibleName().endsWith(words));
    tap_.press(key::kEscape);
    EXPECT_EQ(field_->toolTip(), QString());
}

TEST_F(HotkeyRecorderFieldTest, ADoubleClickOnTheClearButtonOnlyClears) {
    field_->configure(kT, kLeftCommandFlags);
    QTest::mouseClick(clearButton(), Qt::LeftButton);
    // Where the button was is the field now.
    QMouseEvent second(QEvent::MouseButtonDblClick, clearButton()->geometry().center(),
                       field_->mapToGlobal(clearButton()->geometry().center()), Qt::LeftButton,
                       Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(field_, &second);
    mainQueue_.runAll();
    EXPECT_TRUE(second.isAccepted());
    EXPECT_EQ(told_, QStringList{u"cleared"_s});
    expectIdle();
}

TEST_F(HotkeyRecorderFieldTest, TheClearButtonClearsWhetherItRecordsOrNot) {
    field_->configure(kT, kLeftCommandFlags);
    QTest::mouseClick(clearButton(), Qt::LeftButton);
    EXPECT_EQ(text(), u"Click to record"_s);
    EXPECT_EQ(field_->currentKeyCode(), KeyCode{});
    EXPECT_TRUE(field_->currentModifierFlags().isEmpty());
    EXPECT_EQ(told_, QStringList{u"cleared"_s});
    field_->configure(kT, kLeftCommandFlags);
    startRecording();
    field_->clearHotkey();
    EXPECT_TRUE(field_->isRecording());
    tap_.press(key::kEscape);
    EXPECT_EQ(text(), u"Click to record"_s);
}

TEST_F(HotkeyRecorderFieldTest, DeleteAndBackspaceClearWithoutATap) {
    manager().teardownEventTap();
    field_->setFocus(Qt::TabFocusReason);
    for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Backspace}) {
        told_.clear();
        field_->configure(kT, kLeftCommandFlags);
        QTest::keyClick(field_, key);
        EXPECT_EQ(text(), u"Click to record"_s);
        EXPECT_EQ(field_->currentKeyCode(), KeyCode{});
        EXPECT_EQ(told_, QStringList{u"cleared"_s});
        EXPECT_TRUE(field_->hasFocus());
        QTest::keyClick(field_, key);
        EXPECT_EQ(told_.size(), 1);
    }
    EXPECT_EQ(toasts_, QStringList());
}

TEST_F(HotkeyRecorderFieldTest, AKeyAloneShakesItAndRecordingGoesOn) {
    const QPoint home = field_->pos();
    startRecording();
    tap_.press(key::kA);
    EXPECT_TRUE(field_->isRecording());
    EXPECT_TRUE(QTest::qWaitFor([&] { return field_->x() < home.x(); }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return field_->x() > home.x(); }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return field_->pos() == home; }));
}

TEST_F(HotkeyRecorderFieldTest, TheBorderIsRedForHalfASecond) {
    const QColor idle = border();
    field_->shakeAnimation();
    const QColor red = border();
    EXPECT_NE(red, idle);
    timers_.advance(std::chrono::milliseconds(499));
    EXPECT_EQ(border(), red);
    timers_.advance(std::chrono::milliseconds(1));
    EXPECT_EQ(border(), idle);
}

TEST_F(HotkeyRecorderFieldTest, StopsShakingAtOnce) {
    const QPoint home = field_->pos();
    const QColor idle = border();
    field_->shakeAnimation();
    ASSERT_TRUE(QTest::qWaitFor([&] { return field_->x() < home.x(); }));
    field_->stopShaking();
    EXPECT_EQ(field_->pos(), home);
    EXPECT_EQ(border(), idle);
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

TEST_F(HotkeyRecorderFieldTest, SaysTheHotkeyInWords) {
    EXPECT_EQ(field_->accessibleName(), u"Hotkey of Firefox, none"_s);
    field_->configure(kT, kLeftCommandFlags);
    EXPECT_EQ(field_->accessibleName(), u"Hotkey of Firefox, left Super, T"_s);
    startRecording();
    EXPECT_EQ(field_->accessibleName(), u"Hotkey of Firefox, recording, Press hotkey..."_s);
    tap_.press(key::kRightShift);
    EXPECT_EQ(field_->accessibleName(), u"Hotkey of Firefox, recording, right Shift"_s);
    EXPECT_EQ(clearButton()->accessibleName(), u"Clear hotkey of Firefox"_s);
}

TEST_F(HotkeyRecorderFieldTest, ShowsTheHotkeyInWordsAsAToolTip) {
    EXPECT_EQ(field_->toolTip(), QString());
    field_->configure(kT, kLeftCommandFlags);
    EXPECT_EQ(field_->toolTip(), u"left Super, T"_s);
    startRecording();
    EXPECT_EQ(field_->toolTip(), QString());
}

TEST_F(HotkeyRecorderFieldTest, FollowsTheLayoutOfTheKeyboard) {
    field_->configure(kT, kLeftCommandFlags);
    keyboardLayout_.print({{kT, u"Е"_s}});
    Q_EMIT notifications_.keyboardLayoutDidChange();
    EXPECT_EQ(field_->toolTip(), u"left Super, Е"_s);
    EXPECT_EQ(field_->accessibleName(), u"Hotkey of Firefox, left Super, Е"_s);
    EXPECT_EQ(field_->findChild<QLabel *>()->text(), u"L⌘T"_s) << "the given form";
}

TEST_F(HotkeyRecorderFieldTest, AssistiveToolsCanPressIt) {
    QAccessibleInterface *const told = QAccessible::queryAccessibleInterface(field_);
    ASSERT_NE(told, nullptr);
    EXPECT_EQ(told->role(), QAccessible::Button);
    ASSERT_NE(told->actionInterface(), nullptr);
    told->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([&] { return field_->isRecording(); }));
}

}  // namespace

}  // namespace kestrelbay
