#include "ui/widgets/LinkButton.h"

#include <algorithm>

#include <QApplication>
#include <QImage>
#include <QPalette>

#include <gtest/gtest.h>

#include "platform/SystemSettings.h"
#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"

namespace kestrelbay {
namespace {

class LinkButtonTest : public testing::Test {
protected:
    LinkButtonTest() {
        button_.resize(button_.sizeHint());
        button_.setFocusPolicy(Qt::NoFocus);
        button_.show();
    }
    ~LinkButtonTest() override { QApplication::setPalette(before_); }

    QImage picture() { return button_.grab().toImage().convertToFormat(QImage::Format_RGB32); }
    /// How much of the text's own colour is in the longest row of it.
    int longestRow(const QColor &color) {
        const QImage image = picture();
        int longest = 0;
        for (int y = 0; y < image.height(); ++y) {
            int count = 0;
            for (int x = 0; x < image.width(); ++x)
                count += image.pixelColor(x, y) == color ? 1 : 0;
            longest = std::max(longest, count);
        }
        return longest;
    }

    QPalette before_ = QGuiApplication::palette();
    LinkButton button_{QStringLiteral("HHHHHHHH")};
};

TEST_F(LinkButtonTest, IsATextOf12PixelsWithAHand) {
    EXPECT_EQ(button_.font(), systemFont(12));
    EXPECT_EQ(button_.cursor().shape(), Qt::PointingHandCursor);
    EXPECT_GE(button_.width(), QFontMetrics(systemFont(12)).horizontalAdvance(button_.text()));
}

TEST_F(LinkButtonTest, IsInTheLinkColorOfTheAppearance) {
    for (const ColorScheme scheme : {ColorScheme::Dark, ColorScheme::Light}) {
        QApplication::setPalette(systemPalette(scheme));
        QCoreApplication::sendPostedEvents();
        EXPECT_GT(longestRow(colors::link()), 0);
    }
}

TEST_F(LinkButtonTest, IsInTheMiddleOfItsRoom) {
    button_.resize(300, button_.height());
    const QImage image = picture();
    const int y = image.height() / 2;  // the bar of each H
    int left = image.width();
    int right = 0;
    for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, y) != image.pixelColor(0, 0)) {
            left = std::min(left, x);
            right = x;
        }
    }
    ASSERT_LT(left, right);
    EXPECT_NEAR(left, image.width() - 1 - right, 2);
}

TEST_F(LinkButtonTest, IsUnderlinedWhilePointedAt) {
    const int textWidth = QFontMetrics(button_.font()).horizontalAdvance(button_.text());
    EXPECT_LT(longestRow(colors::link()), textWidth - 4);
    button_.setAttribute(Qt::WA_UnderMouse);
    EXPECT_GE(longestRow(colors::link()), textWidth - 4);
    button_.setEnabled(false);
    EXPECT_LT(longestRow(colors::link()), 1);
}

TEST_F(LinkButtonTest, GetsPalerWhilePressed) {
    button_.setDown(true);
    EXPECT_EQ(longestRow(colors::link()), 0);
}

}  // namespace
}  // namespace kestrelbay
