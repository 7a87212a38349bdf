#include "ui/windows/Sheet.h"

#include <algorithm>
#include <memory>

#include <gtest/gtest.h>

#include <QApplication>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include "fakes/FakeSystemAlerts.h"
#include "fixtures/QtPrinters.h"
#include "platform/SystemSettings.h"
#include "ui/look/SystemColors.h"
#include "ui/look/SystemStyle.h"
#include "ui/widgets/TextLabel.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

class AlertSheetTest : public testing::Test {
protected:
    ~AlertSheetTest() override {
        delete sheet_.data();
        QApplication::setPalette(paletteBefore_);
    }

    void open(bool isDestructive) {
        window_.show();
        sheet_ = new AlertSheet({.title = u"Title"_s,
                                 .text = u"Text"_s,
                                 .acceptTitle = u"Yes"_s,
                                 .rejectTitle = u"No"_s,
                                 .isWarning = isDestructive,
                                 .isDestructive = isDestructive},
                                &window_);
        accepted_ = std::make_unique<QSignalSpy>(sheet_, &QDialog::accepted);
        rejected_ = std::make_unique<QSignalSpy>(sheet_, &QDialog::rejected);
        sheet_->open();
        ASSERT_TRUE(QTest::qWaitForWindowActive(sheet_));
    }
    /// From left to right.
    [[nodiscard]] QList<QPushButton *> buttons() const {
        QList<QPushButton *> all = sheet_->findChildren<QPushButton *>();
        std::ranges::sort(all, {}, &QPushButton::x);
        return all;
    }
    static void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    const QPalette paletteBefore_ = QApplication::palette();
    QWidget window_;
    QPointer<AlertSheet> sheet_;
    std::unique_ptr<QSignalSpy> accepted_;
    std::unique_ptr<QSignalSpy> rejected_;
};

TEST_F(AlertSheetTest, HoldsUpItsWindowAndCanOnlyBeClosed) {
    open(false);
    EXPECT_EQ(sheet_->windowModality(), Qt::WindowModal);
    EXPECT_EQ(sheet_->windowTitle(), u"Title"_s);
    EXPECT_EQ(sheet_->accessibleDescription(), u"Text"_s);
    // Together with a dialog's flag it would be a drawer, a tool window on X.
    EXPECT_EQ(sheet_->windowType(), Qt::Sheet);
    const Qt::WindowFlags flags = sheet_->windowFlags();
    EXPECT_TRUE(flags.testFlag(Qt::CustomizeWindowHint));
    EXPECT_TRUE(flags.testFlag(Qt::WindowTitleHint));
    EXPECT_TRUE(flags.testFlag(Qt::WindowCloseButtonHint));
    EXPECT_FALSE(flags & Qt::WindowMinMaxButtonsHint);
    EXPECT_EQ(sheet_->minimumSize(), sheet_->maximumSize());
    EXPECT_EQ(sheet_->width(), 400);
}

TEST_F(AlertSheetTest, ReturnAcceptsAndEscapeRejects) {
    open(false);
    EXPECT_EQ(buttons()[1]->text(), u"Yes"_s);
    EXPECT_TRUE(buttons()[1]->isDefault());
    press(Qt::Key_Return);
    EXPECT_EQ(accepted_->count(), 1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return sheet_.isNull(); }));
    open(false);
    press(Qt::Key_Escape);
    EXPECT_EQ(rejected_->count(), 1);
    EXPECT_EQ(accepted_->count(), 0);
}

TEST_F(AlertSheetTest, ReturnDestroysNothingUnlessItsButtonHasTheFocus) {
    open(true);
    press(Qt::Key_Return);
    EXPECT_EQ(rejected_->count(), 1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return sheet_.isNull(); }));
    open(true);
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    EXPECT_EQ(accepted_->count(), 1);
}

TEST_F(AlertSheetTest, TheTabKeyGoesFromLeftToRight) {
    for (const bool isDestructive : {false, true}) {
        open(isDestructive);
        buttons()[0]->setFocus();
        press(Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), buttons()[1]);
        EXPECT_EQ(sheet_->focusPolicy(), Qt::NoFocus);
        const QWidget *first = sheet_->nextInFocusChain();
        while (first->focusPolicy() == Qt::NoFocus || !qobject_cast<const QPushButton *>(first))
            first = first->nextInFocusChain();
        EXPECT_EQ(first, buttons()[0]);
        delete sheet_.data();
    }
}

