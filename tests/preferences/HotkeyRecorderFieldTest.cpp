#include "preferences/HotkeyRecorderField.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "app/SystemColors.h"
#include "preferences/RowFixture.h"
#include "settings/L.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr KeyCode kT{17};
constexpr ModifierFlags kLeftCommandFlags{0x100008};

class HotkeyRecorderFieldTest : public RowFixture, private HotkeyRecorderDelegate {
protected:
    void SetUp() override {
        field_ = new HotkeyRecorderField(services(), window_.get());
        field_->setGeometry(20, 20, 160, 26);
        field_->setDelegate(this);
        field_->setSubject(u"Firefox"_s);
        other_ = new QLineEdit(window_.get());
        other_->move(300, 100);
        ASSERT_NO_FATAL_FAILURE(showWindow());
    }

    [[nodiscard]] QString text() const { return field_->findChild<QLabel *>()->text(); }
    [[nodiscard]] QPushButton *clearButton() const { return field_->findChild<QPushButton *>(); }
    [[nodiscard]] QColor textColor() const {
        const auto *label = field_->findChild<QLabel *>();
        return label->palette().color(label->foregroundRole());
    }
    [[nodiscard]] QColor border() const {
        return field_->grab().toImage().pixelColor(field_->width() / 2, 0);
    }
    void click() { QTest::mousePress(field_, Qt::LeftButton, {}, {10, 10}); }
    void startRecording() {
        click();
        ASSERT_TRUE(field_->isRecording());
    }
    void expectIdle() {
        EXPECT_FALSE(field_->isRecording());
        expectKeyboardGivenBack();
    }
    void expectKeyboardGivenBack() {
        EXPECT_FALSE(tap_.isRecording());
        EXPECT_FALSE(manager().recordingCallback());
    }

    HotkeyRecorderField *field_ = nullptr;
    QLineEdit *other_ = nullptr;
    QStringList told_;

private:
    void hotkeyRecorderDidRecord(HotkeyRecorderField * /*field*/, KeyCode keyCode,
                                 ModifierFlags flags) override {
        told_ += u"recorded %1 %2"_s.arg(toNumber(keyCode)).arg(flags.bits(), 0, 16);
    }
    void hotkeyRecorderDidClear(HotkeyRecorderField * /*field*/) override { told_ += u"cleared"_s; }
};

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

TEST_F(HotkeyRecorderFieldTest, RecordsWhatIsPressed) {
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

TEST_F(HotkeyRecorderFieldTest, BorderTellsOfRecording) {
    const QColor idle = border();
    startRecording();
    EXPECT_NE(border(), idle);
    tap_.press(key::kEscape);
    EXPECT_EQ(border(), idle);
}

TEST_F(HotkeyRecorderFieldTest, EscapeAndDeleteEndRecording) {
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

TEST_F(HotkeyRecorderFieldTest, ASecondClickEndsRecording) {
    startRecording();
    click();
    EXPECT_FALSE(field_->hasFocus());
    mainQueue_.runAll();
    expectIdle();
}

TEST_F(HotkeyRecorderFieldTest, ADoubleClickStartsIt) {
    click();
    QTest::mouseDClick(field_, Qt::LeftButton, {}, {10, 10});
    mainQueue_.runAll();
    EXPECT_TRUE(field_->isRecording());
    EXPECT_TRUE(field_->hasFocus());
}

TEST_F(HotkeyRecorderFieldTest, AClickSoonAfterAKeyHasEndedItStartsItAgain) {
    click();
    mainQueue_.runAll();
    ASSERT_TRUE(field_->isRecording());
    tap_.press(key::kEscape);
    ASSERT_FALSE(field_->isRecording());
    QTest::mouseDClick(field_, Qt::LeftButton, {}, {10, 10});
    mainQueue_.runAll();
    EXPECT_TRUE(field_->isRecording());
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

TEST_F(HotkeyRecorderFieldTest, TheFocusGoneEndsRecording) {
    startRecording();
    other_->setFocus();
    expectIdle();
    EXPECT_EQ(text(), u"Click to record"_s);
}

TEST_F(HotkeyRecorderFieldTest, AnotherWindowEndsRecording) {
    startRecording();
    QWidget second;
    second.show();
    ASSERT_TRUE(activate(second));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !field_->isRecording(); }));
    expectIdle();
}

