#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "preferences/recorder/HotkeyRecorderField.h"
#include "preferences/rules/RowFixture.h"

namespace kestrelbay {

inline constexpr KeyCode kT{17};
inline constexpr ModifierFlags kLeftCommandFlags{0x100008};

/// A recorder and another field in a window that has the keyboard.
class HotkeyRecorderFixture : public RowFixture, private HotkeyRecorderDelegate {
protected:
    void SetUp() override {
        field_ = new HotkeyRecorderField(services(), window_.get());
        field_->setGeometry(20, 20, 160, 26);
        field_->setDelegate(this);
        field_->setSubject(QStringLiteral("Firefox"));
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
    void click() { QTest::mouseClick(field_, Qt::LeftButton, {}, {10, 10}); }
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
        told_ += QStringLiteral("recorded %1 %2").arg(toNumber(keyCode)).arg(flags.bits(), 0, 16);
    }
    void hotkeyRecorderDidClear(HotkeyRecorderField * /*field*/) override {
        told_ += QStringLiteral("cleared");
    }
};

}  // namespace kestrelbay