TEST_F(AlertSheetTest, RedFollowsTheAppearance) {
    open(true);
    const auto ink = [this] { return buttons()[1]->palette().color(QPalette::ButtonText); };
    const QColor light = colors::systemRed();
    EXPECT_EQ(ink(), light);
    QApplication::setPalette(systemPalette(ColorScheme::Dark));
    QCoreApplication::processEvents();
    EXPECT_NE(colors::systemRed(), light);
    EXPECT_EQ(ink(), colors::systemRed());
    EXPECT_EQ(buttons()[0]->palette().color(QPalette::ButtonText), colors::label());
}

class SystemAlertTest : public testing::Test {
protected:
    SystemAlertTest() {
        setSystemAlerts(&alerts_);
        window_.show();
    }
    ~SystemAlertTest() override {
        delete sheet_.data();
        setSystemAlerts(nullptr);
    }

    void open() {
        sheet_ = new AlertSheet({.title = u"Title"_s,
                                 .text = u"Text"_s,
                                 .acceptTitle = u"Yes"_s,
                                 .rejectTitle = u"No"_s,
                                 .isWarning = true,
                                 .isDestructive = true},
                                &window_);
        finished_ = std::make_unique<QSignalSpy>(sheet_, &QDialog::finished);
        sheet_->open();
        QCoreApplication::processEvents();
    }

    FakeSystemAlerts alerts_;
    QWidget window_;
    QPointer<AlertSheet> sheet_;
    std::unique_ptr<QSignalSpy> finished_;
};

TEST_F(SystemAlertTest, IsShownInThePlaceOfOurs) {
    open();
    ASSERT_TRUE(alerts_.alert());
    EXPECT_EQ(alerts_.alert()->message, u"Title"_s);
    EXPECT_EQ(alerts_.alert()->text, u"Text"_s);
    EXPECT_EQ(alerts_.alert()->acceptTitle, u"Yes"_s);
    EXPECT_EQ(alerts_.alert()->rejectTitle, u"No"_s);
    EXPECT_TRUE(alerts_.alert()->isWarning);
    EXPECT_TRUE(alerts_.alert()->isDestructive);
    EXPECT_EQ(alerts_.window(), window_.winId());
    EXPECT_TRUE(sheet_->testAttribute(Qt::WA_DontShowOnScreen));
    EXPECT_TRUE(sheet_->isVisible()) << "it still holds up its window";
}

TEST_F(SystemAlertTest, ItsAnswerIsTheSheets) {
    for (const bool accepts : {true, false}) {
        open();
        alerts_.answer(accepts);
        ASSERT_EQ(finished_->count(), 1);
        EXPECT_EQ(finished_->at(0).at(0).toInt(), accepts ? QDialog::Accepted : QDialog::Rejected);
        EXPECT_TRUE(QTest::qWaitFor([this] { return sheet_.isNull(); }));
    }
}

TEST_F(SystemAlertTest, GoesWithTheSheet) {
    open();
    delete sheet_.data();
    EXPECT_FALSE(alerts_.alert());
}

TEST_F(SystemAlertTest, IsNotShownForASheetThatIsClosedAtOnce) {
    sheet_ = new AlertSheet({.title = u"T"_s, .text = u"T"_s, .acceptTitle = u"OK"_s}, &window_);
    sheet_->open();
    sheet_->reject();
    QCoreApplication::processEvents();
    EXPECT_FALSE(alerts_.alert());
}

TEST_F(SystemAlertTest, WaitingForTheAnswerEnds) {
    AlertSheet sheet({.title = u"T"_s, .text = u"T"_s, .acceptTitle = u"OK"_s}, nullptr);
    sheet.setAttribute(Qt::WA_DeleteOnClose, false);
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        if (alerts_.alert())
            alerts_.answer(true);
    });
    answer.start(0);
    EXPECT_EQ(sheet.exec(), QDialog::Accepted);
    EXPECT_EQ(alerts_.window(), 0U);
}

TEST_F(AlertSheetTest, TheFocusedDestructiveButtonIsRed) {
    QApplication::setStyle(new SystemStyle);
    open(true);
    press(Qt::Key_Tab);
    QPushButton &destructive = *buttons()[1];
    ASSERT_TRUE(destructive.hasFocus());
    const auto ground = [&] {
        // Between its frame and its text.
        return destructive.grab().toImage().pixelColor(8, destructive.height() / 2);
    };
    EXPECT_EQ(ground(), colors::systemRed());
    QApplication::setPalette(systemPalette(ColorScheme::Dark));
    QCoreApplication::processEvents();
    EXPECT_EQ(ground(), colors::systemRed());
    QPushButton &harmless = *buttons()[0];
    harmless.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(harmless.grab().toImage().pixelColor(8, harmless.height() / 2),
              colors::controlAccent());
    EXPECT_NE(ground(), colors::systemRed());
}

}  // namespace

}  // namespace kestrelbay
