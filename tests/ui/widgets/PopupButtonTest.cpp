#include "ui/widgets/PopupButton.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDialog>
#include <QImage>
#include <QPushButton>
#include <QSignalSpy>
#include <QStyleFactory>
#include <QTest>

#include <memory>

#include <gtest/gtest.h>

#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"
#include "ui/look/SystemStyle.h"

namespace kestrelbay {
namespace {

constexpr int kWidth = 140;

class PopupButtonTest : public testing::Test {
protected:
    ~PopupButtonTest() override {
        button_.reset();
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        QApplication::setPalette(QPalette());
    }

    void open(QStyle *style, const QStringList &titles) {
        QApplication::setStyle(style);
        button_ = std::make_unique<PopupButton>();
        button_->setFont(systemFont(12));
        button_->setFixedWidth(kWidth);
        button_->addItems(titles);
        button_->show();
        button_->showPopup();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(list().window()));
    }
    [[nodiscard]] QAbstractItemView &list() const { return *button_->view(); }
    [[nodiscard]] QRect place(int row) const {
        return list().visualRect(list().model()->index(row, 0));
    }
    /// The pixels of a row that are not of its ground, which is what is beside its title.
    [[nodiscard]] int ink(int row) const {
        const QImage picture = list().viewport()->grab(place(row)).toImage();
        const QColor ground = picture.pixelColor(picture.width() - 6, picture.height() / 2);
        int inked = 0;
        // Not the ends, where the ground is round.
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 5; x < picture.width() - 5; ++x)
                inked += picture.pixelColor(x, y) != ground ? 1 : 0;
        return inked;
    }

    std::unique_ptr<PopupButton> button_;
};

TEST_F(PopupButtonTest, ShowsTitlesThatAreWiderThanTheButton) {
    const QString longest = QStringLiteral("audio-channel-front-right of a long theme");
    for (const QString &style : {QString(), QStringLiteral("Fusion"), QStringLiteral("Windows")}) {
        open(style.isEmpty() ? new SystemStyle : QStyleFactory::create(style),
             {QStringLiteral("bell"), longest});
        const int width = QFontMetrics(list().font()).horizontalAdvance(longest);
        EXPECT_GT(width, kWidth);
        EXPECT_GE(place(1).width(), width) << style.toStdString();
        EXPECT_GE(list().viewport()->width(), list().sizeHintForColumn(0)) << style.toStdString();
        EXPECT_EQ(button_->width(), kWidth);
    }
}

TEST_F(PopupButtonTest, IsNoNarrowerThanTheButton) {
    open(new SystemStyle, {QStringLiteral("a"), QStringLiteral("b")});
    EXPECT_GE(list().window()->width(), kWidth);
}

TEST_F(PopupButtonTest, ShowsTheWholeTitleOfTheChosenRow) {
    open(new SystemStyle, {QStringLiteral("jgpff"), QStringLiteral("jgpff")});
    button_->window()->setAttribute(Qt::WA_KeyboardFocusChange);
    list().window()->setAttribute(Qt::WA_KeyboardFocusChange);
    list().setCurrentIndex(list().model()->index(0, 0));
    EXPECT_EQ(ink(0), ink(1));
    EXPECT_GE(place(0).height(), QFontMetrics(list().font()).height() + 8);
}

TEST_F(PopupButtonTest, HasRoomAroundItsList) {
    open(new SystemStyle, {QStringLiteral("a"), QStringLiteral("b")});
    const QWidget &frame = *list().window();
    const QRect room(list().mapTo(&frame, QPoint(0, 0)), list().size());
    EXPECT_GE(room.left(), 4);
    EXPECT_GE(room.top(), 4);
    EXPECT_LE(room.right(), frame.width() - 5);
    EXPECT_LE(room.bottom(), frame.height() - 5);
}

/// A sheet with a list that is open while the window system still gives keys to the sheet: the
/// list's own window has not been told yet that it has the keyboard.
class PopupButtonInSheetTest : public testing::Test {
protected:
    void SetUp() override {
        button_ = new PopupButton(&sheet_);
        button_->addItems({QStringLiteral("a"), QStringLiteral("b")});
        auto *const save = new QPushButton(&sheet_);
        save->setDefault(true);
        QObject::connect(save, &QPushButton::clicked, &sheet_, &QDialog::accept);
        sheet_.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&sheet_));
        button_->setFocus();
        button_->showPopup();
    }
    void press(Qt::Key key) { QTest::keyClick(sheet_.windowHandle(), key); }
    [[nodiscard]] bool isListOpen() const { return QApplication::activePopupWidget() != nullptr; }

    QDialog sheet_;
    PopupButton *button_ = nullptr;
};

TEST_F(PopupButtonInSheetTest, EscapeClosesTheListAlone) {
    press(Qt::Key_Escape);
    EXPECT_FALSE(isListOpen());
    EXPECT_TRUE(sheet_.isVisible());
    press(Qt::Key_Escape);
    EXPECT_FALSE(sheet_.isVisible()) << "the next one is the sheet's";
}

TEST_F(PopupButtonInSheetTest, ReturnChoosesAndNothingElse) {
    const QSignalSpy chosen(button_, &QComboBox::activated);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_FALSE(isListOpen());
    EXPECT_TRUE(sheet_.isVisible());
    EXPECT_EQ(button_->currentIndex(), 1);
    EXPECT_EQ(chosen.size(), 1);
}

TEST_F(PopupButtonInSheetTest, AKeyOfTheListLeavesTheNextToTheButton) {
    press(Qt::Key_Down);
    button_->hidePopup();
    ASSERT_EQ(button_->currentIndex(), 0);
    press(Qt::Key_Down);
    EXPECT_EQ(button_->currentIndex(), 1);
}

}  // namespace
}  // namespace kestrelbay
