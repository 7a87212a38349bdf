#include "app/Alert.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

#include "fixtures/QtPrinters.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {
namespace {

class AlertTest : public testing::Test {
protected:
    ~AlertTest() override { setAlertRunner({}); }

    /// Shows an alert and has the inspection look at it.
    void show(const std::function<void(QDialog &)> &inspection) {
        int alerts = 0;
        setAlertRunner([&](QDialog &alert) {
            ++alerts;
            alert.show();
            inspection(alert);
        });
        showAlert(nullptr, failure_);
        EXPECT_EQ(alerts, 1);
    }

    LaunchAtLogin::Failure failure_{
        .messageText = QStringLiteral("Launch at Login"),
        .informativeText = QStringLiteral("Failed to enable launch at login: no room"),
        .buttonTitle = QStringLiteral("OK"),
    };
};

TEST_F(AlertTest, ShowsTheTextsAndOneButton) {
    show([](QDialog &alert) {
        EXPECT_TRUE(alert.isModal());
        const auto labels = alert.findChildren<TextLabel *>();
        ASSERT_EQ(labels.size(), 2);
        EXPECT_EQ(labels[0]->text(), QStringLiteral("Launch at Login"));
        EXPECT_EQ(labels[1]->text(), QStringLiteral("Failed to enable launch at login: no room"));
        const auto buttons = alert.findChildren<QPushButton *>();
        ASSERT_EQ(buttons.size(), 1);
        EXPECT_EQ(buttons[0]->text(), QStringLiteral("OK"));
        EXPECT_TRUE(buttons[0]->isDefault());
    });
}

TEST_F(AlertTest, TheButtonAndTheKeysCloseIt) {
    show([](QDialog &alert) {
        alert.findChild<QPushButton *>()->click();
        EXPECT_FALSE(alert.isVisible());
    });
    for (const int key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
        show([key](QDialog &alert) {
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
            QApplication::sendEvent(&alert, &event);
            EXPECT_FALSE(alert.isVisible());
        });
    }
}

TEST_F(AlertTest, NoTextIsClippedHoweverLongAWordIs) {
    failure_.informativeText =
        QStringLiteral("Failed: <b>") + QString(80, u'x') + QStringLiteral("</b> ").repeated(60);
    show([this](QDialog &alert) {
        for (const auto *text : alert.findChildren<TextLabel *>()) {
            EXPECT_EQ(text->textFormat(), Qt::PlainText);
            const QRect needed = text->fontMetrics().boundingRect(QRect(0, 0, text->width(), 99999),
                                                                  Qt::TextWordWrap, text->text());
            EXPECT_LE(needed.width(), text->width());
            EXPECT_LE(needed.height(), text->height());
            EXPECT_TRUE(alert.rect().contains(QRect(text->mapTo(&alert, QPoint()), text->size())));
        }
        EXPECT_EQ(alert.findChildren<TextLabel *>()[1]->text(), failure_.informativeText);
    });
}

TEST_F(AlertTest, WaitsForTheUser) {
    bool wasModal = false;
    QTimer::singleShot(0, QCoreApplication::instance(), [&wasModal] {
        auto *alert = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        ASSERT_TRUE(alert);
        wasModal = true;
        alert->findChild<QPushButton *>()->click();
    });
    showAlert(nullptr, failure_);
    EXPECT_TRUE(wasModal);
    EXPECT_FALSE(QApplication::activeModalWidget());
}

}  // namespace
}  // namespace kestrelbay
