#include <QLineEdit>
#include <QTest>

#include <chrono>

#include "fixtures/ActiveWindow.h"
#include "fixtures/DoubleClick.h"
#include "preferences/recorder/HotkeyRecorderFixture.h"
#include "settings/L.h"
#include "ui/look/SystemColors.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

/// What starts recording a hotkey in the field, and what ends it.
class HotkeyRecordingTest : public HotkeyRecorderFixture {};

TEST_F(HotkeyRecordingTest, RecordsWhatIsPressed) {
    startRecording();
    EXPECT_EQ(text(), u"Press hotkey..."_s);
    EXPECT_EQ(textColor(), colors::secondaryLabel());
    tap_.press(key::kLeftCommand);
    EXPECT_EQ(text(), u"L⌘..."_s);
    tap_.press(key::kRightShift);
    EXPECT_EQ(text(), u"R⇧L⌘..."_s);
    tap_.release(key::kRightShift);
    tap_.release(key::kLeftCommand);
    EXPECT_EQ(text(), u"Press hotkey..."_s);
    tap_.press(key::kLeftCommand);
    tap_.press(kT);
    EXPECT_EQ(text(), u"L⌘T"_s);
    EXPECT_EQ(told_, QStringList{u"recorded 17 100008"_s});
    EXPECT_FALSE(field_->hasFocus());
    expectIdle();
}

TEST_F(HotkeyRecordingTest, EscapeAndDeleteEndRecording) {
    field_->configure(kT, kLeftCommandFlags);
    startRecording();
    tap_.press(key::kEscape);
    EXPECT_EQ(text(), u"L⌘T"_s);
    EXPECT_EQ(told_, QStringList());
    expectIdle();
    startRecording();
    tap_.press(key::kDelete);
    EXPECT_EQ(text(), u"Click to record"_s);
    EXPECT_TRUE(clearButton()->isHidden());
    EXPECT_EQ(told_, QStringList{u"cleared"_s});
    expectIdle();
}

TEST_F(HotkeyRecordingTest, ASecondClickEndsRecording) {
    startRecording();
    click();
    EXPECT_FALSE(field_->hasFocus());
    mainQueue_.runAll();
    expectIdle();
}

TEST_F(HotkeyRecordingTest, ADoubleClickStartsIt) {
    click();
    doubleClick(field_, {10, 10});
    mainQueue_.runAll();
    EXPECT_TRUE(field_->isRecording());
    EXPECT_TRUE(field_->hasFocus());
}

TEST_F(HotkeyRecordingTest, AClickSoonAfterAKeyHasEndedItStartsItAgain) {
    click();
    mainQueue_.runAll();
    ASSERT_TRUE(field_->isRecording());
    tap_.press(key::kEscape);
    ASSERT_FALSE(field_->isRecording());
    doubleClick(field_, {10, 10});
    mainQueue_.runAll();
    EXPECT_TRUE(field_->isRecording());
}

TEST_F(HotkeyRecordingTest, TheFocusGoneEndsRecording) {
    startRecording();
    other_->setFocus();
    expectIdle();
    EXPECT_EQ(text(), u"Click to record"_s);
}

TEST_F(HotkeyRecordingTest, AnotherWindowEndsRecording) {
    startRecording();
    QWidget second;
    second.show();
    ASSERT_TRUE(activate(second));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !field_->isRecording(); }));
    expectIdle();
}

TEST_F(HotkeyRecordingTest, TheWindowClosedEndsRecording) {
    startRecording();
    window_->close();
    expectIdle();
}

TEST_F(HotkeyRecordingTest, ItsOwnEndGivesTheKeyboardBack) {
    startRecording();
    delete field_;
    expectKeyboardGivenBack();
    mainQueue_.runAll();
}

TEST_F(HotkeyRecordingTest, TheTapGoneEndsRecording) {
    startRecording();
    manager().teardownEventTap();
    EXPECT_EQ(text(), u"Click to record"_s);
    expectIdle();
}

TEST_F(HotkeyRecordingTest, DisabledItDoesNotRecord) {
    startRecording();
    field_->setEnabled(false);
    expectIdle();
    click();
    field_->startRecordingByUser();
    mainQueue_.runAll();
    expectIdle();
}