TEST_F(HotkeyRecorderFieldTest, TheWindowClosedEndsRecording) {
    startRecording();
    window_->close();
    expectIdle();
}

TEST_F(HotkeyRecorderFieldTest, ItsOwnEndGivesTheKeyboardBack) {
    startRecording();
    delete field_;
    expectKeyboardGivenBack();
    mainQueue_.runAll();
}

TEST_F(HotkeyRecorderFieldTest, TheTapGoneEndsRecording) {
    startRecording();
    manager().teardownEventTap();
    EXPECT_EQ(text(), u"Click to record"_s);
    expectIdle();
}

TEST_F(HotkeyRecorderFieldTest, DisabledItDoesNotRecord) {
    startRecording();
    field_->setEnabled(false);
    expectIdle();
    click();
    field_->startRecordingByUser();
    mainQueue_.runAll();
    expectIdle();
}

TEST_F(HotkeyRecorderFieldTest, AReinstalledTapKeepsRecording) {
    startRecording();
    manager().reinstallEventTap();
    EXPECT_TRUE(field_->isRecording());
    EXPECT_TRUE(tap_.isRecording());
}

TEST_F(HotkeyRecorderFieldTest, WithoutATapAToastSaysWhatIsMissing) {
    int wishes = 0;
    center_.observe(notifications::kOpenPreferencesToAccessibility, field_,
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

TEST_F(HotkeyRecorderFieldTest, DoesNotPretendToRecordWhileOthersHoldTheKeyboard) {
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

TEST_F(HotkeyRecorderFieldTest, SaysThatAnotherProgramHoldsTheKeyboard) {
    tap_.setKeyboardHeldByOthers(true);
    click();
    timers_.advance(std::chrono::seconds(1));
    EXPECT_EQ(toasts_, QStringList{u"Another program is using the keyboard, please try again"_s});
    EXPECT_FALSE(lastToastAction_.run);
    expectIdle();
}

TEST_F(HotkeyRecorderFieldTest, GivesUpWaitingWhenTheFocusGoes) {
    tap_.setKeyboardHeldByOthers(true);
    click();
    other_->setFocus();
    tap_.setKeyboardHeldByOthers(false);
    timers_.advance(std::chrono::seconds(2));
    EXPECT_EQ(toasts_, QStringList());
    expectIdle();
}

TEST_F(HotkeyRecorderFieldTest, TabOnlyFocusesIt) {
    field_->setFocus(Qt::TabFocusReason);
    mainQueue_.runAll();
    EXPECT_TRUE(field_->hasFocus());
    expectIdle();
}

TEST_F(HotkeyRecorderFieldTest, SpaceAndReturnStartAndTheFocusStays) {
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

TEST_F(HotkeyRecorderFieldTest, AReleaseOfReturnPressedElsewhereStartsNothing) {
    field_->setFocus(Qt::TabFocusReason);
    QTest::keyRelease(field_, Qt::Key_Return);
    expectIdle();
}

TEST_F(HotkeyRecorderFieldTest, TheUsersStartWaitsForTheWindowToGetTheKeyboard) {
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

TEST_F(HotkeyRecorderFieldTest, TheUsersStartIsForgottenWhenTabComesFirst) {
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
    EXPECT_EQ(field_->accessibleName(), u"Hotkey of Firefox, left Command, T"_s);
    startRecording();
    EXPECT_EQ(field_->accessibleName(), u"Hotkey of Firefox, recording, Press hotkey..."_s);
    tap_.press(key::kRightShift);
    EXPECT_EQ(field_->accessibleName(), u"Hotkey of Firefox, recording, right Shift"_s);
    EXPECT_EQ(clearButton()->accessibleName(), u"Clear hotkey of Firefox"_s);
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