TEST_F(HotkeyRecordingTest, AReinstalledTapKeepsRecording) {
    startRecording();
    manager().reinstallEventTap();
    EXPECT_TRUE(field_->isRecording());
    EXPECT_TRUE(tap_.isRecording());
}

TEST_F(HotkeyRecordingTest, WithoutATapAToastSaysWhatIsMissing) {
    int wishes = 0;
    QObject::connect(&notifications_, &Notifications::openPreferencesToAccessibility, field_,
                     [&wishes] { ++wishes; });
    manager().teardownEventTap();
    click();
    mainQueue_.runAll();
    expectIdle();
    EXPECT_EQ(text(), u"Click to record"_s);
    EXPECT_EQ(toasts_, QStringList{L::recorderNoAccess()});
    EXPECT_EQ(lastToastAction_.title, L::recorderGrantAccess());
    lastToastAction_.run();
    EXPECT_EQ(wishes, 1);
}

TEST_F(HotkeyRecordingTest, DoesNotPretendToRecordWhileOthersHoldTheKeyboard) {
    tap_.setKeyboardHeldByOthers(true);
    click();
    mainQueue_.runAll();
    EXPECT_EQ(text(), u"Click to record"_s);
    expectIdle();
    tap_.setKeyboardHeldByOthers(false);
    timers_.advance(HotkeyRecorder::kKeyboardRetryInterval);
    EXPECT_TRUE(field_->isRecording());
    EXPECT_EQ(toasts_, QStringList());
}

TEST_F(HotkeyRecordingTest, SaysThatAnotherProgramHoldsTheKeyboard) {
    tap_.setKeyboardHeldByOthers(true);
    click();
    timers_.advance(std::chrono::seconds(1));
    EXPECT_EQ(toasts_, QStringList{u"Another program is using the keyboard, please try again"_s});
    EXPECT_FALSE(lastToastAction_.run);
    expectIdle();
}

TEST_F(HotkeyRecordingTest, GivesUpWaitingWhenTheFocusGoes) {
    tap_.setKeyboardHeldByOthers(true);
    click();
    other_->setFocus();
    tap_.setKeyboardHeldByOthers(false);
    timers_.advance(std::chrono::seconds(2));
    EXPECT_EQ(toasts_, QStringList());
    expectIdle();
}

TEST_F(HotkeyRecordingTest, TabOnlyFocusesIt) {
    field_->setFocus(Qt::TabFocusReason);
    mainQueue_.runAll();
    EXPECT_TRUE(field_->hasFocus());
    expectIdle();
}

TEST_F(HotkeyRecordingTest, SpaceAndReturnStartAndTheFocusStays) {
    field_->setFocus(Qt::TabFocusReason);
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        QTest::keyPress(field_, key);
        EXPECT_FALSE(field_->isRecording());
        QTest::keyRelease(field_, key);
        EXPECT_TRUE(field_->isRecording());
        tap_.press(key::kEscape);
        expectIdle();
        EXPECT_TRUE(field_->hasFocus());
    }
}

TEST_F(HotkeyRecordingTest, AReleaseOfReturnPressedElsewhereStartsNothing) {
    field_->setFocus(Qt::TabFocusReason);
    QTest::keyRelease(field_, Qt::Key_Return);
    expectIdle();
}

TEST_F(HotkeyRecordingTest, TheUsersStartWaitsForTheWindowToGetTheKeyboard) {
    QWidget sheet;
    sheet.show();
    ASSERT_TRUE(activate(sheet));
    EXPECT_FALSE(window_->isActiveWindow());
    field_->startRecordingByUser();
    mainQueue_.runAll();
    EXPECT_FALSE(field_->isRecording());
    sheet.close();
    ASSERT_TRUE(activate(*window_));
    EXPECT_TRUE(QTest::qWaitFor([&] { return field_->isRecording(); }));
}

TEST_F(HotkeyRecordingTest, TheUsersStartIsForgottenWhenTabComesFirst) {
    QWidget sheet;
    sheet.show();
    ASSERT_TRUE(activate(sheet));
    EXPECT_FALSE(window_->isActiveWindow());
    field_->startRecordingByUser();
    other_->setFocus();
    sheet.close();
    ASSERT_TRUE(activate(*window_));
    EXPECT_TRUE(QTest::qWaitFor([&] { return other_->hasFocus(); }));
    field_->setFocus(Qt::TabFocusReason);
    expectIdle();
}

}  // namespace

}  // namespace kestrelbay
